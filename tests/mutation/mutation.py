#!/usr/bin/env python3
"""Makes small breakages in the sources, one at a time, and lists those that no test notices.

All of them are in one build, each switched on by a number at run time. What a run finds out is kept in the folder, so
that an interrupted one goes on, and after a change of a file only that file's mutants are tried again.

Status 0: at least the wanted share is noticed, and the list of equivalents is true; 1: not so; 2: bad usage.
"""
import argparse
import collections
import json
import os
import sys
import time
from concurrent.futures import ThreadPoolExecutor

from build import Build
from contained import is_granted
from equivalents import Equivalents
from tests import Tests

HERE = os.path.dirname(os.path.abspath(__file__))


def say(text):
    print(f"== {text}", flush=True)


class Results:
    """What became of each mutant: {(file, key): [text, tests, how]}: digests, and `how` is empty for a survivor."""

    def __init__(self, path, build, tests):
        self.path, self.build, self.tests_digest = path, build, tests.digest()
        self.known = {}
        if os.path.exists(path):
            with open(path, encoding="latin-1") as file:
                for line in file:
                    where, key, *rest = json.loads(line)
                    self.known[where, key] = rest

    def of(self, mutant):
        """None when it is to be tried: never tried, in another text, or by other tests that did not notice it."""
        text, tests, how = self.known.get((mutant.file, mutant.key), ("", "", ""))
        if text != self.build.text_digest(mutant.file):
            return None
        return how if how or tests == self.tests_digest else None

    def add(self, mutant, how):
        entry = [self.build.text_digest(mutant.file), self.tests_digest, how]
        self.known[mutant.file, mutant.key] = entry
        with open(self.path, "a", encoding="latin-1") as file:
            file.write(json.dumps([mutant.file, mutant.key, *entry]) + "\n")


def try_mutants(mutants, tests, results, kept, jobs, minutes):
    """Whether all were tried in the time. First those that are new, last those that no test is expected to notice."""
    waiting = [mutant for mutant in mutants if results.of(mutant) is None]
    waiting.sort(key=lambda mutant: (kept.has(mutant), (mutant.file, mutant.key) in results.known))
    end = time.monotonic() + minutes * 60
    say(f"trying {len(waiting)} mutants, {len(mutants) - len(waiting)} are known")
    done = 0

    def try_one(mutant):
        nonlocal done
        if time.monotonic() > end:
            return False
        noticed = tests.noticed_by(mutant)
        results.add(mutant, f"{noticed[0]} {noticed[1]}" if noticed else "")
        done += 1
        if done % 200 == 0:
            say(f"{done} of {len(waiting)}")
        return True

    with ThreadPoolExecutor(jobs) as pool:
        return all(list(pool.map(try_one, waiting)))


def print_survivors(mutants, tests, results, kept):
    for mutant in mutants:
        if results.of(mutant) == "" and not kept.has(mutant):
            occurrence = f" [{mutant.occurrence}]" if mutant.occurrence > 1 else ""
            unreached = "" if tests.by_mutant[mutant.number] else "  (no test reaches it)"
            print(f"{mutant.file}:{mutant.line}: survived{unreached}\n    line:   {mutant.source}\n"
                  f"    change: {mutant.change}{occurrence}")


def print_figures(build, mutants, results, kept):
    """One line a folder; returns the share of the noticed among those that are not equivalent."""
    rows = collections.defaultdict(collections.Counter)
    for mutant in mutants:
        how = results.of(mutant)
        state = "untried" if how is None else "killed" if how else "kept" if kept.has(mutant) else "survived"
        for row in (mutant.file.split("/")[0], "all"):
            rows[row][state] += 1
    for file in {mutant.file for mutant in mutants}:
        for row in (file.split("/")[0], "all"):
            rows[row]["refused"] += build.refused_count(file)
    print(f"{'folder':<16}{'compiled':>9}{'killed':>8}{'equivalent':>11}{'survived':>9}{'untried':>8}{'killed, %':>10}"
          f"{'refused by the compiler':>25}")
    share = 0.0
    for row in sorted(rows, key=lambda row: (row == "all", row)):
        count = rows[row]
        compiled = sum(count[state] for state in ("killed", "kept", "survived", "untried"))
        share = 100.0 * count["killed"] / max(1, compiled - count["kept"])
        print(f"{row:<16}{compiled:>9}{count['killed']:>8}{count['kept']:>11}{count['survived']:>9}{count['untried']:>8}"
              f"{share:>10.1f}{count['refused']:>25}")
    return share


def arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("files", nargs="*", help="sources whose mutants are tried; all without one")
    parser.add_argument("--root", default=os.path.dirname(os.path.dirname(HERE)), help="the project")
    parser.add_argument("--folders", nargs="+", default=["common_sources", "config", "LM_Daemon", "util", "host"])
    parser.add_argument("--targets", nargs="+", help="the test programs", default=[
        "module_test", "core_test", "util_tests", "util_memory_tests", "config_tests", "logging_tests",
        "log_cost_tests", "log_fault_tests", "settings_tests", "settings_memory_tests", "allocation_test",
        "module_life_test"])
    parser.add_argument("--kept", default=os.path.join(HERE, "equivalents.txt"), help="the list of equivalents")
    parser.add_argument("--folder", help="where the build and the results are kept: build/mutation")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--minutes", type=float, default=1e6, help="end after this time; the next run goes on")
    parser.add_argument("--wanted", type=float, default=95.0, help="per cent")
    return parser.parse_args()


def main():
    options = arguments()
    root = os.path.abspath(options.root)
    folder = os.path.abspath(options.folder or os.path.join(root, "build", "mutation"))
    kept = Equivalents(options.kept)
    os.makedirs(folder, exist_ok=True)
    if not is_granted(folder):
        sys.exit("Mutants may do any harm, so they run in a mount namespace, which this system does not grant.")
    build = Build(root, folder, options.folders, options.targets)
    say("looking for places")
    build.copy_sources()
    build.configure()
    build.find()
    build.rewrite()
    files = {os.path.relpath(os.path.abspath(file), root) for file in options.files} or set(build.mutants)
    if files - set(build.mutants):
        sys.exit(f"expected a source that the build has, in {', '.join(options.folders)}; found "
                 f"{', '.join(sorted(files - set(build.mutants)))}")
    say("building")
    build.build(say)
    tests = Tests(build.binary, options.targets, folder, options.jobs)
    tests.find()
    for name in tests.record(say):
        say(f"{name} fails without a mutant and is left out")
    mutants = [mutant for file in sorted(files) for mutant in build.mutants[file]]
    results = Results(os.path.join(folder, "results.jsonl"), build, tests)
    is_complete = try_mutants(mutants, tests, results, kept, options.jobs, options.minutes)
    print_survivors(mutants, tests, results, kept)
    for file in build.not_built:
        say(f"{file} is no part of this build")
    faults = kept.stale(mutant for found in build.mutants.values() for mutant in found)
    faults += [f"{mutant.file}:{mutant.line}: {mutant.change} is kept as equivalent, but {results.of(mutant)}"
               for mutant in mutants if kept.has(mutant) and results.of(mutant)]
    share = print_figures(build, mutants, results, kept)
    for fault in faults:
        print(fault)
    return 1 if faults or share < options.wanted or not is_complete else 0


if __name__ == "__main__":
    sys.exit(main())
