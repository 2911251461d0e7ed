#!/usr/bin/env python3
"""Writes an overlay of the file system in which clang finds the files of some folders whatever the case of their names.

usage: case_overlay.py OVERLAY FOLDER...
Folders that do not exist are left out. Two names in one folder that differ in their case only are an error.
"""
import json
import os
import sys


def contents(folder):
    found, entries = {}, []
    for name in sorted(os.listdir(folder)):
        path = os.path.join(folder, name)
        other = found.setdefault(name.lower(), name)
        if other != name:
            raise SystemExit(f"{folder}: expected names that differ in more than their case, found {other} and {name}")
        if os.path.isdir(path):
            entries.append({"type": "directory", "name": name, "contents": contents(path)})
        else:
            entries.append({"type": "file", "name": name, "external-contents": path})
    return entries


def main(overlay, *folders):
    roots = [{"type": "directory", "name": folder, "contents": contents(folder)}
             for folder in map(os.path.abspath, folders) if os.path.isdir(folder)]
    with open(overlay, "w", encoding="utf-8") as file:
        # The names that files are opened by stay as they are included: messages and dependencies have them.
        json.dump({"version": 0, "case-sensitive": "false", "roots": roots}, file)


if __name__ == "__main__":
    main(*sys.argv[1:])
