#!/usr/bin/python3
"""Writes a PDF file anew so that it shows the same.

Usage: rewrite.py --kind KIND [--kind KIND]... [--seed N] SOURCE TARGET
       rewrite.py --list

Several kinds are done in one writing. Exit code 65 when the file cannot be written so, and standard error says why.
"""
import argparse
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from rewriting.document import NotRewritable  # noqa: E402
from rewriting.kinds import KINDS  # noqa: E402
from rewriting.rewriting import rewrite  # noqa: E402

NOT_REWRITABLE = 65


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--kind", action="append", default=[], choices=KINDS, metavar="KIND")
    parser.add_argument("--seed", type=int, default=0)
    parser.add_argument("files", nargs="*", metavar="SOURCE TARGET")
    arguments = parser.parse_args()
    if arguments.list:
        for name, kind in KINDS.items():
            print(f"{name}: {kind.description}")
        return 0
    if len(arguments.files) != 2 or not arguments.kind:
        parser.error("one or more kinds, a source and a target are needed")
    try:
        rewrite(*arguments.files, arguments.kind, arguments.seed)
    except NotRewritable as reason:
        print(reason, file=sys.stderr)
        return NOT_REWRITABLE
    return 0


if __name__ == "__main__":
    sys.exit(main())
