#!/usr/bin/python3
"""Makes the benchmark's workloads: the same files on every machine, from a fixed seed, nothing downloaded.

Usage: make_workloads.py FOLDER [--scale FRACTION]

  text/   40 files of 250 dense pages, letter and A4, some turned, half with object streams
  scans/  20 files of 50 pages, each one picture of 60 to 120 KB
  small/  2,000 letters of 1 to 3 pages
  long/   one file of 20,000 pages, and one of 2,000
"""
import argparse
import io
import os
import random
import zlib

import numpy
from PIL import Image

WORDS = (
    "the parties agree that each of them shall deliver notice of any claim under this agreement to other party "
    "within thirty days after such party first becomes aware thereof and no failure or delay in exercising right "
    "remedy power privilege hereunder operates as waiver confidential information disclosed by receiving purchaser "
    "seller escrow closing purchase price indemnification representation warranty covenant material adverse effect "
    "schedule exhibit section article hereto hereby whereas subject provided however including without limitation "
    "jurisdiction arbitration governing law counterpart assignment successor permitted amendment entire severability"
).split()

# Points from line to line: of a contract in small print, and of a letter, which has about 450 words on a full page.
CONTRACT = 12
LETTER = 18


class PdfFile:
    """Objects of a file, written with a table or with object streams and a cross-reference stream."""

    def __init__(self, uses_object_streams):
        self.objects = []
        self.uses_object_streams = uses_object_streams

    def add(self, body):
        self.objects.append((body, None))
        return len(self.objects)

    def reserve(self):
        return self.add(b"null")

    def set(self, number, body):
        self.objects[number - 1] = (body, None)

    def add_stream(self, entries, data):
        self.objects.append((entries, data))
        return len(self.objects)

    def write(self, path, root):
        out = io.BytesIO()
        out.write(b"%PDF-1.7\n%\xe2\xe3\xcf\xd3\n")
        places = {}
        plain = []
        for number, (body, data) in enumerate(self.objects, 1):
            if data is None and self.uses_object_streams:
                plain.append((number, body))
                continue
            places[number] = (1, out.tell(), 0)
            if data is None:
                out.write(b"%d 0 obj\n%s\nendobj\n" % (number, body))
            else:
                out.write(b"%d 0 obj\n<<%s/Length %d>>\nstream\n%s\nendstream\nendobj\n" % (number, body, len(data), data))
        next_number = len(self.objects) + 1
        for start in range(0, len(plain), 100):
            part = plain[start:start + 100]
            head, content = [], b""
            for index, (number, body) in enumerate(part):
                head.append(b"%d %d" % (number, len(content)))
                places[number] = (2, next_number, index)
                content += body + b"\n"
            first = b" ".join(head) + b"\n"
            data = zlib.compress(first + content)
            places[next_number] = (1, out.tell(), 0)
            out.write(b"%d 0 obj\n<</Type/ObjStm/N %d/First %d/Filter/FlateDecode/Length %d>>\nstream\n%s\nendstream\nendobj\n"
                      % (next_number, len(part), len(first), len(data), data))
            next_number += 1
        table = out.tell()
        if self.uses_object_streams:
            places[next_number] = (1, table, 0)
            rows = b"\x00" + b"\x00" * 4 + b"\xff\xff"
            for number in range(1, next_number + 1):
                kind, where, index = places[number]
                rows += bytes([kind]) + where.to_bytes(4, "big") + index.to_bytes(2, "big")
            data = zlib.compress(rows)
            out.write(b"%d 0 obj\n<</Type/XRef/W[1 4 2]/Size %d/Root %d 0 R/Filter/FlateDecode/Length %d>>\nstream\n%s\nendstream\nendobj\n"
                      % (next_number, next_number + 1, root, len(data), data))
        else:
            out.write(b"xref\n0 %d\n0000000000 65535 f \n" % (len(self.objects) + 1))
            for number in range(1, len(self.objects) + 1):
                out.write(b"%010d 00000 n \n" % places[number][1])
            out.write(b"trailer\n<</Size %d/Root %d 0 R>>\n" % (len(self.objects) + 1, root))
        out.write(b"startxref\n%d\n%%%%EOF\n" % table)
        with open(path, "wb") as file:
            file.write(out.getvalue())


def sentence(rng, count):
    words = [rng.choice(WORDS) for _ in range(count)]
    words[0] = words[0].capitalize()
    return " ".join(words)


def text_page(rng, height, leading):
    """A page as a word processor writes it: justified lines `leading` points apart, kerned in pieces."""
    lines = [b"q\nBT\n/F1 10 Tf\n72 %d Td\n" % (height - 72)]
    for line in range((height - 144) // leading):
        text = sentence(rng, 15)[:95]
        if line % 9 == 0:
            lines.append(b"/F2 10 Tf\n(%d.%d  ) Tj\n/F1 10 Tf\n" % (rng.randint(1, 30), rng.randint(1, 20)))
        pieces = []
        while text:
            size = rng.randint(3, 9)
            pieces.append(b"(%s)%d" % (text[:size].encode(), rng.randint(-40, 40)))
            text = text[size:]
        lines.append(b"%.3f Tw [%s] TJ\n0 -%d Td\n" % (rng.random(), b"".join(pieces), leading))
    lines.append(b"ET\nQ\n")
    return b"".join(lines)


def text_file(path, pages, rng, uses_object_streams, leading=CONTRACT):
    pdf = PdfFile(uses_object_streams)
    tree = pdf.reserve()
    fonts = [pdf.add(b"<</Type/Font/Subtype/Type1/BaseFont/%s/Encoding/WinAnsiEncoding>>" % name)
             for name in (b"Times-Roman", b"Times-Bold")]
    kids = []
    nodes = []
    for index in range(pages):
        if index % 50 == 0:
            nodes.append((pdf.reserve(), []))
        width, height = (612, 792) if rng.random() < 0.7 else (595, 842)
        turn = b"/Rotate 90" if rng.random() < 0.05 else b""
        content = pdf.add_stream(b"/Filter/FlateDecode", zlib.compress(text_page(rng, height, leading)))
        page = pdf.add(b"<</Type/Page/Parent %d 0 R/MediaBox[0 0 %d %d]%s/Resources<</Font<</F1 %d 0 R/F2 %d 0 R>>"
                       b"/ProcSet[/PDF/Text]>>/Contents %d 0 R>>"
                       % (nodes[-1][0], width, height, turn, fonts[0], fonts[1], content))
        nodes[-1][1].append(page)
    for node, kids in nodes:
        pdf.set(node, b"<</Type/Pages/Parent %d 0 R/Kids[%s]/Count %d>>"
                % (tree, b" ".join(b"%d 0 R" % kid for kid in kids), len(kids)))
    pdf.set(tree, b"<</Type/Pages/Kids[%s]/Count %d>>" % (b" ".join(b"%d 0 R" % node for node, _ in nodes), pages))
    root = pdf.add(b"<</Type/Catalog/Pages %d 0 R>>" % tree)
    pdf.write(path, root)


def scan(rng):
    """A grey page with a paper's grain, as a JPEG of 60 to 120 KB."""
    generator = numpy.random.default_rng(rng.getrandbits(32))
    paper = numpy.full((1100, 850), 235.0) + generator.normal(0, 9, (1100, 850))
    for line in range(80, 1020, 22):
        row = generator.integers(0, 2, 170).repeat(4)
        paper[line:line + 9, 85:85 + row.size] -= row * 140
    image = Image.fromarray(numpy.clip(paper, 0, 255).astype("uint8"))
    for quality in range(80, 20, -4):
        data = io.BytesIO()
        image.save(data, "JPEG", quality=quality)
        if data.tell() <= 120 * 1024:
            break
    return data.getvalue()


def scan_file(path, pages, rng, pictures):
    pdf = PdfFile(False)
    tree = pdf.reserve()
    kids = []
    for _ in range(pages):
        data = rng.choice(pictures) + b"\x00" * rng.randint(0, 2048)
        image = pdf.add_stream(b"/Type/XObject/Subtype/Image/Width 850/Height 1100/ColorSpace/DeviceGray"
                               b"/BitsPerComponent 8/Filter/DCTDecode", data)
        content = pdf.add_stream(b"", b"q 612 0 0 792 0 0 cm /Im0 Do Q")
        kids.append(pdf.add(b"<</Type/Page/Parent %d 0 R/MediaBox[0 0 612 792]/Resources<</XObject<</Im0 %d 0 R>>>>"
                            b"/Contents %d 0 R>>" % (tree, image, content)))
    pdf.set(tree, b"<</Type/Pages/Kids[%s]/Count %d>>" % (b" ".join(b"%d 0 R" % kid for kid in kids), pages))
    pdf.write(path, pdf.add(b"<</Type/Catalog/Pages %d 0 R>>" % tree))


def make(folder, scale):
    """Makes all workloads below `folder`: `scale` of the files, and of the pages of the long ones."""

    def count(full):
        return max(1, int(full * scale))

    def below(name):
        path = os.path.join(folder, name)
        os.makedirs(path, exist_ok=True)
        return path

    rng = random.Random(20261120)
    text = below("text")
    for number in range(count(40)):
        text_file(os.path.join(text, f"Agreement {number + 1}.pdf"), 250, rng, number % 2 == 1)
    scans = below("scans")
    pictures = [scan(rng) for _ in range(24)]
    for number in range(count(20)):
        scan_file(os.path.join(scans, f"Scan {number + 1}.pdf"), 50, rng, pictures)
    small = below("small")
    for number in range(count(2000)):
        text_file(os.path.join(small, f"Letter {number + 1}.pdf"), rng.randint(1, 3), rng, number % 2 == 1, LETTER)
    for pages in (2000, 20000):
        text_file(os.path.join(below(f"long-{pages}"), "Record.pdf"), count(pages), rng, False)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folder")
    parser.add_argument("--scale", type=float, default=1.0, help="fraction of the files and of the long file's pages")
    arguments = parser.parse_args()
    make(arguments.folder, arguments.scale)


if __name__ == "__main__":
    main()
