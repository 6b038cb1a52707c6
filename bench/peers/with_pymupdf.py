#!/usr/bin/python3
"""Stamps a number on every page of PDF files with PyMuPDF, a font embedded once to the file.

Usage: with_pymupdf.py FONT.ttf OUTPUT_FOLDER FILE..., the font cut down to what is written.
"""
import os
import sys

import fitz

number = 1
for path in sys.argv[3:]:
    with fitz.open(path) as document:
        for page in document:
            page.wrap_contents()
            box = page.rect
            page.draw_rect(fitz.Rect(box.x1 - 80, box.y1 - 30, box.x1 - 14, box.y1 - 14), color=None, fill=(1, 1, 1))
            page.insert_text((box.x1 - 76, box.y1 - 18), f"ABC{number:06d}", fontname="Stamp", fontfile=sys.argv[1],
                             fontsize=10)
            number += 1
        document.save(os.path.join(sys.argv[2], os.path.basename(path)), deflate=True)
