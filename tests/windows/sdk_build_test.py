#!/usr/bin/env python3
"""Builds the module by the preset `sdk` against a folder that is laid out as the ObjectARX SDK is, made of the stand-in's
headers and of import libraries. Like the SDK's, its names have whatever case, a header uses a name that C++17 no longer
has, another exports the version by a directive, and a library asks for another compiler and its runtime. The file is
held to the table of the host's names, and then runs under Wine.

usage: sdk_build_test.py SOURCE_FOLDER WINDOWS_BUILD_FOLDER OBJDUMP
"""
import json
import os
import shutil
import subprocess
import sys
import tempfile

from pe_check import dump, exported_names, imports

LLVM = "/usr/lib/llvm-14/bin/"
# Any of these in another case is not found by a file system that minds it.
ODD = {"acdocman.h": "AcDocMan.h", "dbmain.h": "DBMAIN.H", "gepnt3d.h": "GePnt3d.h", "rxdefs.h": "RxDefs.h",
       "arxentrypoint.h": "ARXENTRYPOINT.h", "adesk.h": "ADesk.h"}
ADDED = {"dbmain.h": "static_assert(std::tr1::is_pod<int>::value);\n",
         "arxentrypoint.h": '#pragma comment(linker, "/export:acrxGetApiVersion,PRIVATE")\n'}
# The version of the interface, and what the library demands of those who link it.
RXAPI = """#pragma comment(lib, "msvcrt")
#pragma comment(lib, "msvcprt")
#pragma detect_mismatch("_MSC_VER", "1600")
extern "C" unsigned acrxGetApiVersion(unsigned) { return 0x130000; }
"""


def run(*command, **options):
    result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False, **options)
    if result.returncode != 0:
        raise SystemExit(f"{command[0]}: status {result.returncode}\n{result.stdout[-4000:]}")
    return result.stdout


def make_headers(source, sdk):
    folder = os.path.join(source, "standin", "objectarx", "include")
    for number, name in enumerate(sorted(os.listdir(folder))):
        with open(os.path.join(folder, name), encoding="utf-8") as file:
            text = file.read()
        to = os.path.join(sdk, "inc" if number % 5 else "inc-x64", ODD.get(name.lower(), name))
        with open(to, "w", encoding="utf-8") as file:
            file.write(text + ADDED.get(name.lower(), ""))


def host_names(source):
    """Library to the names that a module may import, those that are not sure too."""
    names = {}
    with open(os.path.join(source, "standin", "objectarx", "abi", "imports.tsv"), encoding="ascii") as file:
        for line in file:
            library, certainty, *name_and_kind = line.rstrip("\n").split("\t") if "\t" in line else ("", "")
            if certainty in ("A", "B", "C"):
                name, kind = name_and_kind
                names.setdefault(library, {})[name] = kind
    return names


def make_libraries(names, sdk, folder):
    for library, functions in names.items():
        definition = os.path.join(folder, library + ".def")
        with open(definition, "w", encoding="ascii") as file:
            file.write(f"LIBRARY {library}\nEXPORTS\n")
            file.writelines(f"{name}{' DATA' if kind == 'data' else ''}\n" for name, kind in functions.items())
        stem = os.path.splitext(library)[0]
        run(LLVM + "llvm-dlltool", "-m", "i386:x86-64", "-d", definition, "-l",
            os.path.join(sdk, "lib-x64", stem.capitalize() + ".LIB"))
    source = os.path.join(folder, "rxapi.cpp")
    with open(source, "w", encoding="ascii") as file:
        file.write(RXAPI)
    run(LLVM + "clang++", "--target=x86_64-pc-windows-msvc", "-c", source, "-o", source + ".obj")
    run(LLVM + "llvm-ar", "rcs", os.path.join(sdk, "lib-x64", "RxApi.lib"), source + ".obj")


def build(source, sdk, folder):
    """The module's file, little optimised, which takes less time."""
    with open(os.path.join(source, "CMakePresets.json"), encoding="utf-8") as file:
        preset = next(p for p in json.load(file)["configurePresets"] if p["name"] == "sdk")
    variables = [f"-D{key}={value}" for key, value in preset["cacheVariables"].items()]
    toolchain = preset["toolchainFile"].replace("${sourceDir}", source)
    run("cmake", "-S", source, "-B", folder, "-G", "Ninja", f"-DCMAKE_TOOLCHAIN_FILE={toolchain}",
        f"-DLM_OBJECTARX_DIR={sdk}", "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -DNDEBUG", *variables)
    run("cmake", "--build", folder)
    return os.path.join(folder, "bin", "LMTRAutoCAD2013.arx")


def check_file(objdump, module, names):
    text = dump(objdump, module)
    exports = sorted(exported_names(text))
    if exports != ["acrxEntryPoint", "acrxGetApiVersion"]:
        raise SystemExit(f"expected two exports, found {exports}")
    for library, (_, found) in imports(text).items():
        unknown = found - set(names.get(library, found))
        if unknown:
            raise SystemExit(f"{library}: {sorted(unknown)} are not in the table")
    missing = set(names) - set(imports(text))
    if missing:
        raise SystemExit(f"nothing imported from {sorted(missing)}")


def check_run(source, build_folder, module, folder):
    """Commands are there, the cap moves the view, and no rule of the host is broken."""
    programs = os.path.join(folder, "programs")
    shutil.copytree(os.path.join(build_folder, "bin"), programs, ignore=shutil.ignore_patterns("*test*.exe"))
    shutil.copy(module, programs)
    session = os.path.join(folder, "a.session")
    with open(session, "w", encoding="ascii") as file:
        file.write("0 command LM_Toggle_Scroll_Mode\n100 motion 5 5 5 20 20 20\n500 motion 0 0 0 0 0 0\n900 end\n")
    out = os.path.join(folder, "out")
    os.mkdir(out)
    with open(os.path.join(folder, "told"), "w", encoding="utf-8") as told:
        subprocess.run([os.path.join(source, "tools", "run_in_wine.sh"), build_folder, os.path.join(programs, "workbench.exe"),
                        "replay", "--drawing", os.path.join(source, "samples", "bracket.dxf"), "--session", session,
                        "--out", out, "--quiet"], stdout=told, stderr=subprocess.STDOUT, check=True)
    with open(os.path.join(out, "commandline.log"), encoding="utf-8") as file:
        if "=> Scroll Trees and Lists:  off" not in file.read():
            raise SystemExit("the command is not there")
    with open(os.path.join(out, "trajectory.csv"), encoding="utf-8") as file:
        passes = file.read().count(",pass3d,")
    if passes < 5:
        raise SystemExit(f"{passes} passes")
    return passes


def main(source, build_folder, objdump):
    with tempfile.TemporaryDirectory() as folder:
        sdk = os.path.join(folder, "ObjectARX 2013")
        for name in ("inc", "inc-x64", "lib-x64"):
            os.makedirs(os.path.join(sdk, name))
        names = host_names(source)
        make_headers(source, sdk)
        make_libraries(names, sdk, folder)
        module = build(source, sdk, os.path.join(folder, "built"))
        check_file(objdump, module, names)
        print(f"built, and {check_run(source, build_folder, module, folder)} passes under Wine")


if __name__ == "__main__":
    main(*sys.argv[1:])
