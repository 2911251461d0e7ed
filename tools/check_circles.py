#!/usr/bin/env python3
"""Lists circles of includes: between files (a header with the source of its name) and between the project's folders.

usage: check_circles.py PROJECT [--allow NAME,NAME...]...

Each --allow names the members of one circle that is meant to be; one that is no longer there is a finding too, so that
the list stays true. Status 1 after a finding."""
import argparse
import collections
import os
import re
import subprocess
import sys

SOURCE = re.compile(r"\.(cpp|h)$")
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)


def project_files(project):
    """What git tracks or would track, so that build folders and their generated headers stay out."""
    listed = subprocess.run(["git", "-C", project, "ls-files", "-co", "--exclude-standard"],
                            capture_output=True, text=True, check=True).stdout.splitlines()
    return sorted({name for name in listed if SOURCE.search(name) and os.path.isfile(os.path.join(project, name))})


def includes(project, files):
    """Pairs of files: the one that includes and the one that is included. Headers that are not the project's are left out."""
    known = set(files)
    by_name = collections.defaultdict(list)
    for name in files:
        by_name[os.path.basename(name)].append(name)
    for name in files:
        with open(os.path.join(project, name), encoding="utf-8") as file:
            text = file.read()
        for included in INCLUDE.findall(text):
            beside = os.path.normpath(os.path.join(os.path.dirname(name), included))
            if beside in known:
                yield name, beside
            elif included in known:
                yield name, included
            else:
                # A header of another folder's include path, known by its end.
                for found in by_name[os.path.basename(included)]:
                    if found.endswith("/" + included):
                        yield name, found


def folder(name):
    """The folder that a file belongs to as the layout has it: one level, but two below the stand-ins and the tests."""
    parts = os.path.dirname(name).split("/")
    return "/".join(parts[:2 if parts[0] in ("standin", "tests") else 1])


def circles(edges):
    """Groups of nodes that reach each other, by Tarjan's algorithm; without recursion, as chains may be long."""
    following = collections.defaultdict(set)
    for start, end in edges:
        if start != end:
            following[start].add(end)
    index, low, stack, on_stack, found = {}, {}, [], set(), []
    for root in sorted(following):
        if root in index:
            continue
        work = [(root, iter(sorted(following[root])))]
        index[root] = low[root] = len(index)
        stack.append(root)
        on_stack.add(root)
        while work:
            node, rest = work[-1]
            for after in rest:
                if after not in index:
                    index[after] = low[after] = len(index)
                    stack.append(after)
                    on_stack.add(after)
                    work.append((after, iter(sorted(following[after]))))
                    break
                if after in on_stack:
                    low[node] = min(low[node], index[after])
            else:
                work.pop()
                if work:
                    low[work[-1][0]] = min(low[work[-1][0]], low[node])
                if low[node] == index[node]:
                    group = []
                    while not group or group[-1] != node:
                        group.append(stack.pop())
                        on_stack.discard(group[-1])
                    if len(group) > 1:
                        found.append(tuple(sorted(group)))
    return sorted(found)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("project")
    parser.add_argument("--allow", action="append", default=[])
    arguments = parser.parse_args()
    files = project_files(arguments.project)
    if not files:
        print(f"expected sources in {arguments.project}, found none")
        return 1
    pairs = list(includes(arguments.project, files))
    components = circles((SOURCE.sub("", a), SOURCE.sub("", b)) for a, b in pairs)
    folders = circles((folder(a), folder(b)) for a, b in pairs)
    allowed = {tuple(sorted(members.split(","))) for members in arguments.allow}
    findings = [f"circle of {len(circle)}: {' '.join(circle)}" for circle in components + folders
                if circle not in allowed]
    findings += [f"allowed circle that is not there: {' '.join(circle)}"
                 for circle in sorted(allowed - set(components + folders))]
    for finding in findings:
        print(finding)
    print(f"{len(files)} files, {len(pairs)} includes, {len(findings)} findings")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
