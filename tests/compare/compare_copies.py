#!/usr/bin/python3
"""Makes a production of every PDF file of a folder, each on its own, and holds the copies against the originals.

Usage: compare_copies.py --produce PROGRAM [--keep FOLDER] [--only PART]... [--no-pictures] [--no-memory-limit]
                         [--jobs N] [FOLDER]

Without FOLDER the environment variable TALLYFOLD_CORPUS names it; exit code 77 when that is not set either.
A folder with a manifest.tsv says how many pages a tool finds in each file and whether it opens at all; there every
file has to come out as the tools agree it is. In any other folder what comes out has to be consistent.

A copy is right when
  qpdf finds it clean and with the pages it should have,
  Poppler and mupdf find the number on every page, at the bottom right,
  every object that can be seen is in it with the same values (same_objects.py), and nothing else of the original is,
  every page has the size at which the original is shown, upright,
  both draw every page as they draw the original, but for the white box with the number,
  and the original is what it was.
Where that is not so for a good reason, exceptions.tsv beside this file gives it: file, tool, page or *, cause.
Exit code 1 when there is anything it does not explain, or an exception that nothing needs any more.
"""
import argparse
import csv
import math
import os
import sys
import tempfile
from functools import partial

from copies import Options, examine
from workers import Limits, results

NOTHING_TO_TEST = 77
SECONDS_OF_A_FILE = 900
MEGABYTES_OF_A_FILE = 4096
PROBLEM_OF_STATE = {"locked": "locked", "restricted": "encrypted", "unreadable": "unreadable", "empty": "empty"}


def outcomes_of(row):
    """What a file of the manifest may rightly be taken for."""
    if row["state"] in PROBLEM_OF_STATE:
        return {PROBLEM_OF_STATE[row["state"]]}
    counts = {int(row[column]) for column in ("pages_qpdf", "pages_poppler", "pages_mupdf") if row[column] != "-"}
    if row["state"] == "ok":
        return counts
    # The tools disagree: any refusal may be defended, and else every page that a tool shows has to be there.
    return {"locked", "encrypted", "unreadable", "empty", max(counts)}


def files_of(folder):
    """Pairs of a path below `folder` and its row of the manifest, None where there is no manifest."""
    manifest = os.path.join(folder, "manifest.tsv")
    if os.path.exists(manifest):
        with open(manifest, encoding="utf-8", newline="") as file:
            return [(row["file"], row) for row in csv.DictReader(file, delimiter="\t", quoting=csv.QUOTE_NONE)]
    found = []
    for place, _, names in os.walk(folder):
        found += [os.path.relpath(os.path.join(place, name), folder) for name in names if name.lower().endswith(".pdf")]
    return [(name, None) for name in sorted(found)]


def examine_one(folder, options, entry):
    name, row = entry
    report = examine(os.path.join(folder, name), name, options, outcomes_of(row) if row else None)
    report.state = row["state"] if row else ""
    return report


class Exceptions:
    """Findings that have a cause other than a fault of ours."""

    def __init__(self, path):
        with open(path, encoding="utf-8", newline="") as file:
            rows = csv.DictReader((line for line in file if not line.startswith("#")), delimiter="\t",
                                  quoting=csv.QUOTE_NONE)
            self.causes = {(row["file"], row["tool"], row["page"]): row["cause"] for row in rows}
        self.needed = set()

    def cause_of(self, file, finding):
        for page in (str(finding.page), "*"):
            key = (file, finding.tool, page)
            if key in self.causes:
                self.needed.add(key)
                return self.causes[key]
        return None

    def not_needed(self, files, tools):
        """Those for `files` and `tools` that explained nothing."""
        return [key for key in self.causes if key not in self.needed and key[0] in files and key[1] in tools]


def print_report(report, exceptions):
    """Prints the row of a file, and its findings below; gives how many of them nothing explains."""
    unexplained = 0
    lines = []
    for finding in report.findings:
        cause = exceptions.cause_of(report.file, finding)
        unexplained += cause is None
        page = f" page {finding.page}" if finding.page else ""
        lines.append(f"    {finding.tool}{page}: {finding.text}" + (f" [{cause}]" if cause else "  <-- not explained"))
    differing = {engine: sum(finding.tool == engine for finding in report.findings) for engine in ("poppler", "mupdf")}
    print(f"{report.file}\t{report.state}\t{report.problem}\t{report.pages}\t{differing['poppler']}\t"
          f"{differing['mupdf']}\t{report.seconds:.2f}\t{report.growth}")
    notes = report.notes[:3] + ([f"and {len(report.notes) - 3} more"] if len(report.notes) > 3 else [])
    print("".join(f"    note: {note}\n" for note in notes) + "".join(line + "\n" for line in lines), end="", flush=True)
    return unexplained


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--produce", required=True)
    parser.add_argument("--keep", default="")
    parser.add_argument("--only", action="append", default=[])
    parser.add_argument("--no-pictures", action="store_true")
    parser.add_argument("--no-memory-limit", action="store_true")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("folder", nargs="?", default=os.environ.get("TALLYFOLD_CORPUS"))
    arguments = parser.parse_args()
    if not arguments.folder:
        print("Skipped: TALLYFOLD_CORPUS is not set to a folder of PDF files.")
        return NOTHING_TO_TEST

    options = Options(os.path.abspath(arguments.produce), arguments.keep, not arguments.no_pictures,
                      0 if arguments.no_memory_limit else 512)
    entries = [entry for entry in files_of(arguments.folder)
               if not arguments.only or any(part in entry[0] for part in arguments.only)]
    exceptions = Exceptions(os.path.join(os.path.dirname(os.path.abspath(__file__)), "exceptions.tsv"))
    print("file\tstate\tproblem\tpages\tpoppler differs\tmupdf differs\tseconds\tbytes more")
    unexplained = pages = 0
    with tempfile.TemporaryDirectory() as temporary:
        limits = Limits(arguments.jobs, SECONDS_OF_A_FILE, math.inf,
                        0 if arguments.no_memory_limit else MEGABYTES_OF_A_FILE, temporary)
        for entry, report in results(partial(examine_one, arguments.folder, options), entries, limits):
            if report is None:
                print(f"{entry[0]}: its examination did not end, or took more than {limits.seconds} seconds")
                unexplained += 1
                continue
            unexplained += print_report(report, exceptions)
            pages += report.pages if report.problem == "-" else 0
    tools = {tool for _, tool, _ in exceptions.causes}
    if not options.with_pictures:
        tools -= {"poppler", "mupdf"}
    stale = exceptions.not_needed({name for name, _ in entries}, tools)
    for key in stale:
        print(f"This exception explains nothing any more: {' '.join(key)}")
    print(f"{len(entries)} files, {pages} pages in copies; {unexplained} findings not explained, "
          f"{len(exceptions.needed)} exceptions needed, {len(stale)} not")
    return 1 if unexplained or stale or not entries else 0


if __name__ == "__main__":
    sys.exit(main())
