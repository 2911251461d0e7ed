#!/usr/bin/env python3
"""Sums up JUnit files of ctest: prints failures with their output, the reasons of skips, and the count line.

usage: count_tests.py FILE.xml...
Status 1 when a test failed or none ran.
"""
import sys
import xml.etree.ElementTree as ElementTree

REASON_LINES = 3
FAILURE_LINES = 40


def tail(text, lines):
    return "\n".join(text.strip().splitlines()[-lines:])


def skip_reason(output):
    """GoogleTest prints the reason on the line after the place of the skip; scripts print a line 'skipped: ...'."""
    lines = [line.strip() for line in output.splitlines()]
    for index, line in enumerate(lines):
        if line.startswith("skipped:"):
            return line[len("skipped:"):].strip()
        if line.endswith("Skipped") and index + 1 < len(lines):
            return lines[index + 1]
    return tail(output, REASON_LINES)


def main(files):
    passed, failed, reasons = 0, 0, {}
    for file in files:
        for case in ElementTree.parse(file).getroot().iter("testcase"):
            output = case.findtext("system-out") or ""
            if case.find("skipped") is not None or case.get("status") in ("notrun", "disabled"):
                reasons.setdefault(skip_reason(output), []).append(case.get("name"))
            elif case.find("failure") is not None or case.get("status") == "fail":
                failed += 1
                print(f"--- {file}: {case.get('name')}\n{tail(output, FAILURE_LINES)}")
            else:
                passed += 1
    skipped = sum(len(names) for names in reasons.values())
    for reason, names in sorted(reasons.items()):
        print(f"skipped {len(names)}: {reason}")
    print(f"{passed} passed, {failed} failed, {skipped} skipped")
    return 0 if passed and not failed else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
