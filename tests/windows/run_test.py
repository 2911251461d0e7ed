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
1400 select 100
1500 motion 5 0 10 40 -60 20
2000 motion 0 0 0 0 0 0
2200 select none
2300 key top
2700 command LM_Toggle_Scroll_Mode
3100 key fit
3500 command LM_Toggle_Scroll_Mode
3900 end
"""
# The line 100 of the drawing, from (0, -45, 60) to (0, 65, 60): the view turns about its middle.
CENTRE = "0,10,60"


def main(source, build, program):
    workbenches = Workbenches(source, build, program)
    with tempfile.TemporaryDirectory() as folder:
        session = os.path.join(folder, "a.session")
        with open(session, "w", encoding="ascii") as file:
            file.write(SESSION)
        native, windows = workbenches.play_both(session, folder)
        report, is_followed = workbenches.trajectory_report(session, windows, "--centre", CENTRE)
        print(report)
        failed = not is_followed
        # The check sees the selection: about the view's own centre, the second movement is another.
        report, is_followed = workbenches.trajectory_report(session, windows)
        if is_followed:
            print(f"the check does not see the centre of the selection: {report}")
            failed = True
        failed += differences("texts", texts(native), texts(windows))
        failed += differences("settings", settings(native), settings(windows))
        failed += differences("log lines", sorted(log_lines(native)), sorted(log_lines(windows)))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
