"""A PDF file as values, read from what qpdf makes of it: repaired, decrypted, with a plain table of its objects."""
import io
import os
import re
import tempfile

import pikepdf

from filters import NOT_DECODED, without_filters
from limited import run

from .parser import NotParsed, parse
from .values import Name, Reference, Stream, parts_of

_OBJECT = re.compile(rb"(\d+) 0 obj\s")
# As qpdf leaves the data of every stream alone, it says its length in the dictionary itself.
_STREAM = re.compile(rb"\s*stream\r?\n")
_AS_IT_IS = ("--stream-data=preserve", "--decode-level=none")
_ENCODING = (Name(b"Filter"), Name(b"DecodeParms"))


class NotRewritable(Exception):
    """A file cannot be written in the way wanted; the text says why."""


def by_qpdf(source, target, *options):
    """Has qpdf write `target`; NotRewritable when it does not."""
    ended = run(["qpdf", "--no-warn", "--warning-exit-0", "--static-id", "--static-aes-iv", *options, source, target],
                seconds=60)
    if ended.code != 0:
        lines = ended.errors.decode(errors="replace").strip().splitlines() or [f"exit code {ended.code}"]
        raise NotRewritable(f"qpdf: {lines[-1].replace(source, 'the file')[:160]}")


class _Table:
    """Where the objects of a file are that qpdf wrote with a plain table."""

    def __init__(self, data):
        self.data = data
        start = int(re.search(rb"startxref\s+(\d+)\s+%%EOF\s*\Z", data).group(1))
        head = re.compile(rb"xref\s+0 (\d+)\s*\n").match(data, start)
        self.places = {}
        for number in range(int(head.group(1))):
            entry = data[head.end() + 20 * number:head.end() + 20 * number + 18]
            if entry.endswith(b"n"):
                self.places[number] = int(entry[:10])
        self.trailer, _ = parse(data, data.index(b"trailer", head.end()) + len(b"trailer"))

    def object(self, number):
        head = _OBJECT.match(self.data, self.places[number])
        value, place = parse(self.data, head.end())
        stream = _STREAM.match(self.data, place) if isinstance(value, dict) else None
        if not stream:
            return value
        length = value[b"Length"]
        if isinstance(length, Reference):
            length = self.object(length)
        return Stream(value, self.data[stream.end():stream.end() + int(length)])


class Document:
    """The objects of a file by their numbers, and its trailer. Streams say no /Length; the writer does."""

    def __init__(self, path, is_final=False):
        """Reads the file at `path`; `is_final` when qpdf has written it with a plain table, and it may be encrypted:
        then strings and data stay as they are."""
        with tempfile.TemporaryDirectory() as work:
            plain = path
            if not is_final:
                plain = os.path.join(work, "plain.pdf")
                by_qpdf(path, plain, "--decrypt", "--object-streams=disable", *_AS_IT_IS)
            with open(plain, "rb") as file:
                table = _Table(file.read())
        try:
            self.objects = {number: table.object(number) for number in table.places}
        except (NotParsed, RecursionError) as problem:
            raise NotRewritable(f"not parsed: {problem}") from problem
        self.version = re.match(rb"%PDF-(\d\.\d)", table.data).group(1)
        self.trailer = {key: value for key, value in table.trailer.items()
                        if key in (b"Root", b"Info", b"ID", b"Encrypt")}
        self._read = {number: value.data for number, value in self.objects.items() if isinstance(value, Stream)}
        self._file = table.data
        self._parsed = None
        self._next = max(self.objects, default=0) + 1
        for value in self.objects.values():
            if isinstance(value, Stream):
                value.dictionary.pop(b"Length", None)

    def add(self, value):
        """The reference to a new object."""
        number = self._next
        self._next += 1
        self.objects[number] = value
        return Reference(number)

    def get(self, value):
        """`value`, or what it refers to."""
        for _ in range(20):
            if not isinstance(value, Reference):
                return value
            value = self.objects.get(value)
        return None

    def entry(self, dictionary, key):
        """What the dictionary (or stream, or a reference to one) has for `key`, None for nothing."""
        dictionary = self.get(dictionary)
        if isinstance(dictionary, Stream):
            dictionary = dictionary.dictionary
        return self.get(dictionary.get(key)) if isinstance(dictionary, dict) else None

    def drop_unused(self):
        """Takes away the objects that nothing leads to from the trailer."""
        used = set()
        waiting = [self.trailer]
        while waiting:
            value = waiting.pop()
            if isinstance(value, Reference):
                if value not in used:
                    used.add(value)
                    waiting.append(self.objects.get(value))
            else:
                waiting += parts_of(value)
        self.objects = {number: value for number, value in self.objects.items() if number in used}

    def decode(self):
        """Takes off the filters of every stream that is compressed without loss and can be decoded."""
        for number, stream in list(self.objects.items()):
            data = self.decoded(number) if isinstance(stream, Stream) else None
            if data is not None:
                kept = {key: value for key, value in stream.dictionary.items() if key not in _ENCODING}
                self.objects[number] = Stream(kept, data)

    def decoded(self, number):
        """The data of a stream without its filters, None when it cannot be decoded, or is not as it was read."""
        stream = self.objects[number]
        if b"Filter" not in stream.dictionary:
            return stream.data
        if stream.data is not self._read.get(number):
            return None
        if self._parsed is None:
            self._parsed = pikepdf.open(io.BytesIO(self._file))
        try:
            return without_filters(self._parsed.get_object(number, 0))
        except NOT_DECODED:
            return None
