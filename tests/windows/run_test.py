#!/usr/bin/env python3
"""Plays one session natively and under Wine, and compares what both tell: the trajectory follows the same formulas,
and the texts, the settings file and the log are equal but for times and numbers of threads.

usage: run_test.py SOURCE_FOLDER WINDOWS_BUILD_FOLDER WINDOWS_WORKBENCH
"""
import os
import sys
import tempfile

from both_builds import Workbenches, differences, log_lines, settings, texts

SESSION = """0 rotmode 010 zoom on
400 motion 7 -4 25 60 -40 30
1200 motion 0 0 0 0 0 0
1600 key top
2000 command LM_Toggle_Scroll_Mode
2400 key fit
2800 command LM_Toggle_Scroll_Mode
3200 end
"""


def main(source, build, program):
    workbenches = Workbenches(source, build, program)
    with tempfile.TemporaryDirectory() as folder:
        session = os.path.join(folder, "a.session")
        with open(session, "w", encoding="ascii") as file:
            file.write(SESSION)
        native, windows = workbenches.play_both(session, folder)
        report, is_followed = workbenches.trajectory_report(session, windows)
        print(report)
        failed = not is_followed
        failed += differences("texts", texts(native), texts(windows))
        failed += differences("settings", settings(native), settings(windows))
        failed += differences("log lines", sorted(log_lines(native)), sorted(log_lines(windows)))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
