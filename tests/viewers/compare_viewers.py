#!/usr/bin/python3
"""Draws originals and their stamped copies in five viewers, and holds the pictures, the numbers and the warnings against
each other.

Usage: compare_viewers.py [--produce PROGRAM] [--only PART]... [--viewer NAME]... [--keep FOLDER] [--write FILE.md]
                          [--jobs N] [FOLDER]

Without FOLDER the environment variable TALLYFOLD_CORPUS names it. The samples of make_samples.py are compared as well,
under the name "made". PDFium and pdf.js are installed from npm when they are not there (see `install`).

For each viewer a copy is right when
  it draws every page as it draws the original's, but for the white box with the number,
  it finds the number on every page, once, and at the bottom right,
  and it warns of nothing that it does not warn of in the original (if it opens that).
Where that is not so for a good reason, exceptions.tsv beside this file gives it: file or *, what differs (the viewer's
name, or that and "text" or "warnings"), page or *, cause. For warnings the words that one begins with stand in the place
of the page. Causes that ../compare/exceptions.tsv gives for pictures of Poppler and mupdf hold here as well.
--write puts the table and the causes into a document. --keep writes what differs, side by side.
Exit code 1 when there is anything that is not explained, or an exception that nothing needs any more.
"""
import argparse
import json
import multiprocessing
import os
import re
import subprocess
import sys
import tempfile
from dataclasses import dataclass, field
from functools import partial

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(os.path.dirname(HERE))
sys.path.insert(0, os.path.join(os.path.dirname(HERE), "compare"))

import copies  # noqa: E402
import pictures  # noqa: E402
import viewers  # noqa: E402
from compare_copies import Exceptions, files_of  # noqa: E402
from document import document  # noqa: E402
from make_samples import make_samples  # noqa: E402

PAGES_AT_ONCE = 32
LARGEST_PICTURE = 30e6  # Pixels; a larger page is drawn coarser.
PLACE_TOLERANCE = 2.5  # Points between a number and its place: viewers take its edges from glyphs or from the font.


@dataclass
class Tally:
    """What a viewer showed of one file, in pages."""

    files: int = 0
    pages: int = 0  # Drawn of the original.
    equal: int = 0
    numbers: int = 0  # To be found.
    found: int = 0


@dataclass
class FileReport:
    """What is found out about one file."""

    file: str
    problem: str = "-"
    tallies: dict = field(default_factory=dict)
    findings: list = field(default_factory=list)
    notes: list = field(default_factory=list)

    def find(self, tool, text, page=0):
        self.findings.append(copies.Finding(tool, page, text))


def resolution(size):
    """Pixels per inch for a page."""
    dpi = pictures.resolution(*size)
    pixels = size[0] * size[1] * (dpi / 72) ** 2
    return dpi if pixels <= LARGEST_PICTURE else max(1, int(dpi * (LARGEST_PICTURE / pixels) ** 0.5))


def scale_of(page, dpi, picture):
    """Pixels to a unit of the page: viewers take a unit for a point or for what it is, as the picture shows."""
    scales = (dpi / 72, dpi / 72 * page.unit)
    return min(scales, key=lambda scale: abs(page.size[0] * scale - picture.shape[1]))


def difference_of(page, dpi, original, drawn):
    mask = pictures.mask_of(page.box(), page.size, scale_of(page, dpi, drawn), drawn.shape)
    return pictures.difference(original, drawn, mask)


def is_gone_when_finer(viewer, source, copy, number, dpi, page):
    for factor in pictures.FINER:
        finer = round(dpi * factor)
        if page.size[0] * page.size[1] * (finer / 72 * page.unit) ** 2 > pictures.LARGEST_FINER_PICTURE:
            continue
        wanted = [viewers.Wanted(number, finer)]
        original = viewer.look(source, wanted).page(number).picture
        drawn = viewer.look(copy, wanted).page(number).picture
        if original is not None and drawn is not None and not pictures.is_difference(
                difference_of(page, finer, original, drawn)):
            return True
    return False


def place_of(page):
    """Where the number is to be: left and right end, and its lower edge, in points."""
    right = page.size[0] * page.unit - copies.MARGIN
    bottom = min(copies.MARGIN, page.size[1] * page.unit - copies.TEXT_HEIGHT)
    return right - copies.TEXT_WIDTH, right, bottom


def check_number(report, viewer, tally, page, wanted, seen):
    tool = f"{viewer.name} text"
    tally.numbers += 1
    if len(seen.hits) != 1:
        report.find(tool, f"{wanted.text} found {len(seen.hits)} times", wanted.number)
        return
    if viewer.gives_places:
        unit = 1 if viewer.name == "mupdf" else page.unit
        left, bottom, right, _ = (side * unit for side in seen.hits[0])
        to_left, to_right, to_bottom = place_of(page)
        if (abs(left - to_left) > PLACE_TOLERANCE or abs(right - to_right) > PLACE_TOLERANCE
                or not -PLACE_TOLERANCE <= bottom - to_bottom <= 2 * PLACE_TOLERANCE):
            report.find(tool, f"{wanted.text} from {left:.1f} to {right:.1f} above {bottom:.1f}, not from {to_left:.1f} to "
                              f"{to_right:.1f} above {to_bottom:.1f}", wanted.number)
            return
    tally.found += 1


def check_picture(report, viewer, tally, files, page, wanted, seen, options):
    """Holds the picture of a page, seen of the original and of the copy, against each other."""
    original, drawn = (one.picture for one in seen)
    if original is None:
        report.notes.append(f"page {wanted.number} of the original is not drawn by {viewer.name}")
        return
    tally.pages += 1
    found = None if drawn is None else difference_of(page, wanted.dpi, original, drawn)
    if drawn is None:
        report.find(viewer.name, "the copy's page is not drawn", wanted.number)
    elif found is None:
        report.find(viewer.name, f"{drawn.shape[1]}x{drawn.shape[0]} pixels, not {original.shape[1]}x{original.shape[0]}",
                    wanted.number)
    elif not pictures.is_difference(found) or is_gone_when_finer(viewer, *files, wanted.number, wanted.dpi, page):
        tally.equal += 1
        return
    else:
        rows, columns = found.nonzero()
        report.find(viewer.name, f"{len(rows)} pixels differ, from {columns.min()},{rows.min()} to {columns.max()},"
                                 f"{rows.max()} of {found.shape[1]}x{found.shape[0]}", wanted.number)
    if options.keep:
        name = re.sub(r"[^\w.-]+", "_", f"{report.file}-{wanted.number}-{viewer.name}.png")
        pictures.keep(options.keep, name, original, drawn, found)


def check_viewer(report, viewer, source, copy, numbers, pages, options):
    tally = report.tallies[viewer.name] = Tally(files=1)
    new_warnings = set()
    known_warnings = set()
    for start in range(0, len(pages), PAGES_AT_ONCE):
        wanted = [viewers.Wanted(number, resolution(page.size), numbers[number - 1] if page.has_room() else "")
                  for number, page in enumerate(pages, 1) if start < number <= start + PAGES_AT_ONCE and page.size]
        of_source = viewer.look(source, wanted)  # With the texts: looking for them has warnings of its own.
        of_copy = viewer.look(copy, wanted)
        known_warnings |= of_source.warnings
        new_warnings |= of_copy.warnings
        for one in wanted:
            page = pages[one.number - 1]
            seen = (of_source.page(one.number), of_copy.page(one.number))
            check_picture(report, viewer, tally, (source, copy), page, one, seen, options)
            if one.text:
                check_number(report, viewer, tally, page, one, seen[1])
    # Of an original that it does not open, a viewer cannot say what is wrong in it.
    for warning in sorted(new_warnings - known_warnings) if tally.pages else ():
        report.find(f"{viewer.name} warnings", warning)


def copy_of(report, options, source, work):
    """The copy of `source` and the numbers of its pages; None where there is rightly no copy."""
    made = copies.Report(report.file)
    settings = os.path.join(work, "settings.json")
    with open(settings, "w", encoding="utf-8") as file:
        json.dump({"stamp": copies.SETTINGS}, file)
    folder = os.path.join(work, "production")
    os.mkdir(folder)
    _, plan = copies.run_produce(options, made, "--plan", "--settings", settings, source)
    code, result = copies.run_produce(options, made, "--settings", settings, "--no-index", folder, source)
    report.findings += made.findings
    written = os.listdir(folder)
    if code == copies.CONFLICTS and not written:
        report.problem = "refused"
        return None
    if code != copies.WRITTEN or len(written) != 1 or plan is None:
        report.find("produce", f"no copy: {json.dumps(result)[:160]}")
        return None
    return (os.path.join(folder, written[0]), [f"TFX{page['number']:06d}" for page in plan["files"][0]["pages"]])


def examine(chosen, options, entry):
    name, source = entry
    report = FileReport(name)
    with tempfile.TemporaryDirectory(prefix="copy") as work:
        made = copy_of(report, options, source, work)
        if made:
            copy, numbers = made
            pages = copies.pages_of(copy, len(numbers))
            report.notes += [f"page {number} of the copy has no size" for number, page in enumerate(pages, 1) if not page.size]
            for viewer in chosen:
                check_viewer(report, viewer, source, copy, numbers, pages, options)
    return report


class Causes(Exceptions):
    """Causes by file or for all files, and of warnings by their beginning."""

    def cause_of(self, file, finding):
        for (of_file, tool, page), cause in self.causes.items():
            if of_file in (file, "*") and tool == finding.tool and (page in (str(finding.page), "*")
                                                                   or finding.page == 0 and finding.text.startswith(page)):
                self.needed.add((of_file, tool, page))
                return cause
        return None


def causes_for(report, exceptions):
    """The findings of a report, each with its cause or None."""
    return [(finding, next(filter(None, (one.cause_of(report.file, finding) for one in exceptions)), None))
            for finding in report.findings]


def print_report(report, explained):
    equal = " ".join(f"{name} {tally.equal}/{tally.pages} {tally.found}/{tally.numbers}"
                     for name, tally in report.tallies.items())
    lines = [f"    note: {note}" for note in report.notes[:3]]
    for finding, cause in explained:
        page = f" page {finding.page}" if finding.page else ""
        lines.append(f"    {finding.tool}{page}: {finding.text}" + (f" [{cause}]" if cause else "  <-- not explained"))
    print("\n".join([f"{report.file}\t{report.problem}\t{equal}", *lines]), flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--produce", default=os.path.join(ROOT, "build", "release", "bin", "produce"))
    parser.add_argument("--only", action="append", default=[])
    parser.add_argument("--viewer", action="append", default=[], choices=[viewer.name for viewer in viewers.ALL])
    parser.add_argument("--keep", default="")
    parser.add_argument("--write", default="")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("folder", nargs="?", default=os.environ.get("TALLYFOLD_CORPUS"))
    arguments = parser.parse_args()
    if not os.access(arguments.produce, os.X_OK):
        parser.error(f"{arguments.produce} is not built; see --produce")
    if subprocess.run([os.path.join(HERE, "install")], check=False).returncode != 0:
        return 1

    options = copies.Options(os.path.abspath(arguments.produce), arguments.keep)
    chosen = [viewer for viewer in viewers.ALL if not arguments.viewer or viewer.name in arguments.viewer]
    exceptions = (Causes(os.path.join(HERE, "exceptions.tsv")),
                  Exceptions(os.path.join(os.path.dirname(HERE), "compare", "exceptions.tsv")))
    reports = []
    with tempfile.TemporaryDirectory(prefix="made") as samples:
        entries = [(f"made/{name}", os.path.join(samples, name)) for name in make_samples(samples)]
        if arguments.folder:
            entries += [(name, os.path.join(arguments.folder, name)) for name, _ in files_of(arguments.folder)]
        entries = [entry for entry in entries
                   if not arguments.only or any(part in entry[0] for part in arguments.only)]
        with multiprocessing.Pool(max(1, arguments.jobs)) as pool:
            for report in pool.imap(partial(examine, chosen, options), entries):
                reports.append((report, causes_for(report, exceptions)))
                print_report(*reports[-1])
    text = document(chosen, reports)
    print(text)
    if arguments.write:
        with open(arguments.write, "w", encoding="utf-8") as file:
            file.write(text)

    unexplained = sum(cause is None for _, explained in reports for _, cause in explained)
    tools = {f"{viewer.name}{of}" for viewer in chosen for of in ("", " text", " warnings")} | {"produce"}
    stale = exceptions[0].not_needed({name for name, _ in entries}, tools)
    for key in stale:
        print(f"This exception explains nothing any more: {' '.join(key)}")
    print(f"{len(entries)} files; {unexplained} findings not explained, {len(stale)} exceptions not needed")
    return 1 if unexplained or stale or not entries else 0


if __name__ == "__main__":
    sys.exit(main())
