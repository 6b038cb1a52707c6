#!/usr/bin/python3
"""Stamps a number on every page of PDF files with PyMuPDF, a font embedded once to the file.

Usage: with_pymupdf.py FONT.ttf OUTPUT_FOLDER FILE..., the font cut down to what is written.
"""
import os
import sys

import fitz

from publishing import publish


def stamp(source, target, number, font):
    with fitz.open(source) as document:
        for page in document:
            page.wrap_contents()
            box = page.rect
            page.draw_rect(fitz.Rect(box.x1 - 80, box.y1 - 30, box.x1 - 14, box.y1 - 14), color=None, fill=(1, 1, 1))
            page.insert_text((box.x1 - 76, box.y1 - 18), f"ABC{number:06d}", fontname="Stamp", fontfile=font, fontsize=10)
            number += 1
        document.save(target, deflate=True)


def plan(paths, folder):
    """As a production has to: every file is looked at, and nothing is written before all are known to be all right."""
    first = {}
    number = 1
    for path in paths:
        with fitz.open(path) as document:
            if document.needs_pass or os.path.lexists(os.path.join(folder, os.path.basename(path))):
                sys.exit(f"{path} cannot be stamped")
            first[path] = number
            number += document.page_count
    return first


folder = sys.argv[2]
for path, number in plan(sys.argv[3:], folder).items():
    hidden = os.path.join(folder, ".hidden.pdf")
    stamp(path, hidden, number, sys.argv[1])
    publish(hidden, os.path.join(folder, os.path.basename(path)))
