#!/usr/bin/env python3
"""Applies the checks of .clang-tidy to the sources in the folders, as the build folder compiles them.

usage: check_lint.py CLANG-TIDY PROJECT BUILD_FOLDER FOLDER...

Status 1 after a finding; 77, for skipped, without the tool, or 1 when CI is set."""
import concurrent.futures
import json
import os
import shutil
import subprocess
import sys


def sources(project, build, folders):
    """The compiled files that lie in one of the project's folders, each once."""
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
        compiled = {os.path.realpath(os.path.join(entry["directory"], entry["file"])) for entry in json.load(file)}
    wanted = tuple(os.path.join(os.path.realpath(project), folder) + os.sep for folder in folders)
    return sorted(path for path in compiled if path.startswith(wanted))


def main():
    tool, project, build, *folders = sys.argv[1:]
    if not shutil.which(tool):
        print("skipped: clang-tidy is not installed")
        return 1 if os.environ.get("CI") == "true" else 77
    files = sources(project, build, folders)
    for folder in folders:
        if not sources(project, build, [folder]):
            print(f"expected sources of the build in {folder}, found none")
            return 1

    def check(path):
        return subprocess.run([tool, "-p", build, "--quiet", path], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                              text=True, check=False)

    with concurrent.futures.ThreadPoolExecutor(len(os.sched_getaffinity(0))) as pool:
        results = list(pool.map(check, files))
    for result in results:
        if result.returncode != 0:
            print(result.stdout)
    failed = sum(result.returncode != 0 for result in results)
    print(f"{len(files)} files, {failed} with findings")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
