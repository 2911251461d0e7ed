#!/usr/bin/env python3
"""Holds the host's headers, as the compiler for Microsoft's ABI lays them out, to the table of the host's interface.

usage: check_abi.py TABLE PROBE COMPILE_COMMANDS HEADERS
"""
import json
import os
import re
import shlex
import subprocess
import sys
import tempfile


def compiler(commands):
    """The module's compiler with its flags, without source and output."""
    with open(commands, encoding="utf-8") as file:
        entry = next(entry for entry in json.load(file) if entry["file"].endswith("late_imports.cpp"))
    words = shlex.split(entry["command"])
    end = words.index("-o")
    return [word for word in words[:end] if not word.startswith(("-W", "-O"))]


def tables(text):
    """Class to the functions of its virtual table, in order."""
    found = {}
    for part in re.split(r"^VFTable for ", text, flags=re.M)[1:]:
        name = re.search(r"'Of(\w+)' \((\d+) entr", part.splitlines()[0])
        if name:
            slots = re.findall(r"^ +(\d+) \| (.*)$", part, re.M)
            # The table pointer leads past the first entry, which describes the class.
            found[name.group(1)] = [function for _, function in slots[1:int(name.group(2))]]
    return found


def layouts(text):
    """Class to the set of (offset, declaration) of its fields, those of its bases with it."""
    found = {}
    for part in re.split(r"^\*\*\* Dumping AST Record Layout\n", text, flags=re.M)[1:]:
        # Bit fields, whose offsets are written otherwise, are in the system's classes only.
        rows = re.findall(r"^ *(\d+) \| +(.*)$", part, re.M)
        name = re.fullmatch(r"(?:class|struct|union) (\w+)", rows[0][1]) if rows else None
        if name:
            found[name.group(1)] = {(int(offset), declaration) for offset, declaration in rows[1:]}
    return found


def assertions(rows):
    """What the compiler itself can compare, as source."""
    lines = []
    for kind, owner, number, name in rows:
        if kind == "size":
            lines.append(f'static_assert(sizeof({owner}) == {number}, "size of {owner}");')
        if kind == "align":
            lines.append(f'static_assert(alignof({owner}) == {number}, "alignment of {owner}");')
        if kind == "value":
            full = f"{owner}::{name}" if owner else name
            lines.append(f'static_assert({full} == {number}, "value of {full}");')
    return lines


def dump(commands, headers, probe, checks):
    """What the compiler prints of the probe's classes: tables and layouts."""
    with tempfile.TemporaryDirectory() as folder:
        with open(os.path.join(folder, "checks.inc"), "w", encoding="ascii") as file:
            file.write("\n".join(checks) + "\n")
        return subprocess.run(
            [*compiler(commands), f"-I{headers}", f"-I{folder}", "-Xclang", "-fdump-vtable-layouts", "-Xclang",
             "-fdump-record-layouts", "-c", "-o", os.path.join(folder, "probe.o"), probe],
            capture_output=True, text=True, check=False)


def main(table, probe, commands, headers):
    with open(table, encoding="ascii") as file:
        rows = [line.rstrip("\n").split("\t") for line in file if not line.startswith("#")][1:]
    unknown = {row[0] for row in rows} - {"size", "align", "field", "value", "slots", "slot"}
    if unknown:
        print(f"{table}: rows of no known kind: {sorted(unknown)}")
        return 1
    checks = assertions(rows)
    told = dump(commands, headers, probe, checks)
    if told.returncode != 0:
        print(told.stderr)
        return 1
    found, fields, problems = tables(told.stdout), layouts(told.stdout), []
    for kind, owner, number, name in rows:
        slots = found.get(owner, [])
        if kind == "field" and (int(number), name) not in fields.get(owner, ()):
            problems.append(f"{owner}: no '{name}' at {number}, found {sorted(fields.get(owner, ()))}")
        if kind == "slots" and len(slots) != int(number):
            problems.append(f"{owner}: {len(slots)} slots, expected {number}")
        if kind == "slot" and not (int(number) < len(slots) and re.search(rf"::{re.escape(name)}\b", slots[int(number)])):
            problems.append(f"{owner}: slot {number} is {slots[int(number):int(number) + 1]}, expected {name}")
    counts = ", ".join(f"{sum(row[0] == kind for row in rows)} {word}" for kind, word in
                       (("size", "sizes"), ("align", "alignments"), ("field", "fields"), ("value", "values"),
                        ("slots", "tables"), ("slot", "slots")))
    print("\n".join(problems) or f"as the table has them: {counts}")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
