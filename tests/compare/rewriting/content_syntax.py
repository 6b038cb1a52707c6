"""The contents of pages, forms, patterns and glyphs in the notation wanted."""
import zlib

from .lexer import content_tokens
from .pages import content_streams, pages_of
from .values import Delimiter, Keyword, Name, Number, Stream

# Operators whose operand is an integer (PDF 1.7, 8.4.4, 9.3.1).
_OF_INTEGERS = (b"J", b"j", b"Tr")


def write_contents(document, syntax, compresses):
    """With `compresses` every second stream is compressed, so that data comes both ways."""
    for index, number in enumerate(content_streams(document, pages_of(document))):
        data = document.decoded(number)
        if data is None:
            continue
        data = syntax.write(_with_kinds_of_numbers([token for token, _ in content_tokens(data)]))
        dictionary = {key: value for key, value in document.objects[number].dictionary.items()
                      if key not in (b"Filter", b"DecodeParms")}
        if compresses and index % 2:
            dictionary[Name(b"Filter")] = Name(b"FlateDecode")
            data = zlib.compress(data)
        document.objects[number] = Stream(dictionary, data)


def _with_kinds_of_numbers(tokens):
    """Each number with whether it may be a real one: as an operand, and in no dictionary."""
    written, operands = [], []
    depth = 0
    for token in tokens:
        if isinstance(token, Delimiter):
            depth += {b"<<": 1, b">>": -1}.get(bytes(token), 0)
        if isinstance(token, Number):
            operands.append((len(written), depth))
        elif isinstance(token, Keyword):
            for place, inside in operands:
                written[place] = (written[place][0], inside <= 0 and token not in _OF_INTEGERS)
            operands, depth = [], 0
        written.append((token, False) if isinstance(token, Number) else token)
    return written
