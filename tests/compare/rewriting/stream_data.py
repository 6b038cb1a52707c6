"""The data of streams in other encodings (PDF 1.7, 7.4)."""
import base64
import zlib

from .values import Name, Stream, copied, integer

_FILTER, _PARMS = Name(b"Filter"), Name(b"DecodeParms")


def _streams(document):
    return [(number, value) for number, value in document.objects.items() if isinstance(value, Stream)]


def encode_anew(document, dice):
    """Takes off what can be taken off, and puts one filter of any kind on every stream without one."""
    document.decode()
    for number, stream in _streams(document):
        if _FILTER not in stream.dictionary:
            entries, data = dice.choice((flate, predicted, ascii85, ascii_hex, run_lengths, lzw))(stream.data)
            document.objects[number] = Stream({**stream.dictionary, **entries}, data)


def filters_as_arrays(document):
    for _, stream in _streams(document):
        name = document.get(stream.dictionary.get(_FILTER))
        if isinstance(name, Name):
            stream.dictionary[_FILTER] = [name]
            if _PARMS in stream.dictionary:
                stream.dictionary[_PARMS] = [stream.dictionary[_PARMS]]


def add_filter(document, dice):
    """Puts a further filter over what is there."""
    for number, stream in _streams(document):
        filters, parms = (document.get(stream.dictionary.get(key)) for key in (_FILTER, _PARMS))
        filters = filters if isinstance(filters, list) else [filters] if filters is not None else []
        parms = parms if isinstance(parms, list) else [parms] * len(filters)
        if any(document.get(name) == b"Crypt" for name in filters):
            continue
        if not filters:
            entries, data = flate(stream.data)
            filters, parms, stream = [entries[_FILTER]], [None], Stream(stream.dictionary, data)
        entries, data = dice.choice((ascii85, ascii_hex, flate))(stream.data)
        dictionary = {key: value for key, value in stream.dictionary.items() if key != _PARMS}
        dictionary[_FILTER] = [entries[_FILTER], *filters]
        if any(value is not None for value in parms):
            dictionary[_PARMS] = [None, *copied(parms)]
        document.objects[number] = Stream(dictionary, data)


def flate(data):
    return {_FILTER: Name(b"FlateDecode")}, zlib.compress(data)


def predicted(data):
    """Flate of rows, each said by its difference from the row above (7.4.4.4)."""
    columns = next(size for size in range(min(len(data), 40) or 1, 0, -1) if len(data) % size == 0)
    rows = [data[place:place + columns] for place in range(0, len(data), columns)]
    above = [bytes(columns), *rows]
    coded = b"".join(b"\2" + bytes((here - there) & 0xFF for here, there in zip(row, up))
                     for row, up in zip(rows, above))
    parms = {Name(b"Predictor"): integer(12), Name(b"Columns"): integer(columns)}
    return {_FILTER: Name(b"FlateDecode"), _PARMS: parms}, zlib.compress(coded)


def ascii85(data):
    return {_FILTER: Name(b"ASCII85Decode")}, base64.a85encode(data, wrapcol=72) + b"~>"


def ascii_hex(data):
    return {_FILTER: Name(b"ASCIIHexDecode")}, data.hex(" ", -36).encode() + b">"


def run_lengths(data):
    """Pieces of up to 128 bytes that are said as they are; repetitions as such."""
    coded = bytearray()
    place = 0
    while place < len(data):
        count = 1
        while count < 128 and data[place + count:place + count + 1] == data[place:place + 1]:
            count += 1
        if count > 1:
            coded += bytes((257 - count, data[place]))
        else:
            while count < 128 and place + count < len(data) and data[place + count] != data[place + count - 1]:
                count += 1
            coded += bytes((count - 1,)) + data[place:place + count]
        place += count
    return {_FILTER: Name(b"RunLengthDecode")}, bytes(coded) + b"\x80"


def lzw(data):
    """Every byte as a code of its own, the table cleared before codes grow longer (7.4.4.2)."""
    clear, end = 256, 257
    bits = []
    for place in range(0, len(data), 200):
        bits.append(format(clear, "09b"))
        bits += (format(byte, "09b") for byte in data[place:place + 200])
    coded = "".join(bits) + format(clear, "09b") + format(end, "09b")
    coded += "0" * (-len(coded) % 8)
    return {_FILTER: Name(b"LZWDecode")}, int(coded, 2).to_bytes(len(coded) // 8, "big")
