"""The tests of the build: which there are, what each reaches, and whether any notices a mutant."""
import collections
import glob
import hashlib
import json
import mmap
import os
import re
import resource
import signal
import subprocess
import tempfile
import time
from concurrent.futures import ThreadPoolExecutor

from contained import contain

MAX_MUTANTS = 1 << 16  # as in mutants.h
MEMORY = 4 << 30       # an endless loop that allocates must not take the machine's
FIRST, MORE = 6, 40    # tests in the first run of a program, and in each that follows
SLOW, MANY = 1.0, 100  # a test that takes longer is not run for what more than so many tests reach
SECONDS = 5            # that any run may take, beside a multiple of what it takes without a mutant


def file_digest(path):
    with open(path, "rb") as file:
        return hashlib.sha256(file.read()).hexdigest()[:16]


def prepare(kept):
    """The process of a run, before its program; `kept` is the folder of the build."""
    contain(kept)
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def run(program, names, folder, kept, environment, seconds, handles=()):
    """Runs the tests until the first failure: None when all pass, else the one that failed, and how."""
    command = [program, "--gtest_fail_fast", "--gtest_filter=" + ":".join(names)]
    with tempfile.TemporaryFile() as output:
        process = subprocess.Popen(
            command, cwd=folder, env={**os.environ, "HOME": "/tmp", "TMPDIR": "/tmp", **environment},
            stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT, pass_fds=handles,
            start_new_session=True, preexec_fn=lambda: prepare(kept))
        try:
            status = process.wait(seconds)
        except subprocess.TimeoutExpired:
            status = "takes too long"
            os.killpg(process.pid, signal.SIGKILL)
            process.wait()
        output.seek(0)
        text = output.read().decode("utf-8", "replace")
    if status == 0:
        # A program that ends early has not run its tests.
        return None if re.search(r"\[  PASSED  \]", text) else (names[0], "ends early")
    failed = re.findall(r"\[  FAILED  \] ([\w./]+)", text) or re.findall(r"\[ RUN      \] ([\w./]+)", text)[-1:] or names
    return failed[0], status if isinstance(status, str) else "fails" if status == 1 else "ends the program"


class Tests:
    def __init__(self, binary, targets, folder, jobs):
        self.binary, self.targets, self.kept, self.jobs = binary, targets, folder, jobs
        self.file = os.path.join(folder, "reached.json")
        self.programs = {}  # {program: {"digest", "folder", "tests": {name: [seconds, [number]]}}}
        self.recent = collections.defaultdict(lambda: collections.deque(maxlen=8))

    def find(self):
        listing = subprocess.run(["ctest", "--show-only=json-v1"], cwd=self.binary, capture_output=True, text=True,
                                 check=True)
        libraries = [path for pattern in ("*.arx", "*.so")
                     for path in glob.glob(os.path.join(self.binary, "**", pattern), recursive=True)]
        loaded = "".join(file_digest(path) for path in sorted(libraries))
        for test in json.loads(listing.stdout)["tests"]:
            command = test.get("command", [])
            names = [word.split("=", 1)[1] for word in command if word.startswith("--gtest_filter=")]
            if not names or os.path.basename(command[0]) not in self.targets:
                continue
            properties = {item["name"]: item["value"] for item in test["properties"]}
            program = self.programs.setdefault(command[0], {
                "digest": hashlib.sha256((file_digest(command[0]) + loaded).encode()).hexdigest()[:16],
                "folder": properties["WORKING_DIRECTORY"], "tests": {}})
            program["tests"][names[0]] = None

    def digest(self):
        """Changes with the tests, and with what they test."""
        return hashlib.sha256("".join(sorted(item["digest"] for item in self.programs.values())).encode()).hexdigest()[:16]

    # What each test reaches.

    def record(self, say):
        kept = {}
        if os.path.exists(self.file):
            with open(self.file, encoding="utf-8") as file:
                kept = json.load(file)
        failing = []
        for program, item in self.programs.items():
            old = kept.get(program)
            if old and old["digest"] == item["digest"] and set(old["tests"]) == set(item["tests"]):
                item["tests"] = old["tests"]
                continue
            say(f"recording what the tests of {os.path.basename(program)} reach")
            with ThreadPoolExecutor(self.jobs) as pool:
                for name, found in zip(item["tests"], pool.map(lambda name: self.reached(program, item, name),
                                                               list(item["tests"]))):
                    item["tests"][name] = found
        for program, item in self.programs.items():
            failing += [name for name, found in item["tests"].items() if found is None]
            item["tests"] = {name: found for name, found in item["tests"].items() if found is not None}
        with open(self.file + ".new", "w", encoding="utf-8") as file:
            json.dump({program: item for program, item in self.programs.items()}, file)
        os.replace(self.file + ".new", self.file)
        self.by_mutant = collections.defaultdict(list)
        for program, item in self.programs.items():
            for name, (seconds, numbers) in item["tests"].items():
                for number in numbers:
                    self.by_mutant[number].append((seconds, program, name))
        return failing

    def reached(self, program, item, name):
        """Seconds and numbers of the mutants; None for a test that fails without one."""
        with tempfile.NamedTemporaryFile() as file:
            file.truncate(MAX_MUTANTS)
            start = time.monotonic()
            for _ in range(2):
                # Through the handle: the path is not there in the process.
                record = {"LM_MUTATION_REACHED": f"/proc/self/fd/{file.fileno()}"}
                if run(program, [name], item["folder"], self.kept, record, 120, [file.fileno()]) is None:
                    break
            else:
                return None
            seconds = time.monotonic() - start
            with mmap.mmap(file.fileno(), MAX_MUTANTS) as record:
                return [round(seconds, 4), [number for number, is_reached in enumerate(record[:]) if is_reached]]

    # Whether any notices.

    def noticed_by(self, mutant):
        """None, or the test and how it failed. The tests that noticed the neighbours come first, then the fast ones."""
        recent = self.recent[mutant.file]
        programs = collections.defaultdict(list)
        reaching = sorted(self.by_mutant[mutant.number])
        if len(reaching) > MANY:
            reaching = [test for test in reaching if test[0] <= SLOW]
        for seconds, program, name in reaching:
            programs[program].append((seconds, name))
        ordered = sorted(programs, key=lambda program: (not any(name in recent for _, name in programs[program]),
                                                        sum(seconds for seconds, _ in programs[program])))
        for program in ordered:
            tests = sorted(programs[program], key=lambda test: (test[1] not in recent, test[0]))
            size = FIRST
            while tests:
                chosen, tests, size = tests[:size], tests[size:], MORE
                limit = SECONDS + 5 * sum(seconds for seconds, _ in chosen)
                failure = run(program, [name for _, name in chosen], self.programs[program]["folder"], self.kept,
                              {"LM_MUTANT": str(mutant.number)}, limit)
                if failure:
                    if failure[0] not in recent:
                        recent.appendleft(failure[0])
                    return failure
        return None
