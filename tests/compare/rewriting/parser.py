"""Tokens to values (PDF 1.7, 7.3)."""
import re

from .lexer import SPACE, next_token
from .values import Delimiter, Keyword, Reference

_REFERENCE = re.compile(rb"[" + SPACE + rb"]*(\d+)[" + SPACE + rb"]+(\d+)[" + SPACE + rb"]+R(?![A-Za-z0-9])")
_KEYWORDS = {b"null": None, b"true": True, b"false": False}


class NotParsed(Exception):
    """What is there is no value."""


def parse(data, place):
    """The value at `place` and the place after it."""
    match = _REFERENCE.match(data, place)
    if match:
        return Reference(int(match.group(1))), match.end()
    token, place = next_token(data, place)
    if isinstance(token, Delimiter):
        if token == b"[":
            return _items(data, place, b"]")
        if token == b"<<":
            items, place = _items(data, place, b">>")
            return dict(zip(items[::2], items[1::2])), place
    if isinstance(token, Keyword):
        if token not in _KEYWORDS:
            raise NotParsed(token[:40])
        return _KEYWORDS[token], place
    if token is None or isinstance(token, Delimiter):
        raise NotParsed(token)
    return token, place


def _items(data, place, end):
    items = []
    while True:
        token, after = next_token(data, place)
        if token is None:
            raise NotParsed("the end of an array or a dictionary")
        if isinstance(token, Delimiter) and token == end:
            return items, after
        value, place = parse(data, place)
        items.append(value)

