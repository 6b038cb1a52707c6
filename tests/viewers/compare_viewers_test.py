#!/usr/bin/python3
"""Shows that compare_viewers.py finds what it looks for, with viewers that show what a test says."""
import os
import sys
import tempfile
import unittest

import numpy

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import compare_viewers as compare  # noqa: E402
import copies  # noqa: E402
from document import document  # noqa: E402
from make_samples import samples  # noqa: E402
from viewers import Look, Seen, Viewer, Wanted, by_resolution, kinds_of  # noqa: E402

PLACE = (612 - 18 - copies.TEXT_WIDTH, 20, 612 - 18, 28)


def picture(*spots):
    """A white page with black squares of six pixels at `spots`, from the top left."""
    pixels = numpy.full((792, 612, 3), 255, numpy.uint8)
    for x, y in spots:
        pixels[y:y + 6, x:x + 6] = 0
    return pixels


class Shown(Viewer):
    """Shows for each file, at every resolution, what the test says."""

    name = "shown"

    def __init__(self, **files):
        self.files = files

    def version(self):
        return "Shown 1"

    def look(self, path, wanted):
        pages, warnings = self.files[path]
        return Look({number: Seen(seen.picture, list(seen.hits)) for number, seen in enumerate(pages, 1)}, set(warnings))


def examined(original, copy, pages=1, unit=1.0, warnings=((), ())):
    viewer = Shown(original=(original, warnings[0]), copy=(copy, warnings[1]))
    report = compare.FileReport("a.pdf")
    compare.check_viewer(report, viewer, "original", "copy", [f"TFX{number:06d}" for number in range(1, pages + 1)],
                         [copies.Page((612, 792), 0, unit)] * pages, copies.Options("produce"))
    return report


def tools_of(report):
    return [finding.tool for finding in report.findings]


class CompareViewers(unittest.TestCase):
    def test_takes_a_copy_with_its_number_as_equal(self):
        report = examined([Seen(picture((100, 100)))], [Seen(picture((100, 100), (580, 765)), [PLACE])])
        self.assertEqual(report.findings, [])
        self.assertEqual(report.tallies["shown"], compare.Tally(1, 1, 1, 1, 1))

    def test_finds_what_is_missing_more_or_elsewhere(self):
        for spots in ((), ((100, 100), (300, 300)), ((110, 100),)):
            report = examined([Seen(picture((100, 100)))], [Seen(picture(*spots), [PLACE])])
            self.assertEqual(tools_of(report), ["shown"], spots)
            self.assertEqual(report.tallies["shown"].equal, 0)

    def test_finds_a_page_that_is_not_drawn_any_more_or_of_another_size(self):
        self.assertEqual(tools_of(examined([Seen(picture())], [Seen(None, [PLACE])])), ["shown"])
        self.assertEqual(tools_of(examined([Seen(picture())], [Seen(picture()[:780], [PLACE])])), ["shown"])

    def test_does_not_count_a_page_whose_original_is_not_drawn(self):
        report = examined([Seen(None)], [Seen(None, [PLACE])])
        self.assertEqual((report.findings, report.tallies["shown"].pages), ([], 0))
        self.assertEqual(len(report.notes), 1)

    def test_finds_a_number_that_is_missing_twice_there_or_elsewhere(self):
        left, bottom, right, top = PLACE
        for hits in ([], [PLACE, PLACE], [(left - 9, bottom, right - 9, top)], [(left, bottom + 9, right, top + 9)],
                     [(left + 9, bottom, right, top)]):
            report = examined([Seen(picture())], [Seen(picture(), hits)])
            self.assertEqual(tools_of(report), ["shown text"], hits)
            self.assertEqual(report.tallies["shown"].found, 0)

    def test_measures_the_place_in_points(self):
        in_units = tuple(side / 2 for side in (1224 - 18 - copies.TEXT_WIDTH, 20, 1224 - 18, 28))
        self.assertEqual(examined([Seen(picture())], [Seen(picture(), [in_units])], unit=2).findings, [])

    def test_finds_warnings_that_are_of_the_copy_alone(self):
        page = [Seen(picture(), [PLACE])]
        report = examined(page, page, warnings=({"old"}, {"old", "new"}))
        self.assertEqual([(finding.tool, finding.text) for finding in report.findings], [("shown warnings", "new")])

    def test_warnings_are_not_compared_where_the_original_is_not_opened(self):
        report = examined([Seen(None)], [Seen(picture(), [PLACE])], warnings=({"not opened"}, {"new"}))
        self.assertEqual(report.findings, [])

    def test_a_failed_page_takes_no_other_one_along(self):
        seen = [Seen(picture(), [PLACE]) for _ in range(3)]
        report = examined(seen, [seen[0], Seen(None, []), seen[2]], pages=3)
        self.assertEqual([(finding.tool, finding.page) for finding in report.findings], [("shown", 2), ("shown text", 2)])
        self.assertEqual(report.tallies["shown"].equal, 2)

    def test_warnings_are_told_apart_by_what_they_say_alone(self):
        self.assertEqual(kinds_of(["Syntax Error (286283): Illegal character <69> in hex string",
                                   "Syntax Error: Illegal character <6f> in hex string", "", "warning: object (12 0 R)"]),
                         {"Syntax Error: Illegal character # in hex string", "warning: object"})

    def test_pages_are_drawn_together_where_they_follow_each_other_at_one_resolution(self):
        runs = by_resolution([Wanted(1, 72), Wanted(2, 72), Wanted(4, 72), Wanted(5, 90)])
        self.assertEqual([[page.number for page in run] for run in runs], [[1, 2], [4], [5]])


class CausesOfFindings(unittest.TestCase):
    def causes(self, *rows):
        with tempfile.NamedTemporaryFile("w", suffix=".tsv") as file:
            file.write("# A comment\nfile\ttool\tpage\tcause\n" + "".join("\t".join(row) + "\n" for row in rows))
            file.flush()
            return compare.Causes(file.name)

    def test_a_cause_is_of_a_file_a_viewer_and_a_page(self):
        causes = self.causes(("a.pdf", "shown", "2", "why"))
        self.assertEqual(causes.cause_of("a.pdf", copies.Finding("shown", 2, "")), "why")
        for file, tool, page in (("b.pdf", "shown", 2), ("a.pdf", "shown text", 2), ("a.pdf", "shown", 3)):
            self.assertIsNone(causes.cause_of(file, copies.Finding(tool, page, "")))

    def test_a_cause_of_a_warning_is_of_what_it_begins_with_and_may_be_of_all_files(self):
        causes = self.causes(("*", "shown warnings", "garbage", "why"))
        self.assertEqual(causes.cause_of("a.pdf", copies.Finding("shown warnings", 0, "garbage left")), "why")
        self.assertIsNone(causes.cause_of("a.pdf", copies.Finding("shown warnings", 0, "other garbage")))
        self.assertIsNone(causes.cause_of("a.pdf", copies.Finding("shown", 1, "garbage left")))

    def test_one_that_explains_nothing_is_told(self):
        causes = self.causes(("a.pdf", "shown", "*", "why"), ("c.pdf", "shown", "*", "not looked at"))
        self.assertEqual(causes.not_needed({"a.pdf"}, {"shown"}), [("a.pdf", "shown", "*")])

    def test_the_document_counts_what_has_a_cause_and_what_has_none(self):
        report = examined([Seen(picture((100, 100)))] * 2, [Seen(picture(), [PLACE])] * 2, pages=2)
        causes = self.causes(("a.pdf", "shown", "1", "why"))
        text = document([Shown()], [(report, compare.causes_for(report, [causes]))])
        self.assertIn("| Shown 1 | 1 | 2 | 0 | 1 | 1 | 2 | 0 | 0 | 0 | 0 |", text)
        self.assertIn("- Why:\n  - `a.pdf`: shown p. 1", text)
        self.assertIn("- Not explained:\n  - `a.pdf`: shown p. 2", text)


class Samples(unittest.TestCase):
    def test_each_is_made_once_and_is_a_file_that_opens(self):
        made = list(samples())
        self.assertEqual(len({name for name, _ in made}), len(made))
        for name, data in made:
            with tempfile.NamedTemporaryFile(suffix=".pdf") as file, self.subTest(name):
                file.write(data)
                file.flush()
                checked = compare.copies.run(["qpdf", "--check", file.name])
                self.assertEqual(checked.code, 0, checked.output + checked.errors)


if __name__ == "__main__":
    unittest.main()
