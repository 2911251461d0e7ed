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
import tempfile


def commands(project, build, folders):
    """The compile commands of the sources in the project's folders, one of each source."""
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
        compiled = {os.path.join(entry["directory"], entry["file"]): entry for entry in json.load(file)}
    inside = tuple(os.path.join(os.path.realpath(project), folder) + os.sep for folder in folders)
    return {path: entry for path, entry in sorted(compiled.items()) if os.path.realpath(path).startswith(inside)}


def main():
    tool, project, build, *folders = sys.argv[1:]
    if not shutil.which(tool):
        print("skipped: clang-tidy is not installed")
        return 1 if os.environ.get("CI") == "true" else 77
    for folder in folders:
        if not commands(project, build, [folder]):
            print(f"expected sources of the build in {folder}, found none")
            return 1
    chosen = commands(project, build, folders)
    with tempfile.TemporaryDirectory() as database:
        # Of a source that several targets compile, the build's own list would have each command checked.
        with open(os.path.join(database, "compile_commands.json"), "w", encoding="utf-8") as file:
            json.dump(list(chosen.values()), file)

        def check(path):
            return subprocess.run([tool, "-p", database, f"--config-file={project}/.clang-tidy", "--quiet", path],
                                  capture_output=True, text=True, check=False)

        with concurrent.futures.ThreadPoolExecutor(len(os.sched_getaffinity(0))) as pool:
            results = dict(zip(chosen, pool.map(check, chosen)))
    failed = {path: result for path, result in results.items() if result.returncode != 0}
    for path, result in failed.items():
        print(f"{path} (status {result.returncode}):\n{result.stdout}{result.stderr}")
    print(f"{len(results)} files, {len(failed)} with findings")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
