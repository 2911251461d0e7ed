"""The notices of the third-party parts in the programs. Which parts these are is read off the build: the linker's maps
name the libraries that were linked in, and the compiler's dependencies the headers. The texts are those of the packages
that the files come from, so that a part that is new brings its notice along."""
import os
import re
import subprocess

# Parts of the build whose objects go into no program that is shipped.
NOT_SHIPPED = ("tests/", "bench/", "fuzz/", "standin/", "workbench/", "googletest/")
HEAD = """Third-party parts of the Lumetrapad plug-in for AutoCAD 2013
=============================================================

The programs hold parts of the following packages, as libraries linked in or as headers compiled in. Of each the notice
follows as its package gives it; some of the files it speaks of are not part of the programs.

"""


class NoticeError(Exception):
    """A part whose origin or notice is not known."""


def linked_files(map_path):
    """The system's libraries and objects that a linker's map names."""
    if not os.path.exists(map_path):
        raise NoticeError(f"{map_path}: expected the linker's map, found no file")
    with open(map_path, encoding="utf-8", errors="replace") as file:
        found = set(re.findall(r"(/(?:usr|lib)/[^\s():]+\.(?:a|o|lib))\b", file.read()))
    return {os.path.realpath(path) for path in found}


def included_headers(build):
    """The system's headers that the shipped objects were compiled with."""
    # The module has a build of its own within.
    builds = [folder for folder in (build, os.path.join(build, "module")) if os.path.exists(os.path.join(folder, "build.ninja"))]
    told = "\n\n".join(
        subprocess.run(["ninja", "-C", folder, "-t", "deps"], check=True, capture_output=True, text=True).stdout
        for folder in builds)
    found = set()
    for block in told.split("\n\n"):
        lines = block.strip().splitlines()
        if lines and not lines[0].startswith(NOT_SHIPPED):
            found |= {line.strip() for line in lines[1:] if line.strip().startswith("/usr/")}
    return {os.path.realpath(path) for path in found}


def package_of(paths):
    """Path to package, for files that a package has installed."""
    told = subprocess.run(["dpkg-query", "--search", *paths], capture_output=True, text=True, check=False).stdout
    owners = {}
    for line in told.splitlines():
        names, _, path = line.partition(": ")
        owners[path] = names.split(",")[0].split(":")[0]
    return owners


def packages(paths):
    paths = sorted(paths)
    if not paths:
        return []
    owners = package_of(paths)
    unknown = [path for path in paths if path not in owners]
    if unknown:
        raise NoticeError(f"of no package, so that there is no notice: {', '.join(unknown)}")
    return sorted(set(owners.values()))


def notice(package):
    path = f"/usr/share/doc/{package}/copyright"
    if not os.path.exists(path):
        raise NoticeError(f"{path}: expected the notice of the package {package}, found no file")
    with open(path, encoding="utf-8", errors="replace") as file:
        return file.read().strip()


def notices(build, maps):
    paths = included_headers(build)
    for map_path in maps:
        paths |= linked_files(map_path)
    # Packages of one source often share their notice.
    groups = {}
    for package in packages(paths):
        groups.setdefault(notice(package), []).append(package)
    parts = []
    for text, names in sorted(groups.items(), key=lambda group: group[1]):
        title = ", ".join(names)
        parts.append(f"{title}\n{'-' * len(title)}\n\n{text}\n")
    return HEAD + "\n\n".join(parts)
