"""The viewers that copies are compared in: each draws pages, finds a text on them, and says what it finds wrong with a
file. Poppler, mupdf and Ghostscript are Debian's; PDFium and pdf.js come from npm and run in Node."""
import html
import json
import os
import re
import tempfile
from dataclasses import dataclass, field

import numpy
from PIL import Image

from limited import MOST_ERRORS, run

HERE = os.path.dirname(os.path.abspath(__file__))
SECONDS = 20  # Of processor time for the pages of one call.
Image.MAX_IMAGE_PIXELS = None  # The pages of some files are as large as a page may be.


@dataclass
class Wanted:
    """A page, counting from 1, the pixels per inch to draw it with, and the text to be found on it, if any."""

    number: int
    dpi: int
    text: str = ""


@dataclass
class Seen:
    """What a viewer makes of a page."""

    picture: numpy.ndarray = None  # None: not drawn.
    hits: list = field(default_factory=list)  # Where the text is: left, bottom, right, top; None: it gives no place.


@dataclass
class Look:
    """What a viewer makes of some pages of a file."""

    pages: dict = field(default_factory=dict)  # By number.
    warnings: set = field(default_factory=set)  # Kinds of warnings, without what differs from file to file.

    def page(self, number):
        return self.pages.setdefault(number, Seen())


def kinds_of(lines):
    """Warnings without numbers of objects and bytes and without names of files, which every file has of its own."""
    kinds = set()
    for line in lines:
        kind = re.sub(r"\(\s*\d*\s*(\?|\d+)?\s*(R|obj)?\)|'?/tmp/\S+|0x[0-9a-f]+", "", line)
        kind = re.sub(r"<[0-9a-f]{2}>|\d+(\.\d+)?", "#", kind)
        kind = re.sub(r"\s+:", ":", re.sub(r"\s+", " ", kind)).strip()
        if kind:
            kinds.add(kind[:160])
    return kinds


def picture_in(path):
    with Image.open(path) as image:
        return numpy.asarray(image.convert("RGB"))


def by_resolution(wanted):
    """Runs of consecutive pages with one resolution."""
    runs = []
    for page in wanted:
        if runs and runs[-1][-1].dpi == page.dpi and runs[-1][-1].number + 1 == page.number:
            runs[-1].append(page)
        else:
            runs.append([page])
    return runs


class Viewer:
    """A viewer of the name `name`."""

    name = ""
    counts_units = True  # Whether a page's unit makes its picture larger.
    gives_places = True  # Whether it tells where a text is.
    NOT_OF_THE_FILE = re.compile(r"(?!)")  # Lines that do not tell of the file.

    def version(self):
        raise NotImplementedError

    def look(self, path, wanted):
        """What it makes of the pages `wanted` of a file."""
        look = Look()
        with tempfile.TemporaryDirectory(prefix="view") as folder:
            for pages in by_resolution(wanted):
                self.draw(path, pages, folder, look)
        with_text = [page for page in wanted if page.text]
        if with_text:
            self.find(path, with_text, look)
        return look

    def draw(self, path, pages, folder, look):
        """Draws consecutive pages of one resolution, all in one call; each alone where that gives too few."""
        for name in os.listdir(folder):
            os.remove(os.path.join(folder, name))
        ended = run(self.draw_arguments(path, pages, folder), seconds=SECONDS)
        self.note(ended, look)
        names = self.in_order(os.listdir(folder))
        if len(names) == len(pages):
            for page, name in zip(pages, names):
                look.page(page.number).picture = picture_in(os.path.join(folder, name))
        elif len(pages) > 1:
            for page in pages:
                self.draw(path, [page], folder, look)
        else:
            look.page(pages[0].number)

    def note(self, ended, look):
        if ended.timed_out:
            look.warnings.add(f"not done in {SECONDS} s")
        elif ended.code < 0:
            look.warnings.add(f"ended by the signal {-ended.code}")
        lines = (ended.errors + (b"" if self.tells_in_errors_alone else b"\n" + ended.output[:MOST_ERRORS])).decode(errors="replace")
        look.warnings |= kinds_of(line for line in lines.splitlines() if not self.NOT_OF_THE_FILE.search(line))

    tells_in_errors_alone = True

    @staticmethod
    def in_order(names):
        return sorted(names, key=lambda name: [int(number) for number in re.findall(r"\d+", name)])

    def draw_arguments(self, path, pages, folder):
        raise NotImplementedError

    def find(self, path, wanted, look):
        """Looks for the texts of the pages `wanted`."""
        raise NotImplementedError


def line_of(arguments, pattern):
    ended = run(arguments)
    found = re.search(pattern, (ended.output + ended.errors).decode(errors="replace"))
    return found.group(1) if found else "?"


class Poppler(Viewer):
    name = "poppler"
    counts_units = False

    def version(self):
        return "Poppler " + line_of(["pdftoppm", "-v"], r"version (\S+)")

    def draw_arguments(self, path, pages, folder):
        return ["pdftoppm", "-cropbox", "-r", str(pages[0].dpi), "-f", str(pages[0].number), "-l", str(pages[-1].number),
                path, os.path.join(folder, "page")]

    def find(self, path, wanted, look):
        first, last = wanted[0].number, wanted[-1].number
        text = run(["pdftotext", "-bbox", "-f", str(first), "-l", str(last), path, "-"], seconds=SECONDS).output
        pages = re.findall(r'<page width="([^"]+)" height="([^"]+)">(.*?)</page>', text.decode(errors="replace"), re.S)
        texts = {page.number: page.text for page in wanted}
        for number, (_, height, words) in enumerate(pages, first):
            for *box, word in re.findall(r'<word xMin="(.+?)" yMin="(.+?)" xMax="(.+?)" yMax="(.+?)">(.*?)</word>', words):
                if number in texts and texts[number] in html.unescape(word):
                    left, top, right, bottom = map(float, box)
                    look.page(number).hits.append((left, float(height) - bottom, right, float(height) - top))


class Mupdf(Viewer):
    name = "mupdf"
    NOT_OF_THE_FILE = re.compile(r"ICC support is not available")

    def version(self):
        return "mupdf " + line_of(["mutool", "-v"], r"version (\S+)")

    def draw_arguments(self, path, pages, folder):
        return ["mutool", "draw", "-q", "-i", "-c", "rgb", "-F", "ppm", "-r", str(pages[0].dpi), "-o",
                os.path.join(folder, "%d.ppm"), path, f"{pages[0].number}-{pages[-1].number}"]

    def find(self, path, wanted, look):
        first, last = wanted[0].number, wanted[-1].number
        data = run(["mutool", "draw", "-q", "-i", "-F", "stext", "-o", "-", path, f"{first}-{last}"], seconds=SECONDS).output
        texts = {page.number: page.text for page in wanted}
        for number, page in enumerate(re.split(r"<page ", data.decode(errors="replace"))[1:], first):
            height = float(re.search(r'height="([^"]+)"', page).group(1))
            for line in re.split(r"<line ", page)[1:]:
                characters = re.findall(r'<char quad="([^"]+)"[^>]* c="([^"]*)"', line)
                text = "".join(html.unescape(character)[:1] for _, character in characters)
                for found in re.finditer(re.escape(texts.get(number) or "\0"), text):
                    corners = [list(map(float, quad.split())) for quad, _ in characters[found.start():found.end()]]
                    across = [x for corner in corners for x in corner[0::2]]
                    down = [y for corner in corners for y in corner[1::2]]
                    look.page(number).hits.append((min(across), height - max(down), max(across), height - min(down)))


class Ghostscript(Viewer):
    name = "ghostscript"
    gives_places = False
    tells_in_errors_alone = False
    NOT_OF_THE_FILE = re.compile(
        r"^(GPL Ghostscript|Copyright|This software|see the file|Processing pages|Page \d+$|Loading |Can't find|"
        r"Querying|Didn't find|Scanning|Substituting|\s*\*\*\*\* (The file was produced by|>>>>|Please notify|file that it|"
        r"specification)|\s*\*\*\*\* This file had errors|\s*$)|encountered at least once")

    def version(self):
        return "Ghostscript " + line_of(["gs", "--version"], r"(\S+)")

    def draw_arguments(self, path, pages, folder):
        return ["gs", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-dPrinted=false", "-sDEVICE=ppmraw", f"-r{pages[0].dpi}", "-dUseCropBox",
                "-dTextAlphaBits=4", "-dGraphicsAlphaBits=4", f"-dFirstPage={pages[0].number}",
                f"-dLastPage={pages[-1].number}", "-sOutputFile=" + os.path.join(folder, "%d.ppm"), path]

    def find(self, path, wanted, look):
        first, last = wanted[0].number, wanted[-1].number
        with tempfile.TemporaryDirectory(prefix="view") as folder:
            run(["gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=txtwrite", f"-dFirstPage={first}",
                 f"-dLastPage={last}", "-sOutputFile=" + os.path.join(folder, "%d"), path], seconds=SECONDS)
            names = self.in_order(os.listdir(folder))  # Of the pages that are there, from 1.
            for page in wanted:
                if page.number - first < len(names):
                    with open(os.path.join(folder, names[page.number - first]), encoding="utf-8", errors="replace") as file:
                        look.page(page.number).hits += [None] * file.read().count(page.text)


class InNode(Viewer):
    """A viewer that a program for Node beside this file runs."""

    package = ""
    title = ""

    def version(self):
        with open(os.path.join(HERE, "package.json"), encoding="utf-8") as file:
            return f"{self.title} (`{self.package}` {json.load(file)['dependencies'][self.package]})"

    def look(self, path, wanted):
        look = Look()
        with tempfile.TemporaryDirectory(prefix="view") as folder:
            self.ask(path, wanted, folder, look)
        return look

    def ask(self, path, wanted, folder, look):
        pages = [f"{page.number}:{page.dpi}:{page.text}" for page in wanted]
        # No limit of addresses: the engine reserves more of them than any machine has memory.
        ended = run(["node", "--max-old-space-size=2048", os.path.join(HERE, self.name.replace(".", "") + ".mjs"), path,
                     folder, *pages], seconds=SECONDS, megabytes=None)
        try:
            answer = json.loads(ended.output)
        except ValueError:
            if len(wanted) > 1:  # Whichever page it was, it is not to take the others along.
                for page in wanted:
                    self.ask(path, [page], folder, look)
                return
            look.page(wanted[0].number)
            look.warnings.add(f"not done in {SECONDS} s" if ended.timed_out else f"ended with {ended.code}")
            look.warnings |= kinds_of(ended.errors.decode(errors="replace").splitlines()[-3:])
            return
        look.warnings |= kinds_of(line for text in answer["warnings"] for line in text.splitlines())
        for page in answer["pages"]:
            seen = look.page(page["number"])
            if page.get("picture"):
                seen.picture = picture_in(page["picture"])
            seen.hits = [(hit["left"], hit["bottom"], hit["right"], hit["top"]) for hit in page["hits"]]


class Pdfium(InNode):
    name, package, title = "pdfium", "@hyzyla/pdfium", "PDFium"


class PdfJs(InNode):
    name, package, title = "pdf.js", "pdfjs-dist", "pdf.js"


ALL = (Poppler(), Mupdf(), Pdfium(), PdfJs(), Ghostscript())
