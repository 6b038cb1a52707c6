#!/usr/bin/python3
"""Stamps a number on every page of PDF files with pikepdf: content kept apart, a font embedded once to the file.

Usage: with_pikepdf.py FONT.ttf OUTPUT_FOLDER FILE..., the font cut down to what is written.
"""
import os
import sys

import pikepdf
from pikepdf import Array, Dictionary, Name, Pdf

from publishing import publish

FIRST, LAST = 32, 90
WIDTH = 600  # Only for what is laid out by it, and nothing is.


def embedded_font(pdf, program):
    descriptor = Dictionary(Type=Name.FontDescriptor, FontName=Name("/NUMBER+Stamp"), Flags=32, ItalicAngle=0, Ascent=905,
                            Descent=-212, CapHeight=729, StemV=80, FontBBox=Array([-200, -300, 1200, 1000]),
                            FontFile2=pdf.make_stream(program, Length1=len(program)))
    return pdf.make_indirect(Dictionary(
        Type=Name.Font, Subtype=Name.TrueType, BaseFont=Name("/NUMBER+Stamp"), Encoding=Name.WinAnsiEncoding,
        FirstChar=FIRST, LastChar=LAST, Widths=Array([WIDTH] * (LAST - FIRST + 1)),
        FontDescriptor=pdf.make_indirect(descriptor)))


def stamp(source, target, number, program):
    with Pdf.open(source) as pdf:
        font = embedded_font(pdf, program)
        for page in pdf.pages:
            box = [float(side) for side in page.trimbox]
            page.contents_add(b"q", prepend=True)
            content = (f"Q q 1 g {box[2] - 80:g} {box[1] + 14:g} 66 16 re f 0 g BT /Stamp 10 Tf {box[2] - 76:g} "
                       f"{box[1] + 18:g} Td (ABC{number:06d}) Tj ET Q").encode()
            page.contents_add(content)
            if Name.Resources not in page.obj:
                page.obj.Resources = Dictionary()
            page.add_resource(font, Name.Font, Name.Stamp, replace_existing=False)
            number += 1
        pdf.save(target, object_stream_mode=pikepdf.ObjectStreamMode.generate)


def plan(paths, folder):
    """As a production has to: every file is looked at, and nothing is written before all are known to be all right."""
    first = {}
    number = 1
    for path in paths:
        with Pdf.open(path) as pdf:
            if pdf.is_encrypted or os.path.lexists(os.path.join(folder, os.path.basename(path))):
                sys.exit(f"{path} cannot be stamped")
            first[path] = number
            number += len(pdf.pages)
    return first


with open(sys.argv[1], "rb") as file:
    program = file.read()
folder = sys.argv[2]
for path, number in plan(sys.argv[3:], folder).items():
    hidden = os.path.join(folder, ".hidden.pdf")
    stamp(path, hidden, number, program)
    publish(hidden, os.path.join(folder, os.path.basename(path)))
