"""Looks at one source and the copy made of it, from outside: structure, text, sizes and pictures."""
import hashlib
import html
import itertools
import json
import os
import re
import tempfile
from dataclasses import dataclass, field

import numpy

import pictures
import same_objects
from limited import run

# What is stamped: one number at the bottom right, in a font every digit of which has the same width.
SETTINGS = {"prefix": "TFX", "digits": 6, "startNumber": 1, "suffix": "", "batesPosition": "bottomRight", "margin": 18,
            "fontName": "Helvetica", "fontSize": 10, "background": True, "legend": "", "pageOfTotal": False,
            "cover": "stampAll", "naming": "original", "color": {"red": 0, "green": 0, "blue": 0, "alpha": 1}}
MARGIN = 18
TEXT_WIDTH = 52.25  # "TFX000001" at 10 points in the widths of Helvetica.
TEXT_HEIGHT = 14  # More than any font of those metrics has from ascent to descent at 10 points.
BOX_PADDING = 2

WRITTEN, CONFLICTS, SOME_FAILED = 0, 1, 2


@dataclass
class Finding:
    """One thing that is not as it should be: which tool says so, on which page (0: the file), and what."""

    tool: str
    page: int
    text: str


@dataclass
class Report:
    """What is found out about one source."""

    file: str
    state: str = ""
    problem: str = "?"  # As `produce --sources` gives it, "-" for none.
    pages: int = 0
    seconds: float = 0  # Of the program that writes the copy.
    growth: int = 0  # Bytes the copy is larger than its source.
    findings: list = field(default_factory=list)
    notes: list = field(default_factory=list)

    def find(self, tool, text, page=0):
        self.findings.append(Finding(tool, page, text))


@dataclass
class Options:
    """How a run is to be made."""

    produce: str
    keep: str = ""
    with_pictures: bool = True
    produce_megabytes: int = 512  # 0 for no limit: a sanitizer reserves more addresses than any limit allows.


@dataclass
class Page:
    """A page of a source or of a copy as the tools describe it."""

    size: tuple = None  # In the page's units, as Poppler shows it before turning; None when it shows none.
    turn: int = 0
    unit: float = 1  # Points in a unit of the page.

    @property
    def shown_size(self):
        return self.size if self.size is None or self.turn % 180 == 0 else self.size[::-1]

    def box(self):
        """Where the white box of the number may be, in the page's units. The stamp is measured in points."""
        width, height = self.size[0] * self.unit, self.size[1] * self.unit
        top = min(height, MARGIN + TEXT_HEIGHT)
        bottom = min(MARGIN, height - TEXT_HEIGHT)
        box = (width - MARGIN - TEXT_WIDTH - BOX_PADDING - 1, bottom - BOX_PADDING - 1,
               width - MARGIN + BOX_PADDING + 1, top + BOX_PADDING + 1)
        return tuple(side / self.unit for side in box)

    def has_room(self):
        """Whether the whole number is on the page."""
        return (self.size[0] * self.unit >= MARGIN + TEXT_WIDTH) and self.size[1] * self.unit >= TEXT_HEIGHT


def run_produce(options, report, *arguments):
    """The program under test, which must end by itself, in time, and with one of its own exit codes."""
    ended = run([options.produce, *arguments], megabytes=options.produce_megabytes or None)
    report.seconds += ended.seconds
    if ended.timed_out:
        report.find("produce", f"{arguments[0]}: not done in 20 s")
    elif ended.code not in (WRITTEN, CONFLICTS, SOME_FAILED):
        report.find("produce", f"ended with {ended.code}: {last_line(ended.errors)}")
    else:
        try:
            return ended.code, json.loads(ended.output)
        except ValueError:
            report.find("produce", f"no JSON; {last_line(ended.errors)}")
    return None, None


def last_line(data):
    lines = data.decode(errors="replace").strip().splitlines()
    return lines[-1][:160] if lines else ""


def pages_of(path, count):
    """The pages of a file: size and turn from Poppler, the unit from mupdf, as Poppler does without it."""
    text = run(["pdfinfo", "-f", "1", "-l", str(count), path]).output.decode(errors="replace")
    sizes = {int(number): (float(width), float(height)) for number, width, height
             in re.findall(r"^Page\s+(\d+) size:\s+(\S+) x (\S+) pts", text, re.M)}
    turns = {int(number): int(turn) for number, turn in re.findall(r"^Page\s+(\d+) rot:\s+(-?\d+)", text, re.M)}
    described = run(["mutool", "pages", path]).output.decode(errors="replace")
    units = {int(number): float(unit) for number, unit
             in re.findall(r'<page pagenum="(\d+)">(?:(?!</page>).)*<UserUnit v="([^"]+)"', described, re.S)}
    return [Page(sizes.get(number), turns.get(number, 0), units.get(number, 1)) for number in range(1, count + 1)]


def words_of(path):
    """Per page: its words with their boxes (left, top, right, bottom, from the top of the page), as Poppler reads
    them."""
    text = run(["pdftotext", "-bbox", path, "-"]).output.decode(errors="replace")
    pages = []
    for page in re.split(r"<page [^>]*>", text)[1:]:
        words = re.findall(r'<word xMin="(.+?)" yMin="(.+?)" xMax="(.+?)" yMax="(.+?)">(.*?)</word>', page, re.S)
        pages.append([(html.unescape(word), tuple(map(float, box))) for *box, word in words])
    return pages


def texts_of(path, pages):
    """Per page: its text as mupdf reads it."""
    ended = run(["mutool", "draw", "-q", "-i", "-F", "txt", "-o", "-", path, f"1-{pages}"], seconds=60)
    return ended.output.decode(errors="replace").split("\f")


def check_structure(report, copy, expected_pages):
    check = run(["qpdf", "--check", copy])
    if check.code != 0 or b"WARNING" in check.errors + check.output:
        report.find("qpdf", last_line(check.errors) or f"exit code {check.code}")
    count = run(["qpdf", "--show-npages", copy]).output.strip()
    if count != b"%d" % expected_pages:
        report.find("pages", f"the copy has {count.decode() or 'no count of'} pages, not {expected_pages}")
        return False
    return True


def check_numbers(report, copy, numbers, pages):
    """Each page shows its number, once, where it belongs."""
    words = words_of(copy)
    texts = texts_of(copy, len(numbers))
    for index, (number, page) in enumerate(zip(numbers, pages)):
        if page.size and not page.has_room():
            report.notes.append(f"page {index + 1} of {page.size[0]:g}x{page.size[1]:g} is too small for the number")
            continue
        found = [box for word, box in (words[index] if index < len(words) else []) if number in word]
        if len(found) != 1:
            report.find("pdftotext", f"{number} found {len(found)} times", index + 1)
        elif page.size:
            right, bottom = page.size[0] - MARGIN / page.unit, page.size[1] - MARGIN / page.unit
            if abs(found[0][2] - right) * page.unit > 1 or abs(found[0][3] - bottom) * page.unit > 4:
                report.find("pdftotext", f"{number} ends at {found[0][2]:.1f} {found[0][3]:.1f}, not at "
                                         f"{right:.1f} {bottom:.1f}", index + 1)
        if number not in (texts[index] if index < len(texts) else ""):
            report.find("mutool text", f"{number} not found", index + 1)


def check_objects(report, source, copy):
    for difference in same_objects.findings(source, copy):
        report.find("objects", difference)


def check_sizes(report, originals, copies):
    for number, (original, copy) in enumerate(zip(originals, copies), 1):
        if copy.turn or copy.size is None:
            report.find("pdfinfo", f"the copy's page of size {copy.size} is turned by {copy.turn}", number)
        elif original.size and any(abs(ours - theirs) > 0.02 for ours, theirs in zip(copy.size, original.shown_size)):
            report.find("pdfinfo", "{:g}x{:g}, not {:g}x{:g}".format(*copy.size, *original.shown_size), number)
        if copy.unit != original.unit:
            report.find("mutool pages", f"a unit of {copy.unit:g} points, not {original.unit:g}", number)


def check_pictures(report, source, copy, pages, options):
    for first in range(0, len(pages), pictures.PAGES_AT_ONCE):
        resolutions = [pictures.resolution(*(page.size or (612, 792)))
                       for page in pages[first:first + pictures.PAGES_AT_ONCE]]
        # What is drawn in one call shares a resolution.
        for dpi, group in itertools.groupby(enumerate(resolutions, first + 1), key=lambda pair: pair[1]):
            numbers = [number for number, _ in group]
            for engine in pictures.ENGINES:
                compare_pages(report, engine, source, copy, numbers, dpi, pages, options)


def scale_of(engine, dpi, page):
    """Pixels to a unit of the page: Poppler takes every unit for a point."""
    return dpi / 72 * (page.unit if engine == pictures.MUPDF else 1)


def difference_of(engine, dpi, page, original, drawn):
    size = page.size or (drawn.shape[1], drawn.shape[0])
    box = page.box() if page.size else (0, 0, 0, 0)
    return pictures.difference(original, drawn,
                               pictures.mask_of(box, size, scale_of(engine, dpi, page), drawn.shape))


def is_gone_when_finer(engine, source, copy, number, dpi, page):
    for factor in pictures.FINER:
        finer = round(dpi * factor)
        scale = scale_of(engine, finer, page)
        if not page.size or page.size[0] * page.size[1] * scale * scale > pictures.LARGEST_FINER_PICTURE:
            continue
        original = pictures.draw(engine, source, number, number, finer)[0]
        drawn = pictures.draw(engine, copy, number, number, finer)[0]
        if original is not None and drawn is not None and not pictures.is_difference(
                difference_of(engine, finer, page, original, drawn)):
            return True
    return False


def compare_pages(report, engine, source, copy, numbers, dpi, pages, options):
    originals = pictures.draw(engine, source, numbers[0], numbers[-1], dpi)
    copies = pictures.draw(engine, copy, numbers[0], numbers[-1], dpi)
    for number, original, drawn in zip(numbers, originals, copies):
        page = pages[number - 1]
        if original is None:
            report.notes.append(f"page {number} of the original is not drawn by {engine}")
            if drawn is None:
                report.find(engine, "neither the original nor the copy is drawn", number)
            continue
        found = None
        if drawn is None:
            report.find(engine, "the copy's page is not drawn", number)
        else:
            found = difference_of(engine, dpi, page, original, drawn)
            if not pictures.is_difference(found):
                continue
            if found is None:
                report.find(engine, f"{drawn.shape[1]}x{drawn.shape[0]} pixels, not "
                                    f"{original.shape[1]}x{original.shape[0]}", number)
            elif is_gone_when_finer(engine, source, copy, number, dpi, page):
                continue
            else:
                rows, columns = numpy.nonzero(found)
                report.find(engine, f"{len(rows)} pixels differ, from {columns.min()},{rows.min()} to "
                                    f"{columns.max()},{rows.max()} of {found.shape[1]}x{found.shape[0]}", number)
        if options.keep:
            name = re.sub(r"[^\w.-]+", "_", f"{report.file}-{number}-{engine}.png")
            pictures.keep(options.keep, name, original, drawn, found)


def check_copy(report, source, copy, numbers, options):
    """Everything about a copy whose pages have the numbers given."""
    report.growth = os.path.getsize(copy) - os.path.getsize(source)
    if not check_structure(report, copy, len(numbers)):
        return
    pages = pages_of(copy, len(numbers))
    check_sizes(report, pages_of(source, len(numbers)), pages)
    check_numbers(report, copy, numbers, pages)
    check_objects(report, source, copy)
    if options.with_pictures:
        check_pictures(report, source, copy, pages, options)


def digest(path):
    with open(path, "rb") as file:
        return hashlib.sha256(file.read()).digest()


def examine(source, name, options, may_be=None):
    """Makes a production of `source` alone and looks at all that comes of it. `may_be` holds the outcomes that are
    right: numbers of pages, and problems by their names; anything consistent is, when it is None."""
    report = Report(name)
    before = digest(source)
    with tempfile.TemporaryDirectory() as work:
        settings = os.path.join(work, "settings.json")
        with open(settings, "w", encoding="utf-8") as file:
            json.dump({"stamp": SETTINGS}, file)
        _, sources = run_produce(options, report, "--sources", source)
        if not sources or len(sources) != 1:
            report.find("produce", f"lists {len(sources or [])} sources")
            return report
        report.problem = sources[0]["problem"] or "-"
        report.pages = sources[0]["pageCount"]
        outcome = sources[0]["problem"] or report.pages
        if may_be is not None and outcome not in may_be:
            report.find("class", f"taken as {outcome}, expected {' or '.join(map(str, sorted(may_be, key=str)))}")
        _, plan = run_produce(options, report, "--plan", "--settings", settings, source)
        folder = os.path.join(work, "production")
        os.mkdir(folder)
        report.seconds = 0
        code, result = run_produce(options, report, "--settings", settings, "--no-index", folder, source)
        written = os.listdir(folder)
        if result is None or plan is None:
            pass
        elif report.problem != "-":
            if written or code != CONFLICTS:
                report.find("produce", f"{written} written of a source that is {report.problem}")
        elif code != WRITTEN:
            report.find("produce", f"no copy: {json.dumps(result)[:160]}")
            if written:
                report.find("produce", f"{written} left after a failure")
        elif len(written) != 1:
            report.find("produce", f"{written} written, not one copy")
        else:
            first = plan["files"][0]["first"]
            numbers = [f"TFX{page['number']:06d}" for page in plan["files"][0]["pages"]]
            if not numbers or first != numbers[0] or len(numbers) != report.pages:
                report.find("produce", f"plans {len(numbers)} numbers from {first}")
            check_copy(report, source, os.path.join(folder, written[0]), numbers, options)
    if digest(source) != before:
        report.find("produce", "the original was changed")
    return report
