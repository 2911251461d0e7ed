"""The copy of the sources, its rewriting and its build."""
import hashlib
import json
import os
import re
import shlex
import shutil
import subprocess
import sys

from find_mutants import find_mutants
from rewrite import Rewriter, number_mutants

# Folders of a working copy that hold no sources.
NOT_COPIED = {".git", "build", "out", "node_modules", "__pycache__"}
MAX_MUTANTS = 1 << 16  # as in mutants.h
ROUNDS = 12


def digest(*texts):
    return hashlib.sha256("\0".join(texts).encode("latin-1")).hexdigest()[:16]


def read(path):
    with open(path, encoding="latin-1") as file:
        return file.read()


def write_if_changed(path, text):
    """The build goes by the times of files."""
    if not os.path.exists(path) or read(path) != text:
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="latin-1") as file:
            file.write(text)


class Build:
    """One build with all mutants of all files. What it found out is kept in `folder`."""

    def __init__(self, root, folder, folders, targets):
        self.root, self.folder, self.folders, self.targets = root, folder, folders, targets
        self.copy, self.binary = os.path.join(folder, "source"), os.path.join(folder, "build")
        self.header = os.path.join(os.path.dirname(os.path.abspath(__file__)), "mutants.h")
        self.mutants = {}   # {file: [Mutant]}
        self.rewriters = {}
        self.text_digests = {}
        self.kept_file = os.path.join(folder, "places.json")
        # {"ranges": {file: [first, size]}, "places": {file: [digest, places]}, "refused": {file: [digest, keys]}}
        self.kept = json.loads(read(self.kept_file)) if os.path.exists(self.kept_file) else {}
        for name in ("ranges", "places", "refused"):
            self.kept.setdefault(name, {})
        self.tool = digest(*(read(os.path.join(os.path.dirname(self.header), name))
                             for name in ("find_mutants.py", "mutants.h")))

    def save(self):
        os.makedirs(self.folder, exist_ok=True)
        with open(self.kept_file + ".new", "w", encoding="latin-1") as file:
            json.dump(self.kept, file)
        os.replace(self.kept_file + ".new", self.kept_file)

    # The copy.

    def copy_sources(self):
        """All but the files with mutants, which are written by the rewriting."""
        present = set()
        for folder, folders, files in os.walk(self.root):
            folders[:] = [name for name in folders if name not in NOT_COPIED]
            for name in files:
                path = os.path.join(folder, name)
                relative = os.path.relpath(path, self.root)
                present.add(relative)
                target = os.path.join(self.copy, relative)
                if relative in self.kept["places"] and os.path.exists(target):
                    continue
                if not os.path.exists(target) or os.stat(path).st_mtime_ns > os.stat(target).st_mtime_ns or \
                        os.path.getsize(path) != os.path.getsize(target):
                    os.makedirs(os.path.dirname(target), exist_ok=True)
                    # With the present time, or what was built from an older copy would look newer.
                    shutil.copy(path, target)
        for folder, _, files in os.walk(self.copy):
            for name in files:
                path = os.path.join(folder, name)
                if os.path.relpath(path, self.copy) not in present:
                    os.remove(path)

    def configure(self):
        # No warnings: the unused half of a choice is a good reason for many. The library's assertions notice what the
        # address sanitizer's build would.
        flags = "-w -O0 -D_GLIBCXX_ASSERTIONS -Wno-narrowing -fmax-errors=0 -fdiagnostics-color=never"
        command = ["cmake", "-G", "Ninja", "-S", self.copy, "-B", self.binary, "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON",
                   "-DCMAKE_CXX_COMPILER=g++", f"-DCMAKE_CXX_FLAGS={flags}"]
        if not os.path.exists(os.path.join(self.binary, "build.ninja")):
            self.run(command)

    def run(self, command):
        result = subprocess.run(command, capture_output=True, text=True, errors="replace")
        if result.returncode != 0:
            sys.exit(f"{shlex.join(command)}:\n{result.stdout[-3000:]}{result.stderr[-3000:]}")

    # The mutants.

    def wanted_files(self):
        result = set()
        for folder in self.folders:
            for where, _, names in os.walk(os.path.join(self.root, folder)):
                result |= {os.path.join(where, name) for name in names if name.endswith((".cpp", ".h"))}
        return result

    def find(self):
        """Parses what has changed. A header is found with the first source that includes it."""
        with open(os.path.join(self.binary, "compile_commands.json"), encoding="utf-8") as file:
            commands = json.load(file)
        wanted = self.wanted_files()
        fresh = {path for path in wanted if self.is_fresh(path)}
        done = set(fresh)
        for entry in commands:
            source = os.path.join(self.root, os.path.relpath(entry["file"], self.copy))
            if source not in wanted or wanted <= done:
                continue
            # A header alone is parsed again with a source that is not.
            if source in done and not any(path not in done and path.endswith(".h") for path in wanted):
                continue
            places = find_mutants(source, self.arguments(entry), wanted - done)
            for path, found in places.items():
                done.add(path)
                self.kept["places"][os.path.relpath(path, self.root)] = [self.digest_of(path), found]
        for gone in set(self.kept["places"]) - {os.path.relpath(path, self.root) for path in done}:
            del self.kept["places"][gone]
        self.not_built = sorted(os.path.relpath(path, self.root) for path in wanted - done)
        self.save()

    def digest_of(self, path):
        return digest(read(path), self.tool)

    def text_digest(self, file):
        if file not in self.text_digests:
            self.text_digests[file] = digest(read(os.path.join(self.root, file)))
        return self.text_digests[file]

    def is_fresh(self, path):
        kept = self.kept["places"].get(os.path.relpath(path, self.root))
        return kept is not None and kept[0] == self.digest_of(path)

    def arguments(self, entry):
        words = shlex.split(entry["command"].replace(self.copy, self.root))[1:]
        kept = [word for word in words if word.startswith(("-I", "-D", "-std", "-isystem"))]
        return kept + ["-xc++", "-w"]

    def rewrite(self):
        for file, (found_in, places) in sorted(self.kept["places"].items()):
            text = read(os.path.join(self.root, file))
            first = self.first_number(file, sum(len(place["changes"]) for place in places))
            refused = self.kept["refused"].get(file)
            keys = set(refused[1]) if refused and refused[0] == found_in else set()
            mutants, numbered = number_mutants(file, text, places, first, keys)
            self.mutants[file] = [mutant for mutant in mutants if mutant.key not in keys]
            rewriter = Rewriter(text, numbered, self.header)
            self.rewriters[file] = rewriter
            write_if_changed(os.path.join(self.copy, file), rewriter.result if numbered else text)
        self.save()

    def first_number(self, file, count):
        """A range of numbers with room to grow, so that a change of one file leaves the others as they are."""
        ranges = self.kept["ranges"]
        if file not in ranges or ranges[file][1] < count:
            first = max((start + size for start, size in ranges.values()), default=1)
            ranges[file] = [first, 2 * count + 20]
            if first + ranges[file][1] > MAX_MUTANTS:
                sys.exit(f"Out of numbers: remove {self.folder} and begin afresh.")
        return ranges[file][0]

    # The build.

    def build(self, say):
        """Builds; leaves out the mutants that the compiler refuses until it accepts the rest."""
        for _ in range(ROUNDS):
            command = ["cmake", "--build", self.binary, "--target", *self.targets, "--", "-k", "0"]
            result = subprocess.run(command, capture_output=True, text=True, errors="replace")
            if result.returncode == 0:
                return
            blamed = self.blame(result.stdout)
            if not blamed:
                sys.exit(f"{shlex.join(command)}:\n{result.stdout[-6000:]}")
            say(f"{len(blamed)} mutants do not compile")
            for file, key in blamed:
                found_in = self.kept["places"][file][0]
                refused = self.kept["refused"].get(file)
                if not refused or refused[0] != found_in:
                    refused = self.kept["refused"][file] = [found_in, []]
                refused[1].append(key)
            self.rewrite()
        sys.exit(f"The build still fails after {ROUNDS} rounds:\n{result.stdout[-3000:]}")

    def blame(self, output):
        """Mutants at the places of the errors, or of what they say they come from."""
        result, around = set(), []
        location = re.compile(re.escape(self.copy) + r"/([^:\s]+):(\d+)(?::(\d+))?")
        for line in output.splitlines():
            match = location.search(line)
            mutants = []
            if match and match[1] in self.rewriters:
                mutants = self.rewriters[match[1]].blamed(int(match[2]), int(match[3] or 1))
            if re.search(r"\berror:", line):
                mutants = mutants or around
                around = []
            elif "required from" in line or "In instantiation" in line or "in ‘constexpr’ expansion" in line:
                around = mutants or around
                continue
            else:
                continue
            result |= {(mutant.file, mutant.key) for mutant in mutants}
        return result

    def refused_count(self, file):
        refused = self.kept["refused"].get(file)
        return len(refused[1]) if refused and refused[0] == self.kept["places"][file][0] else 0
