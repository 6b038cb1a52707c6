#!/usr/bin/python3
"""Stamps every file of the folders given, whatever it is called, and holds each copy against its original object by
object.

Usage: replayed_objects.py PRODUCE FOLDER...
"""
import os
import shutil
import sys
import tempfile

import same_objects
from limited import run


def findings_of(produce, source):
    """What differs in the copy of `source`; None where there is no copy."""
    with tempfile.TemporaryDirectory() as work:
        original = os.path.join(work, "original.pdf")
        shutil.copyfile(source, original)
        production = os.path.join(work, "production")
        os.mkdir(production)
        run([produce, "--no-index", production, original], megabytes=None)
        written = os.listdir(production)
        return same_objects.findings(original, os.path.join(production, written[0])) if written else None


def main():
    if len(sys.argv) < 3:
        print(__doc__, file=sys.stderr)
        return 64
    copies = faults = 0
    for folder in filter(os.path.isdir, sys.argv[2:]):
        for name in sorted(os.listdir(folder)):
            found = findings_of(sys.argv[1], os.path.join(folder, name))
            copies += found is not None
            faults += bool(found)
            for line in found or []:
                print(f"{name}: {line}")
    print(f"{copies} copies, {faults} with findings")
    return 1 if faults or not copies else 0


if __name__ == "__main__":
    sys.exit(main())
