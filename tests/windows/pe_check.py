#!/usr/bin/env python3
"""Holds the module's file to what the host and the client library expect of it.

usage: pe_check.py OBJDUMP MODULE CLIENT_LIBRARY TABLE_OF_THE_HOST
"""
import re
import struct
import subprocess
import sys

# msvcr100.dll is AutoCAD 2013's own C runtime.
SYSTEM = {"kernel32.dll", "user32.dll", "advapi32.dll", "msvcr100.dll"}
SECTIONS = {".text", ".rdata", ".data", ".pdata", ".xdata", ".tls", ".CRT", ".rsrc", ".reloc", ".bss", ".ctors", ".dtors", ".eh_fram"}
CLIENT = "lmt_ctrlr_64.dll"
ORDINALS = {104, 106, 108, 110, 116, 117, 180}
FLAGS = {"HIGH_ENTROPY_VA", "DYNAMIC_BASE", "NX_COMPAT"}
STRINGS = {"CompanyName": "Lumetra", "FileVersion": "2.9.2.0", "OriginalFilename": "LMTRAutoCAD2013.arx",
           "FileDescription": "Lumetrapad plug-in for AutoCAD 2013", "ProductName": "Lumetrapad AutoCAD Plug-in"}


def dump(objdump, file):
    return subprocess.run([objdump, "-p", file], check=True, capture_output=True, text=True).stdout


def imports(text):
    """Name of each library with the numbers and the names that are imported from it."""
    result = {}
    for part in text.split("DLL Name: ")[1:]:
        block = part.split("\n\n")[0]
        library = block.splitlines()[0].strip().lower()
        numbers = {int(n, 16) & 0xFFFF for n in re.findall(r"^\s+8000[0-9a-f]{12}\s", block, re.M)}
        names = set(re.findall(r"^\s+[0-9a-f]+\s+\d+\s+(\S+)\s*$", block, re.M)) - {"<none>"}
        result[library] = (numbers, names)
    return result


def host_functions(table):
    """Name of each of the host's libraries with the names that a module imports; those that are not sure are left out."""
    result = {}
    with open(table, encoding="ascii") as file:
        for line in file:
            library, certainty, name, *_ = line.split("\t") + ["", ""]
            if certainty in ("A", "B"):
                result.setdefault(library, set()).add(name)
    return result


def sections(objdump, file):
    text = subprocess.run([objdump, "-h", file], check=True, capture_output=True, text=True).stdout
    return set(re.findall(r"^\s*\d+ (\S+)", text, re.M))


def exported_names(text):
    table = text.split("[Ordinal/Name Pointer] Table")
    return set(re.findall(r"^\s+\[\s*\d+\]\s+(?:\+base\[\s*\d+\]\s+(?:[0-9a-f]+\s+)?)?(\S+)$",
                          table[1].split("\n\n")[0], re.M)) if len(table) > 1 else set()


def exported_numbers(text):
    part = text.split("Export Address Table -- Ordinal Base")[1].split("[Ordinal/Name")[0]
    return {int(n) for n in re.findall(r"\+base\[\s*(\d+)\]\s+[0-9a-f]+ Export RVA", part)}


def string_values(data):
    found = {}
    for key in STRINGS:
        at = data.find(key.encode("utf-16-le") + b"\0\0")
        if at < 0:
            continue
        at += 2 * len(key) + 2
        text = data[at:at + 200].decode("utf-16-le", "replace").lstrip("\0")
        found[key] = text.split("\0")[0]
    return found


def main(objdump, module, client, table):
    problems = []

    def expect(what, found, expected):
        if found != expected:
            problems.append(f"{what}: {found}, expected {expected}")

    text = dump(objdump, module)
    expect("format", re.search(r"file format (\S+)", text).group(1), "pei-x86-64")
    expect("exports", exported_names(text), {"acrxEntryPoint", "acrxGetApiVersion"})
    expect("number of exports", len(exported_numbers(text)), 2)
    found = imports(text)
    expect("imports by number", found.get(CLIENT, (set(), set())), (ORDINALS, set()))
    host = host_functions(table)
    expect("imported libraries that nobody has", set(found) - SYSTEM - {CLIENT} - set(host), set())
    expect("libraries that are not imported", {CLIENT, "msvcr100.dll", *host} - set(found), set())
    for library, names in host.items():
        numbers, imported = found.get(library, (set(), set()))
        expect(f"imports of {library} by number", numbers, set())
        expect(f"imports of {library} that the table does not have", imported - names, set())
        expect(f"something of {library} is imported", bool(imported), True)
    expect("sections beside the known ones", sections(objdump, module) - SECTIONS, set())
    expect("relocations, without which no address can be random", ".reloc" in sections(objdump, module), True)
    expect("flags", {flag for flag in FLAGS if re.search(rf"^\s+{flag}$", text, re.M)}, FLAGS)

    with open(module, "rb") as file:
        data = file.read()
    at = data.find(struct.pack("<I", 0xFEEF04BD))
    version = struct.unpack("<HHHH", data[at + 8:at + 16]) if at >= 0 else None
    expect("file version", version and (version[1], version[0], version[3], version[2]), (2, 9, 2, 0))
    expect("version strings", string_values(data), STRINGS)

    text = dump(objdump, client)
    expect("client library's numbers", ORDINALS - exported_numbers(text), set())
    expect("client library's named operations", {n for n in exported_names(text) if n.startswith("lm")}, set())

    print("\n".join(problems) or "as expected")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
