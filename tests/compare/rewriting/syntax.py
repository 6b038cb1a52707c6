"""Tokens to bytes, in the notation wanted (PDF 1.7, 7.2 to 7.3)."""
import random
from dataclasses import dataclass, field

from . import notation
from .values import InlineImage, Keyword, Name, String

_SPACES = (b" ", b"\n", b"\r", b"\r\n", b"\t", b"\f", b"\0", b"  \n ", b"\r\r", b"\n\n")
_COMMENTS = (b"%", b"% a remark", b"%(not a string", b"%<</Not/A>>]", b"%%0 0 R \\)", b"%\xe4\xff\x80")
_DELIMITING = frozenset(b"\0\t\n\f\r ()<>[]{}/%")


@dataclass
class Syntax:
    """The notation wanted. With nothing said, tokens come out plain."""

    seed: int = 0
    hashes_names: bool = False
    strings: str = "plain"  # Or "hex", "literal".
    odd_numbers: bool = False
    comments: bool = False
    line_end: bytes = b"\n"
    dice: random.Random = field(init=False)

    def __post_init__(self):
        self.dice = random.Random(self.seed)

    @property
    def is_plain(self):
        return not (self.hashes_names or self.odd_numbers or self.comments) and self.strings == "plain" and \
            self.line_end == b"\n"

    def write(self, tokens):
        """The bytes of `tokens`. A number is a pair of it and whether a real one may stand there."""
        parts = []
        before = b""
        for token in tokens:
            text = self._text(token)
            parts += (self._between(before, text), text)
            before = text
            if isinstance(token, InlineImage):
                parts.append(self.line_end)  # mupdf looks for the end of the data by the space after it.
                before = b""
            elif not self.comments and (isinstance(token, Keyword) or token == b">>"):
                parts.append(self.line_end)
                before = b""
        return b"".join(parts)

    def _text(self, token):
        if isinstance(token, tuple):
            number, may_be_real = token
            if not self.odd_numbers:
                return bytes(number)
            is_odd_real = may_be_real or not number.is_integer
            return notation.odd_real(number, self.dice) if is_odd_real else notation.odd_integer(number, self.dice)
        if isinstance(token, Name):
            return notation.hash_name(token, self.dice) if self.hashes_names else notation.plain_name(token)
        if isinstance(token, String):
            if self.strings == "plain":
                return notation.plain_string(token)
            write = notation.hex_string if self.strings == "hex" else notation.literal_string
            return write(token, self.dice)
        return bytes(token)

    def _between(self, before, after):
        is_needed = before and before[-1] not in _DELIMITING and after[:1] and after[0] not in _DELIMITING
        if not self.comments:
            return b" " if is_needed else b""
        if self.dice.random() < 0.25:
            lead = self.dice.choice(_SPACES) if self.dice.random() < 0.5 else b""
            return lead + self.dice.choice(_COMMENTS) + self.dice.choice((b"\n", b"\r", b"\r\n"))
        if not is_needed and self.dice.random() < 0.3:
            return b""
        return b"".join(self.dice.choice(_SPACES) for _ in range(self.dice.choice((1, 1, 2))))
