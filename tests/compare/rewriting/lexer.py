"""Bytes to tokens (PDF 1.7, 7.2)."""
import re

from .values import Delimiter, InlineImage, Keyword, Name, Number, String

SPACE = rb"\0\t\n\f\r "
REGULAR = rb"[^\0\t\n\f\r ()<>\[\]{}/%]"
_TOKEN = re.compile(rb"(?P<space>[" + SPACE + rb"]+|%[^\r\n]*)|/(?P<name>" + REGULAR + rb"*)|(?P<delimiter><<|>>|[\[\]])"
                    rb"|<(?P<hex>[^>]*)>|(?P<string>\()|(?P<word>" + REGULAR + rb"+)|(?P<stray>.)", re.S)
_NUMBER = re.compile(rb"[+-]?(\d+\.?\d*|\.\d+)\Z")
_HASH = re.compile(rb"#([0-9A-Fa-f]{2})")
_IN_STRING = re.compile(rb"[()\\]|\r\n?")
_ESCAPE = re.compile(rb"\\([0-7]{1,3}|\r\n|.)", re.S)
_ESCAPED = {b"n": b"\n", b"r": b"\r", b"t": b"\t", b"b": b"\b", b"f": b"\f", b"\n": b"", b"\r": b"", b"\r\n": b""}
# Data of an inline image ends before an EI that stands alone and is followed by what may be content.
_END_OF_IMAGE = re.compile(rb"[" + SPACE + rb"]EI(?=[" + SPACE + rb"][\t\n\f\r -~]{0,12}|\Z)")


def name_in(text):
    return Name(_HASH.sub(lambda match: bytes([int(match.group(1), 16)]), text))


def _hex_string(text):
    digits = re.sub(rb"[^0-9A-Fa-f]", b"", text)
    return String(bytes.fromhex((digits + b"0" * (len(digits) % 2)).decode()))


def _end_of_string(data, place):
    """The place after the string whose opening parenthesis lies before `place`."""
    depth = 1
    while depth:
        match = _IN_STRING.search(data, place)
        if not match:
            return len(data) + 1
        place = match.end()
        if match.group() == b"(":
            depth += 1
        elif match.group() == b")":
            depth -= 1
        elif match.group() == b"\\":
            place += 1
    return place


def _literal_string(text):
    def unescaped(match):
        escape = match.group(1)
        if escape[:1] in b"01234567":
            return bytes([int(escape, 8) & 0xFF])
        return _ESCAPED.get(escape, escape)

    # An end of line in a string is a line feed, however it is written; a backslash before it takes it away.
    parts = re.split(rb"(\\(?:[0-7]{1,3}|\r\n|.))", text, flags=re.S)
    return String(b"".join(_ESCAPE.sub(unescaped, part) if index % 2 else re.sub(rb"\r\n?", b"\n", part)
                           for index, part in enumerate(parts)))


def next_token(data, place):
    """The token at or after `place` and the place after it; None at the end."""
    while place < len(data):
        match = _TOKEN.match(data, place)
        place = match.end()
        kind = match.lastgroup
        text = match.group(kind)
        if kind == "space":
            continue
        if kind == "name":
            return name_in(text), place
        if kind == "delimiter":
            return Delimiter(text), place
        if kind == "hex":
            return _hex_string(text), place
        if kind == "string":
            end = _end_of_string(data, place)
            return _literal_string(data[place:end - 1]), min(end, len(data))
        return (Number(text) if _NUMBER.match(text) else Keyword(text)), place
    return None, place


def content_tokens(data):
    """Pairs of each token of a content stream and the place where it ends."""
    tokens = []
    place = 0
    while True:
        token, place = next_token(data, place)
        if token is None:
            return tokens
        if isinstance(token, Keyword) and token == b"BI":
            start = place - len(token)
            dictionary = re.compile(rb"[" + SPACE + rb">\])]ID[" + SPACE + rb"]").search(data, place)
            end = _END_OF_IMAGE.search(data, dictionary.end() - 1) if dictionary else None
            place = end.end() if end else len(data)
            token = InlineImage(data[start:place])
        tokens.append((token, place))
