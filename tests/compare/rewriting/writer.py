"""Objects to a file: its body, its cross references, and updates of it (PDF 1.7, 7.5)."""
import zlib
from dataclasses import dataclass

from .pages import pages_of
from .values import Delimiter, Name, Reference, Stream, Word, integer
from .value_tokens import tokens_of

OBJECTS_A_STREAM = 60


@dataclass
class Layout:
    """How a file is put together."""

    object_streams: bool = False
    updates: int = 0
    line_end: bytes = b"\n"
    text_around: bool = False


class _Writer:
    def __init__(self, document, numbers, syntax, layout):
        self._document, self._numbers, self._syntax, self._layout = document, numbers, syntax, layout
        self._parts = []
        self._size = 0
        self._next = max((number for number, _ in numbers.values()), default=0) + 1
        self._previous = None
        self._line_end = layout.line_end

    def add(self, data):
        self._parts.append(data)
        self._size += len(data)

    def value(self, value):
        return self._syntax.write(tokens_of(value, self._numbers))

    def object(self, number, generation, value):
        """Writes an object and gives its place."""
        place = self._size
        end = self._line_end
        self.add(b"%d %d obj" % (number, generation) + end)
        if isinstance(value, Stream):
            dictionary = {**value.dictionary, Name(b"Length"): integer(len(value.data))}
            self.add(self.value(dictionary) + end + b"stream" + (b"\n" if end == b"\n" else b"\r\n"))
            self.add(value.data)
        else:
            self.add(self.value(value))
        is_stream = isinstance(value, Stream)
        self.add(end + (b"endstream" + end if is_stream else b"") + b"endobj" + end)
        return place

    def section(self, objects):
        """Writes objects, given by their numbers in the document, and the cross references to them."""
        entries = {}
        in_streams = []
        for known in sorted(objects, key=lambda known: self._numbers[known]):
            number, generation = self._numbers[known]
            value = objects[known]
            may_be_in_one = generation == 0 and not isinstance(value, Stream) and \
                self._document.trailer.get(b"Encrypt") != Reference(known)
            if self._layout.object_streams and may_be_in_one:
                in_streams.append((number, value))
            else:
                entries[number] = (1, self.object(number, generation, value), generation)
        for start in range(0, len(in_streams), OBJECTS_A_STREAM):
            self._object_stream(in_streams[start:start + OBJECTS_A_STREAM], entries)
        self._cross_references(entries)

    def _object_stream(self, objects, entries):
        number = self._next
        self._next += 1
        head, body = [], b""
        for index, (contained, value) in enumerate(objects):
            head.append(b"%d %d" % (contained, len(body)))
            body += self.value(value) + self._line_end
            entries[contained] = (2, number, index)
        head = self._line_end.join(head) + self._line_end
        dictionary = {b"Type": Name(b"ObjStm"), b"N": integer(len(objects)), b"First": integer(len(head)),
                      b"Filter": Name(b"FlateDecode")}
        entries[number] = (1, self._plain_stream(number, dictionary, zlib.compress(head + body)), 0)

    def _plain_stream(self, number, dictionary, data):
        """A stream of the file's own, whose dictionary has no references and plain numbers."""
        place = self._size
        tokens = [Delimiter(b"<<")]
        for key, value in {**dictionary, b"Length": integer(len(data))}.items():
            tokens.append(Name(key))
            tokens += (Word(token[0]) if isinstance(token, tuple) else token
                       for token in tokens_of(value, self._numbers))
        text = self._syntax.write([*tokens, Delimiter(b">>")])
        end = self._line_end
        self.add(b"%d 0 obj" % number + end + text + end + b"stream" + (b"\n" if end == b"\n" else b"\r\n") + data + end
                 + b"endstream" + end + b"endobj" + end)
        return place

    def _cross_references(self, entries):
        is_first = self._previous is None
        trailer = dict(self._document.trailer)
        if self._previous is not None:
            trailer[Name(b"Prev")] = integer(self._previous)
        start = self._size
        if self._layout.object_streams:
            number = self._next
            self._next += 1
            entries[number] = (1, start, 0)
            self._reference_stream(number, entries, trailer, is_first)
        else:
            self._table(entries, trailer, is_first)
        self._previous = start
        end = self._line_end
        self.add(b"startxref" + end + b"%d" % start + end + b"%%EOF" + end)

    def _with_free_entries(self, entries):
        """The entries of a first section: every number from 0 on, those not in use in their list (7.5.4)."""
        free = [number for number in range(max(entries, default=0) + 1) if number not in entries]
        following = dict(zip(free, [*free[1:], 0]))
        return {**entries, **{number: (0, following[number], 65535 if number == 0 else 1) for number in free}}

    def _table(self, entries, trailer, is_first):
        if is_first:
            entries = self._with_free_entries(entries)
        end = self._line_end
        lines = [b"xref" + end]
        for group in _runs(sorted(entries)):
            lines.append(b"%d %d" % (group[0], len(group)) + end)
            for number in group:
                kind, place, generation = entries[number]
                # An entry is 20 bytes, its end of line two of them.
                lines.append(b"%010d %05d %c" % (place, generation, b"fn"[kind]) + (b" " + end)[-2:])
        self.add(b"".join(lines) + b"trailer" + end)
        self.add(self._dictionary({**trailer, Name(b"Size"): integer(self._next)}) + end)

    def _dictionary(self, trailer):
        tokens = tokens_of(trailer, self._numbers)
        return self._syntax.write([Word(token[0]) if isinstance(token, tuple) else token for token in tokens])

    def _reference_stream(self, number, entries, trailer, is_first):
        if is_first:
            entries = self._with_free_entries(entries)
        index = [integer(side) for group in _runs(sorted(entries)) for side in (group[0], len(group))]
        data = b"".join(bytes((kind,)) + place.to_bytes(4, "big") + generation.to_bytes(2, "big")
                        for _, (kind, place, generation) in sorted(entries.items()))
        dictionary = {b"Type": Name(b"XRef"), b"Size": integer(self._next), b"W": [integer(1), integer(4), integer(2)],
                      b"Index": index, b"Filter": Name(b"FlateDecode"), **trailer}
        self._plain_stream(number, dictionary, zlib.compress(data))

    def bytes(self):
        return b"".join(self._parts)


def _runs(numbers):
    runs = []
    for number in numbers:
        if runs and runs[-1][-1] == number - 1:
            runs[-1].append(number)
        else:
            runs.append([number])
    return runs


def write(document, numbers, syntax, layout):
    """The file as bytes. With updates, each of its states but the last has pages that nobody should see any more."""
    writer = _Writer(document, numbers, syntax, layout)
    end = layout.line_end
    version = max(document.version, b"1.5") if layout.object_streams else document.version
    writer.add(b"%PDF-" + version + end + b"%\xe2\xe3\xcf\xd3" + end)
    pages = {int(page.reference): page.dictionary for page in pages_of(document)} if layout.updates else {}
    for update in range(layout.updates + 1):
        objects = pages if update else document.objects
        is_last = update == layout.updates
        writer.section({number: _outdated(value, update) if number in pages and not is_last else value
                        for number, value in objects.items()})
    data = writer.bytes()
    return around(data) if layout.text_around else data


def _outdated(page, update):
    """An earlier state of a page: other boxes, another turn, no contents."""
    earlier = {key: value for key, value in page.items() if key not in (b"Contents", b"CropBox", b"Annots")}
    earlier[Name(b"MediaBox")] = [integer(side) for side in (0, 0, 50 + update, 70)]
    earlier[Name(b"Rotate")] = integer(90)
    return earlier


def around(data):
    """The file with text before its header, from which its places still count, and after its end."""
    return b"Content-Type: application/pdf\r\n\r\n" + data + b"\r\n--a line of whoever sent this--\r\n"
