#!/usr/bin/python3
"""Tests that readers which are not ours give each page of a copy the number that it bears: qpdf and Poppler, and pdf.js where
it is installed.

Usage: page_labels_test.py PRODUCE
"""
import itertools
import json
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

import gi
import pikepdf

gi.require_version("Poppler", "0.18")
from gi.repository import Gio, Poppler  # pylint: disable=wrong-import-position

PRODUCE = None
HERE = os.path.dirname(os.path.abspath(__file__))
VIEWERS = os.path.join(HERE, "..", "viewers")
PAGES = 130  # More than two nodes of a number tree, where every page has an entry of its own.

STARTS = (0, 1, 8, 95, 999998, 999999950)
DIGITS = (1, 6)
AFFIXES = (("ABC", ""), ("", ""), ("A(\\", "-X"), ("Ä文 ", ""))
COVERS = ("stampAll", "skipKeepNumber", "skipNoNumber")


def expected_labels(start, digits, prefix, suffix, cover):
    """By the definition of a Bates number, page by page; nothing on a page that is not counted."""
    labels, number = [], start
    for page in range(PAGES):
        if page == 0 and cover == "skipNoNumber":
            labels.append("")
            continue
        labels.append(f"{prefix}{number:0{digits}}{suffix}")
        number += 1
    return labels


def qpdf_labels(path):
    """PDF 1.7, 12.4.2, of the ranges that qpdf reads."""
    done = subprocess.run(["qpdf", "--json", "--json-key=pagelabels", path], capture_output=True, check=True)
    ranges = json.loads(done.stdout)["pagelabels"]
    labels = []
    for here, following in itertools.zip_longest(ranges, ranges[1:]):
        label = here["label"]
        for offset in range((following["index"] if following else PAGES) - here["index"]):
            number = str(label.get("/St", 1) + offset) if label.get("/S") == "/D" else ""
            labels.append(text_of(label.get("/P", "")) + number)
    return labels


def text_of(string):
    return string.removeprefix("u:")  # How newer versions of qpdf mark a text.


def poppler_labels(path):
    document = Poppler.Document.new_from_gfile(Gio.File.new_for_path(path), None, None)
    return [document.get_page(index).get_label() for index in range(document.get_n_pages())]


def pdfjs_labels(paths):
    """Of several files at once, for starting it takes long."""
    done = subprocess.run(["node", os.path.join(VIEWERS, "labels.mjs"), *paths], capture_output=True, check=True)
    return json.loads(done.stdout)


def has_pdfjs():
    return shutil.which("node") and os.path.isdir(os.path.join(VIEWERS, "node_modules", "pdfjs-dist"))


class PageLabels(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        source = os.path.join(cls.folder.name, "source.pdf")
        with pikepdf.new() as pdf:
            for _ in range(PAGES):
                pdf.add_blank_page(page_size=(200, 200))
            # Labels of the original, which say nothing about the copy.
            pdf.Root.PageLabels = pikepdf.Dictionary(Nums=pikepdf.Array([0, pikepdf.Dictionary(S=pikepdf.Name.r)]))
            pdf.save(source)
        cls.expected = {}
        for start, digits, (prefix, suffix), cover in itertools.product(STARTS, DIGITS, AFFIXES, COVERS):
            settings = {"prefix": prefix, "digits": digits, "startNumber": start, "suffix": suffix, "cover": cover}
            production = os.path.join(cls.folder.name, str(len(cls.expected)))
            os.mkdir(production)
            record = production + ".json"
            with open(record, "w", encoding="utf-8") as file:
                json.dump({"stamp": settings | {"naming": "original"}}, file)
            subprocess.run([PRODUCE, "--settings", record, "--no-index", production, source], capture_output=True, check=True)
            copy, = os.listdir(production)
            cls.expected[os.path.join(production, copy)] = settings, expected_labels(**{
                "start" if key == "startNumber" else key: value for key, value in settings.items()})

    def check(self, labels_of):
        for path, (settings, expected) in self.expected.items():
            with self.subTest(**settings):
                self.assertEqual(labels_of(path), expected)

    def test_qpdf_reads_the_number_of_every_page(self):
        self.check(qpdf_labels)

    def test_poppler_reads_the_number_of_every_page(self):
        self.check(poppler_labels)

    def test_pdfjs_reads_the_number_of_every_page(self):
        if not has_pdfjs():
            self.skipTest("pdf.js is not installed: see tests/viewers/install")
        labels = dict(zip(self.expected, pdfjs_labels(list(self.expected))))
        self.check(labels.get)


if __name__ == "__main__":
    PRODUCE = sys.argv.pop(1)
    unittest.main(verbosity=2)
