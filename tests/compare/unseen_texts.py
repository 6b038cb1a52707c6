"""What objects of an original say that are seen on no page: none of it may be in a copy."""
import pikepdf

from filters import decoded
from left_out import NAMES
from object_graph import CARRIERS

SHORTEST = 8  # Bytes; shorter texts are in every file.
SAMPLE = 48  # Bytes of a stream that are looked for.
FEWEST_KINDS = 12  # Of bytes in such a sample: less is a pattern and says nothing.


def _strings_in(value, drawn=False):
    """The strings in `value`, down to references, but for those that are drawn."""
    pending = [value]
    while pending:
        value = pending.pop()
        if isinstance(value, pikepdf.String):
            yield bytes(value)
        elif isinstance(value, pikepdf.Array):
            pending += [item for item in value if not _is_reference(item)]
        elif isinstance(value, (pikepdf.Dictionary, pikepdf.Stream)):
            dictionary = value.stream_dict if isinstance(value, pikepdf.Stream) else value
            pending += [item for key, item in dictionary.items()
                        if not _is_reference(item) and not _is_drawn(dictionary, key)]


def _is_reference(value):
    return isinstance(value, pikepdf.Object) and value.is_indirect


def _is_drawn(dictionary, key):
    """Whether what `key` says is drawn: the value of a field, the text of a free text annotation."""
    if key not in NAMES["drawn"]:
        return False
    return key not in ("/Contents", "/RC") or dictionary.get("/Subtype") == pikepdf.Name.FreeText


def _sample(data):
    middle = max(0, (len(data) - SAMPLE) // 2)
    sample = data[middle:middle + SAMPLE]
    return sample if len(sample) >= SHORTEST and len(set(sample)) >= FEWEST_KINDS else None


def findings_in(original, copy, comparison):
    """What of the file `original` is in `copy` though `comparison`, which went over all pages, did not meet it."""
    unseen = {}
    for value in original.objects:
        if not isinstance(value, (pikepdf.String, pikepdf.Array, pikepdf.Dictionary, pikepdf.Stream)):
            continue
        if value.objgen in comparison.copied:
            continue
        place = "{} {} R".format(*value.objgen)
        unseen.update({text: place for text in _strings_in(value) if len(text) >= SHORTEST})
        if isinstance(value, pikepdf.Stream) and value.get("/Type") not in CARRIERS:
            sample = _sample(decoded(value))
            if sample is not None:
                unseen[sample] = place
    if not unseen:
        return []
    said = _all_of(copy)
    hits = [text for text in unseen if text in said]
    if not hits:
        return []
    seen = b"\0".join(comparison.strings) + b"\0".join(map(decoded, comparison.streams))
    return [f"the copy says what only {unseen[text]} of the original says: {text[:40]!r}" for text in hits
            if text not in seen]


def _all_of(pdf):
    """Every string and all stream data of `pdf`."""
    parts = []
    for value in pdf.objects:
        if isinstance(value, (pikepdf.String, pikepdf.Array, pikepdf.Dictionary, pikepdf.Stream)):
            parts += _strings_in(value)
        if isinstance(value, pikepdf.Stream) and value.get("/Type") not in CARRIERS:
            parts.append(decoded(value))
    return b"\0".join(parts)
