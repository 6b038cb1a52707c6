"""How a name, a string or a number may be written (PDF 1.7, 7.3.3 to 7.3.5); chosen among with the dice given."""
_REGULAR = frozenset(range(0x21, 0x7F)) - frozenset(b"#()<>[]{}/%")
_ESCAPED = {0x0A: b"\\n", 0x0D: b"\\r", 0x09: b"\\t", 0x08: b"\\b", 0x0C: b"\\f", 0x28: b"\\(", 0x29: b"\\)",
            0x5C: b"\\\\"}
_MEANT_AFTER_A_BACKSLASH = frozenset(b"nrtbf01234567()\\\r\n")


def plain_name(value):
    return b"/" + b"".join(b"%c" % byte if byte in _REGULAR else b"#%02x" % byte for byte in value)


def hash_name(value, dice):
    return b"/" + b"".join(b"#%02X" % byte if dice.random() < 0.5 else b"#%02x" % byte for byte in value)


def plain_string(value):
    return b"(" + b"".join(_ESCAPED.get(byte, b"%c" % byte) for byte in value) + b")"


def hex_string(value, dice):
    digits = "".join(format(byte, "02x" if dice.random() < 0.5 else "02X") for byte in value)
    if digits.endswith("0") and dice.random() < 0.5:
        digits = digits[:-1]  # A digit that is missing at the end is 0.
    if dice.random() < 0.3:
        place = dice.randrange(len(digits) + 1)
        digits = digits[:place] + dice.choice((" ", "\n", "\t")) + digits[place:]
    return b"<" + digits.encode() + b">"


def literal_string(value, dice):
    """Each byte in one of the ways there are, with lines that go on in between. It is written from its end, since what
    may be said depends on what follows. A line feed never becomes another end of line: some readers keep that."""
    balanced = {place for pair in _pairs_of_parentheses(value) if dice.random() < 0.5 for place in pair}
    text = b""
    parts = []
    for index in range(len(value) - 1, -1, -1):
        byte = value[index]
        ways = [b"\\%03o" % byte, _ESCAPED.get(byte, b"%c" % byte)]
        if byte == 0x0A:
            ways.append(b"\n")
        if byte not in _MEANT_AFTER_A_BACKSLASH:
            ways.append(b"\\%c" % byte)
        if not text[:1].isdigit():
            ways.append(b"\\%o" % byte)
        if index in balanced:
            ways = [b"%c" % byte]
        text = dice.choice(ways)
        parts.append(text)
        if dice.random() < 0.1:
            text = dice.choice((b"\\\n", b"\\\r", b"\\\r\n") if not text.startswith(b"\n") else (b"\\\n", b"\\\r\n"))
            parts.append(text)
    return b"(" + b"".join(reversed(parts)) + b")"


def _pairs_of_parentheses(value):
    """The places of those that may stand without a backslash, if both of a pair do."""
    open_ones, pairs = [], []
    for index, byte in enumerate(value):
        if byte == 0x28:
            open_ones.append(index)
        elif byte == 0x29 and open_ones:
            pairs.append((open_ones.pop(), index))
    return pairs


def odd_integer(value, dice):
    sign = b"-" if value.startswith(b"-") else dice.choice((b"+", b""))
    return sign + b"0" * dice.randrange(3) + (value.lstrip(b"+-").lstrip(b"0") or b"0")


def odd_real(value, dice):
    """A number with a point in it: `.5`, `4.`, `+1.0`, `-00.50`."""
    sign = b"-" if value.startswith(b"-") else dice.choice((b"+", b""))
    whole, _, part = value.lstrip(b"+-").partition(b".")
    whole, part = whole.lstrip(b"0"), part.rstrip(b"0")
    if not part:
        return sign + (whole or b"0") + dice.choice((b".", b".0", b".00"))
    return sign + b"0" * dice.randrange(3) + whole + b"." + part + b"0" * dice.randrange(3)
