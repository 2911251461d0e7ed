"""The kept list of mutants that no test can notice: blocks of five lines, each with its reason.

    file:   util/util.cpp
    line:   if (base < 2 || base > 36) return "Base error";
    change: 36 => 36 + 1
    reason: there is no digit for it, and ...

Of equal changes in one line the second one is `change: ... [2]`. The line is the source's, without its indentation; where
it stands in the file does not count.
"""
import re
import sys


class Equivalents:
    def __init__(self, path):
        self.path, self.reasons = path, {}
        entry = {}
        with open(path, encoding="latin-1") as file:
            for number, line in enumerate(file, 1):
                line = line.strip()
                if not line or line.startswith("#"):
                    continue
                match = re.fullmatch(r"(file|line|change|reason):\s*(.+)", line)
                if not match:
                    sys.exit(f"{path}:{number}: expected 'file:', 'line:', 'change:' or 'reason:' and a text")
                # Entries of one file, or one line, need not repeat it.
                entry[match[1]] = match[2]
                if match[1] == "reason":
                    self.add(entry, number)
                    entry = {name: entry[name] for name in ("file", "line")}

    def add(self, entry, number):
        missing = [name for name in ("file", "line", "change") if name not in entry]
        if missing:
            sys.exit(f"{self.path}:{number}: expected '{missing[0]}:' before the reason")
        change, occurrence = re.fullmatch(r"(.*?)(?: \[(\d+)\])?", entry["change"]).groups()
        self.reasons[entry["file"], f"{entry['line']}\t{change}\t{occurrence or 1}"] = number

    def has(self, mutant):
        return (mutant.file, mutant.key) in self.reasons

    def stale(self, mutants):
        """What is said of entries that match no mutant any more."""
        known = {(mutant.file, mutant.key) for mutant in mutants}
        return [f"{self.path}:{number}: no mutant of {file} is like this any more: {key.split(chr(9))[1]}"
                for (file, key), number in self.reasons.items() if (file, key) not in known]
