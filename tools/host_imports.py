#!/usr/bin/env python3
"""Writes what the build needs of the table of the host's functions.

usage: host_imports.py TABLE FOLDER ADAPTER

For each library of the table: NAME.def, what a module is linked with; NAME_forward.def, the exports of a library of that
name that leads each to ADAPTER. late_imports.inc has the functions whose names are not sure: they are looked up when the
module is loaded, so that a name that is missing costs one function and not the module.
"""
import collections
import os
import sys


def rows(table):
    """(library, certainty, name, kind) of each row."""
    with open(table, encoding="ascii") as file:
        lines = [line.rstrip("\n").split("\t") for line in file if not line.startswith("#")]
    if lines[0] != ["library", "certainty", "name", "kind"]:
        raise SystemExit(f"{table}: expected the columns library, certainty, name, kind; found {lines[0]}")
    return [tuple(line) for line in lines[1:]]


def write(folder, name, lines):
    with open(os.path.join(folder, name), "w", encoding="ascii") as file:
        file.write("\n".join(lines) + "\n")


def main(table, folder, adapter):
    libraries = collections.defaultdict(list)
    late = []
    for library, certainty, name, kind in rows(table):
        libraries[library].append((certainty, name, kind))
        if certainty == "C":
            late.append((library, name))
    for library, functions in libraries.items():
        stem = os.path.splitext(library)[0]
        mark = {"data": " DATA", "function": ""}
        write(folder, stem + ".def", [f"LIBRARY {library}", "EXPORTS"] + [
            f"  {name}{mark[kind]}" for certainty, name, kind in functions if certainty != "C"])
        write(folder, stem + "_forward.def", [f"LIBRARY {library}", "EXPORTS"] + [
            f"  {name}={adapter}.{name}{mark[kind]}" for _, name, kind in functions])
    write(folder, "late_imports.inc", [
        f'LATE_IMPORT({index}, "{library}", "{name}")' for index, (library, name) in enumerate(late)])


if __name__ == "__main__":
    main(*sys.argv[1:4])
