"""Writes a source with all its mutants in it, each of which a number switches on at run time.

Nothing but the first line is added, and that without moving the others: log lines and assertions name lines.
"""
from dataclasses import dataclass


@dataclass
class Mutant:
    number: int      # in this run's build
    file: str        # relative to the root of the sources
    line: int
    source: str      # the line of the source, without its indentation
    change: str      # what was => what is put there
    occurrence: int  # counts the same change in the same line

    @property
    def key(self):
        return f"{self.source}\t{self.change}\t{self.occurrence}"


def number_mutants(file, text, places, first, refused):
    """Mutants of a file, and their places: [(place, [(mutant, text to put there)])]. `refused` holds keys."""
    lines, mutants, numbered, seen = text.split("\n"), [], [], {}
    number = first
    for place in places:
        line = text.count("\n", 0, place["start"]) + 1
        source = lines[line - 1].strip()
        alternatives = []
        for put, change in place["changes"]:
            seen[source, change] = occurrence = seen.get((source, change), 0) + 1
            mutant = Mutant(number, file, line, source, change, occurrence)
            number += 1
            mutants.append(mutant)
            if mutant.key not in refused:
                alternatives.append((mutant, put))
        if alternatives:
            numbered.append((place, alternatives))
    return mutants, numbered


class Rewriter:
    """Puts the alternatives into the text and remembers where they are in the result."""

    def __init__(self, text, numbered, header):
        self.text, self.numbered = text, numbered
        self.parts, self.size = [], 0
        self.ranges = []  # (start, end, [mutant]) in the result
        self.put(f'#include "{header}"\n#line 1\n')
        self.index = 0
        self.copy(0, len(text))
        self.result = "".join(self.parts)

    def put(self, text):
        self.parts.append(text)
        self.size += len(text)

    def copy(self, start, end):
        """The text from start to end, with the places inside."""
        while self.index < len(self.numbered) and self.numbered[self.index][0]["end"] <= end:
            place, alternatives = self.numbered[self.index]
            self.index += 1
            self.put(self.text[start:place["start"]])
            self.place(place, alternatives)
            start = place["end"]
        self.put(self.text[start:end])

    def place(self, place, alternatives):
        begin = self.size
        is_statement = place["kind"] == "statement"
        self.put("{ " if is_statement else "(")
        for mutant, put in alternatives:
            test = f"lm_mutation::is({mutant.number})"
            start = self.size
            self.put(f"if ({test}) {{ {put} }} else " if is_statement else f"{test} ? ({put}) : ")
            self.ranges.append((start, self.size, [mutant]))
        self.put({"statement": "", "condition": "static_cast<bool>("}.get(place["kind"], "("))
        self.copy(place["start"], place["end"])
        self.put(" }" if is_statement else "))")
        self.ranges.append((begin, self.size, [mutant for mutant, _ in alternatives]))

    def blamed(self, line, column):
        """The innermost mutants around a place that the compiler complains of, else those of the line."""
        lines = self.result.split("\n")
        # Line 1 is the source's, which is the third of the result.
        start = sum(len(text) + 1 for text in lines[:line + 1])
        offset = start + column - 1
        around = [item for item in self.ranges if item[0] <= offset < item[1]]
        if around:
            return min(around, key=lambda item: item[1] - item[0])[2]
        end = start + len(lines[line + 1]) if line + 1 < len(lines) else start
        return [mutant for item in self.ranges if item[0] < end and start <= item[1] for mutant in item[2]]
