"""What streams say once their filters are off, with a limit, for filters one after the other make terabytes of a few
bytes."""
import pikepdf

MOST_BETWEEN_FILTERS = 16 * 1024 * 1024  # Bytes.
NOT_DECODED = (pikepdf.PdfError, pikepdf.DataDecodingError, MemoryError)
_LEVEL = pikepdf.StreamDecodeLevel.specialized


def decoded(stream):
    """The data of `stream` without filters that lose nothing; as it is where that cannot be, or is too much."""
    try:
        return without_filters(stream)
    except NOT_DECODED:
        return stream.read_raw_bytes()


def without_filters(stream):
    """As `decoded`, but with one of the errors `NOT_DECODED` where it cannot be or is too much."""
    filters = stream.get("/Filter")
    if not isinstance(filters, pikepdf.Array) or len(filters) < 2:
        return stream.read_bytes(decode_level=_LEVEL)
    parameters = stream.get("/DecodeParms")
    parameters = list(parameters) if isinstance(parameters, pikepdf.Array) else [parameters]
    data = stream.read_raw_bytes()
    scratch = pikepdf.new()
    for index, name in enumerate(filters):
        if len(data) > MOST_BETWEEN_FILTERS:
            raise MemoryError
        one = pikepdf.Stream(scratch, data)
        one.Filter = pikepdf.Name(str(name))
        own = parameters[index] if index < len(parameters) else None
        if isinstance(own, pikepdf.Dictionary):  # Of the filters that lose nothing all take numbers alone.
            one.DecodeParms = pikepdf.Dictionary({key: item for key, item in own.items() if isinstance(item, int)})
        data = one.read_bytes(decode_level=_LEVEL)
    return data
