#!/usr/bin/python3
"""Tests of the rewriting: each kind really does what it says, and the file still says the same."""
import os
import random
import re
import subprocess
import tempfile
import unittest

import pikepdf

from limited import run
from rewriting import notation
from rewriting.document import Document, NotRewritable
from rewriting.indirection import MOST_ITEMS
from rewriting.kinds import KINDS, conflict_of
from rewriting.lexer import content_tokens, next_token
from rewriting.rewriting import rewrite
from rewriting.values import Name, Number, Reference, Stream, String
from rewritten import made_files

INHERITABLE = ("/Resources", "/MediaBox", "/CropBox", "/Rotate")


def content_of(page):
    contents = page.obj.Contents
    parts = contents if isinstance(contents, pikepdf.Array) else [contents]
    return b"\n".join(part.read_bytes(decode_level=pikepdf.StreamDecodeLevel.specialized) for part in parts)


def streams_of(pdf):
    return [value for value in pdf.objects if isinstance(value, pikepdf.Stream)
            and value.get("/Type") not in ("/XRef", "/ObjStm")]


def tokens_in(data):
    """What contents say, whatever their notation: numbers by their value."""
    return [float(token) if isinstance(token, Number) else (type(token), bytes(token))
            for token, _ in content_tokens(data)]


class Rewriting(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.drawing, cls.notes, cls.boxes = made_files.write_into(cls.folder.name)
        cls.target = os.path.join(cls.folder.name, "rewritten.pdf")

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def data(self, source, *kinds, seed=1):
        rewrite(source, self.target, kinds, seed)
        with open(self.target, "rb") as file:
            return file.read()

    def pdf(self, source, *kinds, seed=1):
        self.data(source, *kinds, seed=seed)
        pdf = pikepdf.open(self.target, inherit_page_attributes=False)
        self.addCleanup(pdf.close)
        return pdf

    def objects(self, source, *kinds):
        self.data(source, *kinds)
        return Document(self.target, is_final=True).objects.values()

    def test_every_kind_leaves_a_sound_file_that_says_the_same(self):
        for source in (self.drawing, self.notes, self.boxes):
            with pikepdf.open(source) as pdf:
                known = [tokens_in(content_of(page)) for page in pdf.pages]
            for kind in KINDS:
                with self.subTest(kind=kind, source=os.path.basename(source)):
                    pdf = self.pdf(source, kind)
                    check = run(["qpdf", "--check", self.target])
                    self.assertEqual((check.code, b"WARNING" in check.errors), (0, False), check.errors)
                    self.assertEqual(len(pdf.pages), len(known))
                    if kind != "shared-resources":  # Which gives names to what had the same.
                        self.assertEqual([tokens_in(content_of(page)) for page in pdf.pages], known)

    def test_a_seed_gives_the_same_file_and_another_seed_another(self):
        kinds = ("comments", "literal-strings", "odd-numbers")
        self.assertEqual(self.data(self.notes, *kinds, seed=5), self.data(self.notes, *kinds, seed=5))
        self.assertNotEqual(self.data(self.notes, *kinds, seed=5), self.data(self.notes, *kinds, seed=6))

    def test_plain_table(self):
        data = self.data(self.boxes, "plain-table")
        self.assertIn(b"\nxref\n0 ", data)
        self.assertNotIn(b"/ObjStm", data)

    def test_hash_names(self):
        data = self.data(self.boxes, "hash-names", "streams-decoded")
        names = re.findall(rb"/[^\s/<>()\[\]]*", data)
        self.assertGreater(len(names), 50)
        self.assertEqual([name for name in names if not re.fullmatch(rb"/(#[0-9A-Fa-f]{2})+", name)], [])

    def test_hash_names_in_contents(self):
        contents = content_of(self.pdf(self.boxes, "hash-names").pages[0])
        self.assertIn(b"/#54 24 Tf", contents)

    def assert_value_of_field(self):
        with pikepdf.open(self.target) as pdf:
            self.assertEqual(str(pdf.Root.AcroForm.Fields[1].V), "Filled (in)")

    def test_hex_strings(self):
        data = self.data(self.notes, "hex-strings", "streams-decoded")
        self.assertNotIn(b"(", data)
        self.assert_value_of_field()

    def test_literal_strings(self):
        data = self.data(self.notes, "literal-strings", "streams-decoded")
        self.assertEqual(re.findall(rb"(?<!<)<(?!<)", data), [])
        self.assertRegex(data, rb"/T\(.*\\[0-7]{2,3}.*\)")
        self.assert_value_of_field()

    def test_strings_are_read_as_they_were_written(self):
        dice = random.Random(1)
        for _ in range(3000):
            value = bytes(dice.choice(b"()\\\n\r\t\b\f097an\0\xff") for _ in range(dice.randrange(12)))
            for text in (notation.literal_string(value, dice), notation.hex_string(value, dice)):
                self.assertEqual(next_token(text, 0), (String(value), len(text)))

    def test_literal_strings_have_every_escape(self):
        dice = random.Random(1)
        text = b"".join(notation.literal_string(b"\n\r\t\b\f(a)\\z\x01\x20(", dice) for _ in range(200))
        for escape in (rb"\\n", rb"\\r", rb"\\t", rb"\\b", rb"\\f", rb"\\\(", rb"\\\)", rb"\\\\", rb"\\z", rb"\\1(?!\d)",
                       rb"\\40", rb"\\001", rb"[^\\]\(", b"\\\\\n", b"\\\\\r[^\n]", b"\\\\\r\n"):
            self.assertRegex(text, escape)

    def test_odd_numbers(self):
        data = self.data(self.boxes, "odd-numbers", "streams-decoded")
        for notation_of_number in (rb"\s\+\d", rb"\d\.[\s\]]", rb"\b0\d"):
            self.assertRegex(data, notation_of_number)
        self.assertRegex(self.data(self.drawing, "odd-numbers", "streams-decoded"), rb"[\s\[]\+?\.\d")

    def test_odd_numbers_leaves_integers_what_they_are(self):
        pdf = self.pdf(self.boxes, "odd-numbers", "flat-page-tree")
        self.assertIsInstance(pdf.pages[1].obj.Rotate, int)
        self.assertEqual([float(side) for side in pdf.pages[2].obj.CropBox], [20, 100, 200, 250.5])
        contents = content_of(self.pdf(self.drawing, "odd-numbers").pages[0])
        self.assertRegex(contents, rb"\s[+0]*1 J")

    def test_comments(self):
        data = self.data(self.boxes, "comments", "streams-decoded")
        self.assertGreater(data.count(b"% a remark"), 5)
        for space in (b"\0", b"\t", b"\f", b"\r\n", b"\r\r"):
            self.assertIn(space, data)
        with pikepdf.open(self.target) as pdf:
            self.assertIn(b"%", content_of(pdf.pages[0]))

    def test_return_line_ends(self):
        data = self.data(self.boxes, "return-line-ends", "streams-decoded")
        self.assertNotIn(b"\n", data.replace(b"stream\r\n", b""))

    def test_flat_page_tree(self):
        root = self.pdf(self.boxes, "flat-page-tree").Root.Pages
        self.assertEqual([str(kid.Type) for kid in root.Kids], ["/Page"] * 5)
        self.assertEqual([key for key in INHERITABLE if key in root], [])
        self.assertEqual([int(kid.MediaBox[0]) for kid in root.Kids], [0, 0, -10, -10, -10])

    def test_deep_page_tree(self):
        pdf = self.pdf(self.boxes, "deep-page-tree")
        root = pdf.Root.Pages
        self.assertEqual([key for key in INHERITABLE if key in root], list(INHERITABLE))
        node, levels = root, 0
        while "/Kids" in node:
            node, levels = node.Kids[0], levels + 1
        self.assertEqual(levels, 30)
        self.assertEqual([key for key in INHERITABLE if key in node], [])

    def test_split_contents(self):
        with pikepdf.open(self.drawing) as pdf:
            tokens = content_tokens(content_of(pdf.pages[0]))
        parts = self.pdf(self.drawing, "split-contents-at-tokens").pages[0].obj.Contents
        self.assertEqual(len(parts), len(tokens))

    def test_shared_resources(self):
        pages = self.pdf(self.drawing, "shared-resources").pages
        self.assertEqual(len({page.obj.Resources.objgen for page in pages}), 1)
        used = re.search(rb"/(\S+) 18 Tf", content_of(pages[1])).group(1).decode()
        self.assertNotEqual(used, "T")
        self.assertEqual(str(pages[1].obj.Resources.Font["/" + used].BaseFont), "/Courier-Bold")

    def test_own_resources(self):
        pages = self.pdf(self.drawing, "own-resources").pages
        fonts = [page.obj.Resources.Font.T.objgen for page in (pages[0], pages[2])]
        self.assertEqual(len(set(fonts)), 2)
        self.assertEqual(len({page.obj.Resources.objgen for page in pages}), 3)

    def test_streams_decoded(self):
        self.assertEqual([stream.objgen for stream in streams_of(self.pdf(self.boxes, "streams-decoded"))
                          if "/Filter" in stream], [])

    def test_streams_encoded_anew(self):
        streams = streams_of(self.pdf(self.drawing, "streams-encoded-anew", seed=2))
        self.assertTrue(all("/Filter" in stream for stream in streams))
        self.assertGreaterEqual(len({str(stream.Filter) for stream in streams}), 3)

    def test_filters_and_their_parameters_as_objects_are_taken_off(self):
        with pikepdf.open(self.drawing) as pdf:
            known = [tokens_in(content_of(page)) for page in pdf.pages]
        for seed in range(5):
            encoded = os.path.join(self.folder.name, "encoded.pdf")
            rewrite(self.drawing, encoded, ["streams-encoded-anew", "indirect-values"], seed)
            pdf = self.pdf(encoded, "streams-decoded")
            self.assertEqual([tokens_in(content_of(page)) for page in pdf.pages], known)
            self.assertEqual([stream.objgen for stream in streams_of(pdf) if "/Filter" in stream], [])

    def test_filters_as_arrays(self):
        streams = streams_of(self.pdf(self.boxes, "filters-as-arrays"))
        self.assertEqual({len(stream.Filter) for stream in streams}, {1})

    def test_two_filters(self):
        streams = streams_of(self.pdf(self.boxes, "two-filters"))
        self.assertEqual({len(stream.Filter) for stream in streams}, {2})

    def direct_values(self, value, entry=None):
        """Values in dictionaries and arrays that are no references, by their keys."""
        items = value.items() if isinstance(value, dict) else enumerate(value) if isinstance(value, list) else ()
        for key, item in items:
            if not isinstance(item, Reference):
                yield entry, key
                yield from self.direct_values(item, key)

    def test_indirect_values(self):
        for source in (self.drawing, self.notes, self.boxes):
            for value in self.objects(source, "indirect-values"):
                found = list(self.direct_values(value.dictionary if isinstance(value, Stream) else value))
                allowed = ((None, b"AS"), (b"AP", b"N"), (b"DR", b"Font"))
                self.assertEqual([(entry, key) for entry, key in found
                                  if (entry, key) not in allowed and (entry, key) not in ((None, b"N"), (None, b"Font"))
                                  and not (isinstance(key, int) and key >= MOST_ITEMS)], [])

    def test_indirect_values_are_of_every_type(self):
        types = {type(value) for value in self.objects(self.drawing, "indirect-values")}
        self.assertLessEqual({Name, String, Number, bool, list, dict, Stream}, types)

    def test_direct_values(self):
        pdf = self.pdf(self.drawing, "direct-values")
        self.assertFalse(pdf.pages[1].obj.Resources.Font.T.is_indirect)
        before = len(self.objects(self.drawing, "plain-table"))
        self.assertLess(len(self.objects(self.drawing, "direct-values")), before)

    def test_shuffled_numbers(self):
        plain = [stream.read_raw_bytes() for stream in streams_of(self.pdf(self.drawing, "plain-table"))]
        shuffled = [stream.read_raw_bytes() for stream in streams_of(self.pdf(self.drawing, "shuffled-numbers"))]
        self.assertEqual(sorted(plain), sorted(shuffled))
        self.assertNotEqual(plain, shuffled)

    def test_generations(self):
        generations = {value.objgen[1] for value in self.pdf(self.drawing, "generations").objects
                       if isinstance(value, (pikepdf.Dictionary, pikepdf.Stream))}
        self.assertGreater(len(generations), 2)

    def test_gaps(self):
        data = self.data(self.drawing, "gaps")
        free = re.findall(rb"\d{10} \d{5} f", data)
        self.assertGreater(len(free), 5)
        self.assertNotEqual(free[0][:10], b"0000000000")  # The first leads to the next.

    def test_object_streams(self):
        data = self.data(self.boxes, "object-streams")
        self.assertIn(b"/ObjStm", data)
        self.assertNotIn(b"trailer", data)
        self.assertNotIn(b"/MediaBox", data)

    def test_updates(self):
        for kind, count in (("update", 2), ("two-updates", 3)):
            data = self.data(self.boxes, kind)
            self.assertEqual(data.count(b"%%EOF"), count)
            self.assertEqual(len(re.findall(rb"/Prev \d", data)), count - 1)
            with open(self.target, "wb") as file:
                file.write(data[:data.index(b"%%EOF") + 6])
            with pikepdf.open(self.target) as earlier:
                self.assertEqual([int(side) for side in earlier.pages[0].obj.MediaBox], [0, 0, 50, 70])

    def test_updates_of_object_streams(self):
        pdf = self.pdf(self.boxes, "two-updates", "object-streams")
        self.assertEqual(int(pdf.pages[2].obj.CropBox[1]), 100)

    def test_text_around(self):
        data = self.data(self.boxes, "text-around")
        self.assertLess(0, data.index(b"%PDF-"))
        self.assertNotEqual(data[-6:], b"%%EOF\n")

    def test_qdf(self):
        self.assertIn(b"%QDF", self.data(self.boxes, "qdf"))

    def test_linearized(self):
        self.data(self.boxes, "linearized")
        self.assertEqual(run(["qpdf", "--check-linearization", self.target]).code, 0)

    def test_encrypted(self):
        methods = {"encrypted-rc4-40": (2, b"RC4"), "encrypted-rc4-128": (3, b"RC4"), "encrypted-aes-128": (4, b"AESv2"),
                   "encrypted-aes-256": (6, b"AESv3")}
        for kind, (revision, method) in methods.items():
            self.data(self.notes, kind)
            shown = run(["qpdf", "--show-encryption", self.target]).output
            self.assertIn(b"R = %d" % revision, shown)
            self.assertNotIn(b"not allowed", shown)
            self.assertIn(b"User password = \n", shown)
            if revision >= 4:
                self.assertIn(method, shown)

    def test_notation_of_what_is_encrypted(self):
        data = self.data(self.boxes, "encrypted-aes-128", "hash-names", "update")
        self.assertIn(b"/#45", data)
        self.assertEqual(data.count(b"%%EOF"), 2)
        self.assertEqual(run(["qpdf", "--show-npages", self.target]).output, b"5\n")

    def test_two_notations_at_once(self):
        data = self.data(self.notes, "hex-strings", "comments", "streams-decoded")
        self.assertNotIn(b"(", re.sub(rb"%[^\r\n]*", b"", data))
        self.assertIn(b"% a remark", data)

    def test_notation_in_object_streams(self):
        pdf = self.pdf(self.boxes, "object-streams", "hash-names")
        carried = b"".join(value.read_bytes() for value in pdf.objects
                           if isinstance(value, pikepdf.Stream) and value.get("/Type") == "/ObjStm")
        self.assertIn(b"/#", carried)
        self.assertNotIn(b"/Page", carried)

    def test_conflicts(self):
        self.assertIsNotNone(conflict_of(["qdf", "comments"]))
        self.assertIsNotNone(conflict_of(["comments", "qdf"]))
        self.assertIsNotNone(conflict_of(["qdf", "qdf"]))
        self.assertIsNone(conflict_of(["comments", "hash-names"]))
        with self.assertRaises(NotRewritable):
            self.data(self.boxes, "encrypted-aes-128", "object-streams", "comments")

    def test_a_file_that_is_none(self):
        path = os.path.join(self.folder.name, "none.pdf")
        with open(path, "wb") as file:
            file.write(b"no file of this kind")
        with self.assertRaises(NotRewritable):
            self.data(path, "plain-table")

    def test_the_program_says_why_it_does_not(self):
        program = os.path.join(os.path.dirname(os.path.abspath(__file__)), "rewrite.py")
        ended = subprocess.run([program, "--kind", "qdf", "--kind", "comments", self.boxes, self.target],
                               capture_output=True, check=False)
        self.assertEqual((ended.returncode, ended.stderr), (65, b"qdf would undo comments\n"))
        listed = subprocess.run([program, "--list"], capture_output=True, check=True).stdout.decode()
        self.assertEqual([line.split(":")[0] for line in listed.splitlines()], list(KINDS))


if __name__ == "__main__":
    unittest.main()
