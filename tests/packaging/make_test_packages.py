#!/usr/bin/env python3
"""Makes the packages that the tests install: the one that is handed out, an older one with a file that is gone since,
one that differs in the fourth number only, and a newer one.

usage: make_test_packages.py PACKAGING_FOLDER DESCRIPTION OUT
"""
import os
import sys

OLDER, SIBLING, NEWER = "2.9.1.0", "2.9.2.1", "3.0.0.0"
GONE = "gone_since.dll"
SOME_TIME = "1763301908"


def main(packaging, description_path, out):
    sys.path.insert(0, packaging)
    # The sources may be a copy without their history.
    os.environ.setdefault("SOURCE_DATE_EPOCH", SOME_TIME)
    from make_package import make_package, read_description  # pylint: disable=import-error,import-outside-toplevel
    description = read_description(description_path)
    make_package(description, os.path.join(out, "current"))
    make_package(dict(description, version=SIBLING), os.path.join(out, "sibling"))
    make_package(dict(description, version=NEWER), os.path.join(out, "newer"))
    gone = dict(description["programs"][0], name=GONE)
    make_package(dict(description, version=OLDER, programs=description["programs"] + [gone]), os.path.join(out, "older"))


if __name__ == "__main__":
    main(*sys.argv[1:])
