#!/usr/bin/env python3
"""Makes what is handed to users: the bundle for AutoCAD's autoloader, the same as a zip file, the installer, and a list
of their SHA-256 sums.

usage: make_package.py DESCRIPTION OUT [--sign KEY]
DESCRIPTION is the package.json that the Windows build leaves: version, programs, where they are. What was in OUT is
replaced. The same commit gives the same bytes: all times are the commit's (or SOURCE_DATE_EPOCH).
"""
import argparse
import hashlib
import json
import os
import shutil
import subprocess
import sys
import tempfile

from archive import make_zip
from help_pages import HelpError, make_pages
from identity import BUNDLE, CONTENTS
from installer import files_below, make_installer
from notices import NoticeError, notices
from package_contents import package_contents
from signing import SigningError, sign

PRODUCT_FILE = "Lumetrapad-AutoCAD2013"


class PackageError(Exception):
    """Something of the package is missing."""


def read_description(path):
    with open(path, encoding="utf-8") as file:
        return json.load(file)


def source_date(source):
    """The commit's time, so that one commit gives one package."""
    if "SOURCE_DATE_EPOCH" in os.environ:
        return int(os.environ["SOURCE_DATE_EPOCH"])
    told = subprocess.run(["git", "-C", source, "log", "-1", "--format=%ct"], capture_output=True, text=True, check=False)
    if told.returncode != 0:
        raise PackageError("the time of the commit is not known: set SOURCE_DATE_EPOCH (seconds since 1970)")
    return int(told.stdout)


def write_text(path, text):
    """Lines end as Windows' editors expect them."""
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8", newline="\r\n") as file:
        file.write(text)


def copy_programs(description, contents):
    os.makedirs(contents)
    for program in description["programs"]:
        if not os.path.exists(program["path"]):
            raise PackageError(f"{program['path']}: expected the built {program['name']}, found no file")
        shutil.copyfile(program["path"], os.path.join(contents, program["name"]))


def set_times(folder, epoch):
    for path in files_below(folder):
        os.chmod(os.path.join(folder, path), 0o644)
        os.utime(os.path.join(folder, path), (epoch, epoch))


def make_bundle(description, folder, epoch, key):
    contents = os.path.join(folder, CONTENTS)
    copy_programs(description, contents)
    write_text(os.path.join(folder, "PackageContents.xml"), package_contents(description["version"]))
    write_text(os.path.join(contents, "notices.txt"),
               notices(description["build"], [program["map"] for program in description["programs"] if program["map"]]))
    make_pages(os.path.join(description["source"], "docs"), os.path.join(contents, "help"))
    if key:
        for program in description["programs"]:
            sign(os.path.join(contents, program["name"]), key, epoch)
    set_times(folder, epoch)


def write_sums(folder, names):
    lines = []
    for name in sorted(names):
        with open(os.path.join(folder, name), "rb") as file:
            lines.append(f"{hashlib.sha256(file.read()).hexdigest()}  {name}\n")
    with open(os.path.join(folder, "SHA256SUMS"), "w", encoding="ascii") as file:
        file.writelines(lines)


def make_package(description, out, key=None):
    """Leaves bundle, zip, installer and sums in the folder `out`; returns the paths of the last three."""
    epoch = source_date(description["source"])
    os.makedirs(os.path.dirname(os.path.abspath(out)), exist_ok=True)
    with tempfile.TemporaryDirectory(dir=os.path.dirname(os.path.abspath(out))) as work:
        made = os.path.join(work, "package")
        make_bundle(description, os.path.join(made, BUNDLE), epoch, key)
        names = [f"{PRODUCT_FILE}-{description['version']}.{kind}" for kind in ("zip", "msi")]
        make_zip(os.path.join(made, names[0]), os.path.join(made, BUNDLE), BUNDLE, epoch)
        make_installer(os.path.join(made, BUNDLE), description["version"], epoch, work, os.path.join(made, names[1]))
        if key:
            sign(os.path.join(made, names[1]), key, epoch)
        write_sums(made, names)
        shutil.rmtree(out, ignore_errors=True)
        os.rename(made, out)
    return [os.path.join(out, name) for name in (*names, "SHA256SUMS")]


def main():
    parser = argparse.ArgumentParser(description="Makes bundle and installer.")
    parser.add_argument("description")
    parser.add_argument("out")
    parser.add_argument("--sign", metavar="KEY", help="file with key and certificate: .p12, .pfx or .pem")
    arguments = parser.parse_args()
    try:
        made = make_package(read_description(arguments.description), arguments.out, arguments.sign)
    except (PackageError, NoticeError, HelpError, SigningError) as error:
        print(f"package: {error}", file=sys.stderr)
        return 2
    except subprocess.CalledProcessError as error:
        print(f"package: {error}\n{error.stderr or ''}", file=sys.stderr)
        return 1
    print("\n".join(made))
    return 0


if __name__ == "__main__":
    sys.exit(main())
