#!/usr/bin/env python3
"""Runs the mutation run over a sample whose mutants are known.

usage: mutation_test.py, status 77, for skipped, without clang's Python bindings (1 when CI is set) or a mount namespace
"""
import os
import re
import shutil
import stat
import subprocess
import sys
import tempfile
import unittest

import contained

HERE = os.path.dirname(os.path.abspath(__file__))

EQUIVALENT = """
file:   source/limit.cpp
line:   if (value < low) return low;
change: value < low => value <= low
reason: The limit itself is returned either way.

line:   return value > high ? high : value;
change: value > high => value >= high
reason: The same for the upper limit.
"""


class MutationRun(unittest.TestCase):
    """One sample for all: the second run of it needs no second build."""

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.root = os.path.join(cls.folder.name, "sample")
        shutil.copytree(os.path.join(HERE, "sample"), cls.root)
        cls.first = cls.run_tool("")

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    @classmethod
    def run_tool(cls, kept, *options):
        """Status and output; `kept` is the text of the list of equivalents."""
        path = os.path.join(cls.folder.name, "equivalents.txt")
        with open(path, "w", encoding="utf-8") as file:
            file.write(kept)
        result = subprocess.run(
            [sys.executable, os.path.join(HERE, "mutation.py"), "--root", cls.root, "--folders", "source",
             "--targets", "sample_test", "--kept", path, *options], capture_output=True, text=True, check=False)
        return result.returncode, result.stdout + result.stderr

    def survivors(self, output):
        return sorted(" ".join(match) for match in
                      re.findall(r"^(\S+:\d+): survived.*\n    line: .*\n    change: (.*)$", output, re.M))

    def test_survivors_are_named_by_file_line_and_change(self):
        self.assertEqual([
            "source/limit.cpp:4 value < low => value <= low",
            "source/limit.cpp:5 value > high => false",
            "source/limit.cpp:5 value > high => value >= high",
            "source/steps.cpp:25 !isOdd => isOdd",
        ], self.survivors(self.first[1]))

    def test_mutants_no_test_reaches_are_marked(self):
        self.assertIn("source/steps.cpp:25: survived  (no test reaches it)", self.first[1])
        self.assertIn("source/limit.cpp:4: survived\n", self.first[1])

    def test_figures_count_killed_survived_and_refused(self):
        # The sum of two pointers is the one that does not compile.
        self.assertRegex(self.first[1], r"\nsource +24 +20 +0 +4 +0 +83\.3 +1\n")

    def test_too_small_a_share_is_a_failure(self):
        self.assertEqual(1, self.first[0])
        self.assertEqual(0, self.run_tool("", "--wanted", "80")[0])

    def test_known_results_are_not_tried_again(self):
        self.assertIn("== trying 0 mutants, 24 are known", self.run_tool("")[1])

    def test_equivalents_count_neither_way(self):
        status, output = self.run_tool(EQUIVALENT, "--wanted", "90")
        self.assertEqual(0, status)
        self.assertEqual(["source/limit.cpp:5 value > high => false", "source/steps.cpp:25 !isOdd => isOdd"],
                         self.survivors(output))
        self.assertRegex(output, r"\nsource +24 +20 +2 +2 +0 +90\.9 +1\n")

    def test_stale_equivalent_is_refused(self):
        status, output = self.run_tool(EQUIVALENT.replace("(value < low)", "(value < lowest)"), "--wanted", "0")
        self.assertEqual(1, status)
        self.assertIn("equivalents.txt:5: no mutant of source/limit.cpp is like this any more: value < low", output)

    def test_equivalent_that_a_test_notices_is_refused(self):
        kept = EQUIVALENT.replace("value > high => value >= high", "value > high => true")
        status, output = self.run_tool(kept, "--wanted", "0")
        self.assertEqual(1, status)
        self.assertIn("value > high => true is kept as equivalent, but Limited.", output)

    def test_equivalent_without_a_reason_is_refused(self):
        status, output = self.run_tool(EQUIVALENT.replace("reason:", "because:"), "--wanted", "0")
        self.assertEqual(1, status)
        self.assertIn("equivalents.txt:5: expected 'file:', 'line:', 'change:' or 'reason:' and a text", output)

    def test_only_the_named_files_are_tried(self):
        output = self.run_tool("", os.path.join(self.root, "source/limit.h"))[1]
        self.assertIn("== trying 0 mutants, 6 are known", output)
        status, output = self.run_tool("", "unknown.cpp")
        self.assertEqual(1, status)
        self.assertIn("expected a source that the build has, in source; found", output)

    def test_zy_a_test_that_was_changed_before_the_last_build_ended_is_built(self):
        path = os.path.join(self.root, "sample_test.cpp")
        with open(path, "a", encoding="utf-8") as file:
            file.write("\nTEST(Limited, ValueAboveBecomesTheUpperLimit) {\n  EXPECT_EQ(9, limited(20, 0, 9));\n}\n")
        copied = os.stat(os.path.join(self.root, "build", "mutation", "source", "sample_test.cpp")).st_mtime_ns
        os.utime(path, ns=(copied + 1, copied + 1))
        self.assertNotIn("source/limit.cpp:5 value > high => false", self.survivors(self.run_tool("")[1]))

    def test_zz_after_a_change_only_that_file_and_the_survivors_are_tried(self):
        path = os.path.join(self.root, "source", "limit.cpp")
        with open(path, "a", encoding="utf-8") as file:
            file.write("\nint doubled(int value) {\n  return value * 2;\n}\n")
        output = self.run_tool("")[1]
        # 8 and 3 new ones of the file, and the survivor of the other.
        self.assertIn("== trying 12 mutants, 15 are known", output)
        self.assertIn("source/limit.cpp:9: survived  (no test reaches it)", output)


class Containment(unittest.TestCase):
    def run_contained(self, script):
        with tempfile.TemporaryDirectory() as folder:
            return subprocess.run(["bash", "-c", script], preexec_fn=lambda: contained.contain(folder),
                                  capture_output=True, text=True, check=False)

    def test_no_file_of_the_machine_can_be_changed(self):
        harmed = "/lm_harmed_by_a_mutant"
        self.addCleanup(lambda: os.path.exists(harmed) and os.remove(harmed))
        result = self.run_contained(f"touch {harmed}")
        self.assertIn("Read-only file system", result.stderr)
        self.assertFalse(os.path.exists(harmed))

    def test_devices_are_those_of_the_process(self):
        result = self.run_contained("echo > /dev/null && rm /dev/null && ls /dev/null")
        self.assertIn("cannot access '/dev/null'", result.stderr)
        self.assertTrue(stat.S_ISCHR(os.stat("/dev/null").st_mode))

    def test_temporary_files_are_those_of_the_process(self):
        with tempfile.NamedTemporaryFile() as outside:
            result = self.run_contained(f"touch /tmp/inside && ls /tmp; ls {outside.name}")
        self.assertIn("inside", result.stdout)
        self.assertIn("cannot access", result.stderr)
        self.assertFalse(os.path.exists("/tmp/inside"))


if __name__ == "__main__":
    sys.path.append("/usr/lib/python3/dist-packages")
    try:
        import clang.cindex  # noqa: F401
    except ImportError:
        print("skipped: clang's Python bindings, package python3-clang-14, are not installed")
        sys.exit(1 if os.environ.get("CI") == "true" else 77)
    if not contained.is_granted(tempfile.gettempdir()):
        print("skipped: this system grants no mount namespace, in which mutants do no harm")
        sys.exit(77)
    unittest.main()
