"""The values of a PDF file (PDF 1.7, 7.3) and the tokens that are no values.

null, booleans, arrays and dictionaries are None, bool, list and dict; the keys of a dict are of type Name."""
from dataclasses import dataclass, field


class Name(bytes):
    """A name without its solidus, every #xx decoded."""


class String(bytes):
    """What a string says, whichever way it was written."""


class Number(bytes):
    """A number in its own notation."""

    @property
    def is_integer(self):
        return b"." not in self


class Reference(int):
    """A reference to the object of that number in the document. Numbers in a file are given when it is written."""


class Keyword(bytes):
    """An operator of a content stream, or what is no token of PDF at all and is left as it is."""


class Word(bytes):
    """A word of the syntax of files: true, R, the numbers of a reference."""


class Delimiter(bytes):
    """One of [ ] << >>."""


class InlineImage(bytes):
    """An inline image from BI to EI, left as it is but for the names before its data."""


@dataclass
class Stream:
    """A stream; `data` is encoded as its dictionary says."""

    dictionary: dict = field(default_factory=dict)
    data: bytes = b""


def integer(value):
    return Number(b"%d" % value)


def copied(value):
    """`value` with lists and dictionaries of its own, all the way down to references and streams."""
    if isinstance(value, list):
        return [copied(item) for item in value]
    if isinstance(value, dict):
        return {key: copied(item) for key, item in value.items()}
    return value


def parts_of(value):
    """The values in `value`, down to references."""
    if isinstance(value, Stream):
        value = value.dictionary
    return value.values() if isinstance(value, dict) else value if isinstance(value, list) else ()
