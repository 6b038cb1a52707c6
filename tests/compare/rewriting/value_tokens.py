"""Values to tokens: what an object of a file is made of."""
from .values import Delimiter, Name, Number, Reference, Word

# Entries whose numbers, also those in an array, may be real ones.
_REAL_ENTRIES = frozenset((
    b"MediaBox", b"CropBox", b"BleedBox", b"TrimBox", b"ArtBox", b"Rect", b"BBox", b"Matrix", b"FontBBox",
    b"FontMatrix", b"Domain", b"Range", b"C0", b"C1", b"Bounds", b"Encode", b"Decode", b"Coords", b"WhitePoint",
    b"BlackPoint", b"Gamma", b"Widths", b"XStep", b"YStep", b"CA", b"ca", b"LW", b"ML", b"ItalicAngle", b"Ascent",
    b"Descent", b"CapHeight", b"StemV", b"UserUnit", b"QuadPoints", b"L", b"InkList", b"Vertices"))


def tokens_of(value, numbers, may_be_real=False):
    """The tokens of `value`; `numbers` gives number and generation of the object that a reference leads to."""
    tokens = []
    _append(tokens, value, numbers, may_be_real)
    return tokens


def _append(tokens, value, numbers, may_be_real):
    if isinstance(value, dict):
        tokens.append(Delimiter(b"<<"))
        for key, item in value.items():
            tokens.append(Name(key))
            _append(tokens, item, numbers, key in _REAL_ENTRIES)
        tokens.append(Delimiter(b">>"))
    elif isinstance(value, list):
        tokens.append(Delimiter(b"["))
        for item in value:
            _append(tokens, item, numbers, may_be_real)
        tokens.append(Delimiter(b"]"))
    elif isinstance(value, Reference):
        if value in numbers:
            number, generation = numbers[value]
            tokens += (Word(b"%d" % number), Word(b"%d" % generation), Word(b"R"))
        else:
            tokens.append(Word(b"null"))  # As a reference to nothing is (7.3.10).
    elif isinstance(value, Number):
        tokens.append((value, may_be_real))
    elif isinstance(value, bool):
        tokens.append(Word(b"true" if value else b"false"))
    else:
        tokens.append(Word(b"null") if value is None else value)
