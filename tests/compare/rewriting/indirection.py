"""Values as objects of their own, and objects as values (PDF 1.7, 7.3.10)."""
from .values import Reference, Stream, copied, parts_of

# Arrays of glyph widths and of samples have thousands of items, all read the same way.
MOST_ITEMS = 64
# What stands for itself, and is not the same any more when it is said twice; or has to be a reference (7.7.3, 8.11.2,
# 12.3.3, 12.5.2, 12.7.2, 14.7.2), as descriptors of fonts have to be (9.8).
_STAND_ALONE = {b"Page", b"Pages", b"Catalog", b"OCG", b"Annot", b"Outlines", b"StructElem", b"StructTreeRoot", b"Sig",
                b"Bead", b"Thread", b"FontDescriptor", b"Filespec"}
_ALONE_BY_KEY = (b"Parent", b"P", b"Kids", b"Next", b"Prev", b"FT", b"First", b"StructParent")
MOST_COPIES = 4
LARGEST_COPY = 2000


# Entries of the dictionary that another (or any) entry has, which a viewer wants to find in their place.
_DIRECT = {(None, b"AS"): "mupdf gives up on the page",
           (b"AP", b"N"): "Poppler does not look for the state",
           (b"DR", b"Font"): "Poppler does not look for the font of a field"}


def make_indirect(document):
    """Every value becomes an object of its own: of dictionaries, of arrays, of the dictionaries of streams. The trailer
    stays as it is (7.5.5), and what the writer adds, which are /Length, /Type and all else of the streams for cross
    references and objects (7.5.7, 7.5.8)."""
    def pulled_out(value, entry):
        if isinstance(value, Reference):
            return value
        descend(value, entry)
        return document.add(value)

    def descend(value, entry=None):
        if isinstance(value, dict):
            for key, item in value.items():
                if (entry, key) in _DIRECT or (None, key) in _DIRECT:
                    descend(item, key)
                else:
                    value[key] = pulled_out(item, key)
        elif isinstance(value, list):
            value[:MOST_ITEMS] = [pulled_out(item, entry) for item in value[:MOST_ITEMS]]
            for item in value[MOST_ITEMS:]:
                descend(item, entry)

    for value in list(document.objects.values()):
        descend(value.dictionary if isinstance(value, Stream) else value)


def make_direct(document):
    """Every object that may be a value becomes one wherever it is referred to, a few times at most."""
    uses = {}

    def count(value):
        if isinstance(value, Reference):
            uses[value] = uses.get(value, 0) + 1
        for item in parts_of(value):
            count(item)

    for value in (document.trailer, *document.objects.values()):
        count(value)
    left = {Reference(number) for number, value in document.objects.items()
            if _stands_alone(document, value) or uses.get(number, 0) > MOST_COPIES
            or (uses.get(number, 0) > 1 and len(repr(value)) > LARGEST_COPY)}
    left |= {value for value in document.trailer.values() if isinstance(value, Reference)}

    def inlined(value, within):
        if isinstance(value, Reference):
            if value in left or value in within or value not in document.objects:
                left.add(value)
                return value
            return inlined(copied(document.objects[value]), (*within, value))
        if isinstance(value, list):
            return [inlined(item, within) for item in value]
        if isinstance(value, dict):
            return {key: inlined(item, within) for key, item in value.items()}
        return value

    for number in sorted(document.objects):
        value = document.objects[number]
        if isinstance(value, Stream):
            value.dictionary = inlined(value.dictionary, ())
        elif number in left:
            document.objects[number] = inlined(value, (Reference(number),))
    document.drop_unused()


def _stands_alone(document, value):
    if isinstance(value, Stream):
        return True
    return isinstance(value, dict) and (document.entry(value, b"Type") in _STAND_ALONE
                                        or any(key in value for key in _ALONE_BY_KEY))

