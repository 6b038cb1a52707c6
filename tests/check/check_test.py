#!/usr/bin/python3
"""Tests that a check of finished productions gives exactly what was done to them, by tools that are not ours, and that others
accept its lists of hashes.

Usage: check_test.py PRODUCE CHECK [--files N]
"""
import csv
import hashlib
import io
import json
import os
import random
import shutil
import subprocess
import sys
import tempfile
import unittest

import pikepdf

PRODUCE = CHECK = None
FILES = 120
INDEX = "Production Index.csv"
HASHES = "Production Hashes.sha256"
TABLE = "Production Hashes.csv"


def run(*arguments, **options):
    return subprocess.run(arguments, capture_output=True, text=True, check=False, **options)


def check(*folders):
    done = run(CHECK, *folders)
    return done.returncode, json.loads(done.stdout)


def kinds(findings):
    """What was found, in a form that can be sorted: file, page, kind, and what else there is to it."""
    return sorted((os.path.basename(finding.pop("folder")), finding.pop("file"), finding.pop("page", 0), finding.pop("kind"),
                   json.dumps(finding, sort_keys=True)) for finding in [dict(each) for each in findings])


def write_sources(folder, count):
    """Files of 1 to 12 pages with text near the places of stamps."""
    os.mkdir(folder)
    choose = random.Random(5)
    for number in range(count):
        with pikepdf.new() as pdf:
            font = pdf.make_indirect(pikepdf.Dictionary(Type=pikepdf.Name.Font, Subtype=pikepdf.Name.Type1,
                                                        BaseFont=pikepdf.Name.Helvetica))
            for page in range(choose.randint(1, 12)):
                pdf.add_blank_page(page_size=(612, 792))
                pdf.pages[-1].Resources = pikepdf.Dictionary(Font=pikepdf.Dictionary(F=font))
                pdf.pages[-1].Contents = pdf.make_stream(
                    b"BT /F 9 Tf 40 30 Td (Page %d of letter %d, tel. 555 000123) Tj ET" % (page + 1, number))
            pdf.save(os.path.join(folder, f"letter {number:05}.pdf"))


def rows_of(folder):
    with open(os.path.join(folder, INDEX), encoding="utf-8", newline="") as file:
        return list(csv.DictReader(file))


def save_index(folder, separator=",", line_end="\n", mark="", quoting=csv.QUOTE_ALL, change=lambda rows: None):
    """As a spreadsheet program saves it."""
    path = os.path.join(folder, INDEX)
    rows = rows_of(folder)
    change(rows)
    text = io.StringIO()
    writer = csv.DictWriter(text, list(rows[0]), delimiter=separator, lineterminator=line_end, quoting=quoting)
    writer.writeheader()
    writer.writerows(rows)
    with open(path, "w", encoding="utf-8", newline="") as file:
        file.write(mark + text.getvalue())


class Check(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        cls.sources = os.path.join(cls.folder.name, "sources")
        write_sources(cls.sources, FILES)
        cls.finished = os.path.join(cls.folder.name, "finished")
        cls.record = os.path.join(cls.folder.name, "settings.json")
        with open(cls.record, "w", encoding="utf-8") as file:
            json.dump({"stamp": {"prefix": "TF-", "digits": 6}}, file)
        os.mkdir(cls.finished)
        done = run(PRODUCE, "--settings", cls.record, "--privilege-log", cls.finished, cls.sources)
        assert done.returncode == 0, done.stderr
        cls.rows = rows_of(cls.finished)

    def setUp(self):
        self.maxDiff = None
        self.production = os.path.join(self.folder.name, "production")
        shutil.copytree(self.finished, self.production)
        self.addCleanup(shutil.rmtree, self.production)

    def path(self, row):
        return os.path.join(self.production, row["Stamped Copy"])

    def expect(self, *findings):
        """Each is file, page or 0, kind, and what else there is to it."""
        code, outcome = check(self.production)
        self.assertEqual(kinds(outcome["findings"]),
                         sorted(("production", file, page, kind, json.dumps(more, sort_keys=True))
                                for file, page, kind, more in findings))
        self.assertEqual(code, 1 if findings else 0)
        return outcome

    def test_a_whole_production_is_whole(self):
        outcome = self.expect()
        pages = sum(int(row["Pages"]) for row in self.rows)
        self.assertEqual((outcome["copies"], outcome["pages"]), (FILES, pages))
        self.assertEqual(outcome["numbers"], [{"first": "TF-000001", "last": f"TF-{pages:06}", "count": pages}])

    def test_everything_that_was_done_is_found_and_nothing_else(self):
        expected = []
        choose = random.Random(8)
        rows = [row for row in choose.sample(self.rows, len(self.rows)) if int(row["Pages"]) > 2]
        first_number = {row["Stamped Copy"]: int(row["First Bates"][3:]) for row in rows}

        def number(row, page):
            return f"TF-{first_number[row['Stamped Copy']] + page - 1:06}"

        for step in range(len(rows)):
            row, kind = rows[step], step % 14
            name, path, pages = row["Stamped Copy"], self.path(row), int(row["Pages"])
            page = choose.randint(1, pages)
            other = os.path.join(self.folder.name, "other.pdf")
            if kind == 0:
                os.remove(path)
                expected.append((name, 0, "copyMissing", {}))
            elif kind == 1:
                os.rename(path, self.path(row) + ".renamed.pdf")
                expected += [(name, 0, "copyMissing", {}), (name + ".renamed.pdf", 0, "notInIndex", {})]
            elif kind == 2:
                os.truncate(path, os.path.getsize(path) * 2 // 3)
                expected.append((name, 0, "copyUnreadable", {}))
            elif kind == 3:
                left = ",".join(str(each) for each in range(1, pages + 1) if each != page)
                self.assertEqual(run("qpdf", path, "--pages", ".", left, "--", other).returncode, 0)
                shutil.move(other, path)
                expected += [(name, 0, "pageCountDiffers", {"inIndex": pages, "inCopy": pages - 1}),
                             (name, page, "numberMissing", {"number": number(row, page)})]
            elif kind == 4:
                with pikepdf.open(path, allow_overwriting_input=True) as pdf:
                    picture = pikepdf.Stream(pdf, bytes(300), Type=pikepdf.Name.XObject, Subtype=pikepdf.Name.Image, Width=10,
                                             Height=10, BitsPerComponent=8, ColorSpace=pikepdf.Name.DeviceRGB)
                    pdf.pages[page - 1].Contents = pdf.make_stream(b"612 0 0 792 0 0 cm /I Do")
                    pdf.pages[page - 1].Resources = pikepdf.Dictionary(XObject=pikepdf.Dictionary(I=picture))
                    pdf.save(path)
                expected.append((name, page, "numberMissing", {"number": number(row, page)}))
            elif kind == 5:
                order = list(range(1, pages + 1))
                order[0], order[-1] = order[-1], order[0]
                self.assertEqual(
                    run("qpdf", path, "--pages", ".", ",".join(map(str, order)), "--", other).returncode, 0)
                shutil.move(other, path)
                expected += [(name, 1, "otherNumber", {"number": number(row, 1), "found": number(row, pages)}),
                             (name, pages, "otherNumber", {"number": number(row, pages), "found": number(row, 1)})]
            elif kind == 6:  # No fault.
                self.assertEqual(run("qpdf", "--linearize", "--object-streams=disable", path, other).returncode, 0)
                shutil.move(other, path)
        self.assertGreater(len(expected), 5)
        self.expect(*expected)

    def test_an_index_that_a_spreadsheet_program_saved_is_the_same(self):
        for options in ({"mark": "\ufeff"}, {"separator": ";", "line_end": "\r\n"}, {"separator": "\t"}, {"line_end": "\r"},
                        {"quoting": csv.QUOTE_MINIMAL, "mark": "\ufeff", "separator": ";"}):
            with self.subTest(**options):
                save_index(self.production, **options)
                self.expect()
                shutil.copy(os.path.join(self.finished, INDEX), self.production)

    def test_rows_that_are_not_understood_are_named_and_their_copies_as_well(self):
        def change(rows):
            rows[3]["Pages"] = "1,5"
            rows[7]["First Bates"] = rows[7]["Last Bates"] = "1.0E+05"

        save_index(self.production, change=change)
        names = [self.rows[index]["Stamped Copy"] for index in (3, 7)]
        gaps = [(self.rows[index + 1]["Stamped Copy"], 0, "numberGap",
                 {"first": self.rows[index]["First Bates"], "last": self.rows[index]["Last Bates"]}) for index in (3, 7)]
        self.expect(*[(INDEX, 0, "rowNotUnderstood", {"row": row}) for row in (5, 9)],
                    *[(name, 0, "notInIndex", {}) for name in names], *gaps)

    def test_several_folders_are_one_series(self):
        pages = sum(int(row["Pages"]) for row in self.rows)
        for start, kind in ((pages + 1, None), (pages + 3, "numberGap"), (pages, "numberTwice")):
            later = os.path.join(self.folder.name, f"later {start}")
            os.mkdir(later)
            with open(self.record + str(start), "w", encoding="utf-8") as file:
                json.dump({"stamp": {"prefix": "TF-", "digits": 6, "startNumber": start}}, file)
            run(PRODUCE, "--settings", self.record + str(start), later, os.path.join(self.sources, "letter 00001.pdf"))
            for folders in ((self.production, later), (later, self.production)):
                _, outcome = check(*folders)
                self.assertEqual([finding["kind"] for finding in outcome["findings"]], [kind] if kind else [])

    def test_a_list_of_hashes_is_accepted_by_other_tools(self):
        self.assertEqual(run(CHECK, "--write-hashes", self.production).returncode, 0)
        with open(os.path.join(self.production, HASHES), encoding="utf-8") as file:
            names = [line[66:].rstrip("\n") for line in file]
        self.assertEqual(names, [row["Stamped Copy"] for row in self.rows] + [INDEX])
        for command in (["sha256sum", "-c", "--strict", HASHES], ["shasum", "-a", "256", "-c", HASHES], ["7zz", "t", HASHES]):
            with self.subTest(command[0]):
                done = run(*command, cwd=self.production)
                self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.expect()
        before = os.stat(os.path.join(self.production, HASHES)).st_mtime_ns
        self.assertEqual(run(CHECK, "--write-hashes", self.production).returncode, 1)  # There is one.
        self.assertEqual(os.stat(os.path.join(self.production, HASHES)).st_mtime_ns, before)

    def test_what_changed_since_the_list_was_written_is_told(self):
        run(CHECK, "--write-hashes", self.production)
        changed, removed, added = self.rows[2], self.rows[5], self.rows[9]
        with open(self.path(changed), "ab") as file:
            file.write(b"\n")
        os.remove(self.path(removed))
        path = os.path.join(self.production, HASHES)
        with open(path, encoding="utf-8") as file:
            lines = [line for line in file if added["Stamped Copy"] not in line]
        with open(path, "w", encoding="utf-8") as file:
            file.writelines(lines + ["what is this\n", "0" * 64 + "  gone.pdf\n"])
        save_index(self.production)
        self.expect((changed["Stamped Copy"], 0, "changed", {}), (removed["Stamped Copy"], 0, "copyMissing", {}),
                    (added["Stamped Copy"], 0, "notInHashList", {}), (INDEX, 0, "changed", {}),
                    ("gone.pdf", 0, "copyMissing", {}), (HASHES, 0, "hashListNotUnderstood", {"line": len(lines) + 1}))

    def test_names_are_escaped_as_coreutils_do(self):
        folder = os.path.join(self.folder.name, "odd")
        sources = os.path.join(self.folder.name, "odd sources")
        for path in (folder, sources):
            os.mkdir(path)
        for name in ("back\\slash.pdf", "line\nbreak.pdf", "*star.pdf", " blank .pdf", "Ä文.pdf", "# hash.pdf"):
            shutil.copy(os.path.join(self.sources, "letter 00001.pdf"), os.path.join(sources, name))
        self.assertEqual(run(PRODUCE, "--settings", self.record, folder, sources).returncode, 0)
        self.assertEqual(run(CHECK, "--write-hashes", folder).returncode, 0)
        done = run("sha256sum", "-c", "--strict", HASHES, cwd=folder)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        names = [row["Stamped Copy"] for row in rows_of(folder)] + [INDEX]
        theirs = run("sha256sum", "--", *names, cwd=folder).stdout
        with open(os.path.join(folder, HASHES), encoding="utf-8", newline="") as file:
            self.assertEqual(file.read(), theirs)
        self.assertEqual(check(folder)[1]["findings"], [])

    def test_a_table_of_hashes_tells_of_the_originals(self):
        twice = os.path.join(self.folder.name, "twice")
        os.makedirs(twice, exist_ok=True)
        shutil.copy(os.path.join(self.sources, "letter 00004.pdf"), twice)
        lost = os.path.join(self.sources, "letter 00006.pdf")
        os.rename(lost, lost + ".away")
        self.addCleanup(os.rename, lost + ".away", lost)
        done = run(CHECK, "--write-table", self.production, self.sources, twice)
        self.assertEqual(json.loads(done.stdout), {"files": FILES, "missingOriginals": ["letter 00006.pdf"],
                                                   "ambiguousOriginals": ["letter 00004.pdf"]})
        with open(os.path.join(self.production, TABLE), encoding="utf-8", newline="") as file:
            table = list(csv.DictReader(file))
        self.assertEqual(len(table), FILES)

        def digest(path):
            with open(path, "rb") as file:
                return hashlib.sha256(file.read()).hexdigest()

        for row in table:
            copy = os.path.join(self.production, row["Stamped Copy"])
            self.assertEqual(row["Copy SHA-256"], digest(copy))
            self.assertEqual(row["Copy Bytes"], str(os.path.getsize(copy)))
            original = "" if row["File"] in ("letter 00004.pdf", "letter 00006.pdf") else digest(
                os.path.join(self.sources, row["File"]))
            self.assertEqual(row["Original SHA-256"], original)

    def test_no_list_is_written_where_a_file_cannot_be_read(self):
        os.remove(self.path(self.rows[4]))
        self.assertEqual(run(CHECK, "--write-hashes", self.production).returncode, 1)
        os.mkdir(self.path(self.rows[4]))
        self.assertEqual(run(CHECK, "--write-hashes", self.production).returncode, 1)
        self.assertFalse(os.path.exists(os.path.join(self.production, HASHES)))


if __name__ == "__main__":
    if "--files" in sys.argv:
        place = sys.argv.index("--files")
        FILES = int(sys.argv[place + 1])
        del sys.argv[place:place + 2]
    CHECK = sys.argv.pop(2)
    PRODUCE = sys.argv.pop(1)
    unittest.main(verbosity=2)
