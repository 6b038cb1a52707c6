#!/usr/bin/python3
"""Shows that no file can hold up, end or blow up a comparison of many."""
import io
import math
import os
import tempfile
import time
import unittest
import zlib

import pikepdf

from filters import decoded
from workers import Limits, results


def stream(data, *filters, parameters=None):
    """A stream of `data` with these filters, read back from a file."""
    pdf = pikepdf.new()
    made = pikepdf.Stream(pdf, data)
    made.Filter = pikepdf.Array([pikepdf.Name("/" + name) for name in filters])
    if parameters is not None:
        made.DecodeParms = parameters
    pdf.Root.Held = pdf.make_indirect(made)
    file = io.BytesIO()
    pdf.save(file, compress_streams=False, stream_decode_level=pikepdf.StreamDecodeLevel.none)
    return pikepdf.open(file).Root.Held


class Filters(unittest.TestCase):
    def test_are_taken_off_one_after_the_other(self):
        for data, filters in ((b"3831383E3E>", ("ASCIIHexDecode", "ASCIIHexDecode")),
                              (b"8141>", ("ASCIIHexDecode", "RunLengthDecode"))):
            made = stream(data, *filters)
            self.assertEqual(decoded(made), made.read_bytes(decode_level=pikepdf.StreamDecodeLevel.specialized))

    def test_keep_each_its_own_parameters(self):
        rows = b"".join(bytes([2]) + bytes([1, 1, 1, 1]) for _ in range(3))
        data = zlib.compress(rows).hex().encode() + b">"
        made = stream(data, "ASCIIHexDecode", "FlateDecode",
                      parameters=pikepdf.Array([None, pikepdf.Dictionary(Predictor=12, Columns=4)]))
        self.assertEqual(decoded(made), b"\1\1\1\1\2\2\2\2\3\3\3\3")

    def test_that_would_make_terabytes_stay_on(self):
        made = stream(b"8181>", "ASCIIHexDecode", *["RunLengthDecode"] * 8)
        self.assertEqual(decoded(made), b"8181>")

    def test_that_fail_on_what_another_gave_stay_on(self):
        for data, filters in ((b"00ff>", ("ASCIIHexDecode", "FlateDecode")),
                              (zlib.compress(b"no such data"), ("FlateDecode", "FlateDecode"))):
            self.assertEqual(decoded(stream(data, *filters)), data)

    def test_that_lose_something_stay_on(self):
        made = stream(b"ffd8>", "ASCIIHexDecode", "DCTDecode")
        self.assertEqual(decoded(made), b"ffd8>")


def run(argument):
    if argument == "dies":
        os._exit(3)
    if argument == "hangs":
        time.sleep(600)
    if argument == "grows":
        return len(bytes(1 << 32))
    if argument == "leaves a file":
        tempfile.mkstemp()
    return argument.upper()


class Workers(unittest.TestCase):
    def results(self, arguments, seconds=60.0, until=math.inf, jobs=2):
        with tempfile.TemporaryDirectory() as folder:
            self.left = folder
            return sorted(results(run, arguments, Limits(jobs, seconds, until, 1024, folder)), key=str)

    def test_give_what_each_gives(self):
        self.assertEqual(self.results("abcdefg"), [(letter, letter.upper()) for letter in "abcdefg"])

    def test_go_on_when_one_dies_hangs_or_grows(self):
        self.assertEqual(self.results(["a", "dies", "hangs", "grows", "b"], seconds=2),
                         [("a", "A"), ("b", "B"), ("dies", None), ("grows", None), ("hangs", None)])

    def test_end_with_what_still_runs_when_the_time_of_all_is_over(self):
        self.assertEqual(self.results(["hangs", "hangs", "a"], until=time.monotonic() + 0.5), [])

    def test_leave_no_files(self):
        self.results(["leaves a file", "dies"])
        self.assertFalse(os.path.exists(self.left))


if __name__ == "__main__":
    unittest.main()
