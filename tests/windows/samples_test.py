#!/usr/bin/env python3
"""Plays a sample session natively and under Wine: both runs are clean and write the whole report, and they tell the
same texts, settings and entities.

usage: samples_test.py SOURCE_FOLDER WINDOWS_BUILD_FOLDER WINDOWS_WORKBENCH SESSION
"""
import sys
import tempfile

from both_builds import Workbenches, differences, entities, settings, texts


def main(source, build, program, session):
    workbenches = Workbenches(source, build, program)
    with tempfile.TemporaryDirectory() as folder:
        native, windows = workbenches.play_both(session, folder)
        failed = differences("texts", texts(native), texts(windows))
        failed += differences("settings", settings(native), settings(windows))
        failed += differences("entities", entities(native), entities(windows))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
