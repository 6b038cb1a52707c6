"""The page tree of a document (PDF 1.7, 7.7.3), and the streams that are contents (7.8.2)."""
from dataclasses import dataclass, field

from .document import NotRewritable
from .values import Name, Number, Reference, Stream

INHERITABLE = (Name(b"Resources"), Name(b"MediaBox"), Name(b"CropBox"), Name(b"Rotate"))


@dataclass
class Page:
    """A page with what it inherits, which is also written into its dictionary when it is said to be `settled`."""

    reference: Reference
    dictionary: dict
    inherited: dict = field(default_factory=dict)

    def settle(self):
        """Makes the page say itself what it inherits."""
        for key, value in self.inherited.items():
            self.dictionary.setdefault(key, value)
        self.inherited = {}


def pages_of(document):
    """The pages in their order. Trees that say a page twice, or lead elsewhere, are not rewritten: each tool reads
    those in a way of its own."""
    pages = []
    seen = set()

    def walk(reference, inherited, depth):
        node = document.get(reference)
        if not isinstance(reference, Reference) or not isinstance(node, dict) or reference in seen or depth > 50:
            raise NotRewritable("the page tree is damaged")
        seen.add(reference)
        kids = document.get(node.get(b"Kids"))
        if depth == 0 and not isinstance(document.get(node.get(b"Count")), Number):
            raise NotRewritable("the page tree does not count")
        if kids is None and depth > 0:
            pages.append(Page(reference, node, {key: value for key, value in inherited.items() if key not in node}))
            return
        if not isinstance(kids, list):
            raise NotRewritable("the page tree is damaged")
        passed_on = {**inherited, **{key: node[key] for key in INHERITABLE if key in node}}
        for kid in kids:
            walk(kid, passed_on, depth + 1)

    walk(_catalog(document).get(b"Pages"), {}, 0)
    if not pages:
        raise NotRewritable("there are no pages")
    return pages


def _catalog(document):
    catalog = document.get(document.trailer.get(b"Root"))
    if not isinstance(catalog, dict):
        raise NotRewritable("there is no catalog")
    return catalog


def set_root(document, node):
    """Makes `node` the root of the page tree."""
    _catalog(document)[Name(b"Pages")] = node


def contents_of(document, page):
    """The numbers of the streams that are a page's contents."""
    contents = page.dictionary.get(b"Contents")
    if isinstance(document.get(contents), list):
        parts = document.get(contents)
    else:
        parts = [contents]
    numbers = [_stream_number(document, part) for part in parts]
    return [number for number in numbers if number is not None]


def _stream_number(document, value):
    """The number of the stream that `value` leads to."""
    while isinstance(value, Reference):
        target = document.objects.get(value)
        if isinstance(target, Stream):
            return int(value)
        value = target if isinstance(target, Reference) else None
    return None


def content_streams(document, pages):
    """The numbers of all streams that hold operators: contents of pages, forms, tiling patterns, glyphs of Type 3."""
    numbers = {number for page in pages for number in contents_of(document, page)}
    for number, value in list(document.objects.items()):
        if isinstance(value, Stream):
            is_form = document.entry(value, b"Subtype") == b"Form" and b"BBox" in value.dictionary
            is_tiling = b"PatternType" in value.dictionary and document.entry(value, b"PatternType") == b"1"
            if is_form or is_tiling:
                numbers.add(number)
        elif isinstance(value, dict) and document.entry(value, b"Subtype") == b"Type3":
            glyphs = document.entry(value, b"CharProcs")
            numbers |= {_stream_number(document, glyph) for glyph in glyphs.values()} if isinstance(glyphs, dict) else set()
    return sorted(numbers - {None})


def takes_resources_of_pages(document):
    """Whether a form, a pattern or a font has no resources of its own, and so finds those of the page (7.8.3)."""
    for value in document.objects.values():
        dictionary = value.dictionary if isinstance(value, Stream) else value
        if isinstance(dictionary, dict) and document.entry(dictionary, b"Resources") is None and (
                document.entry(dictionary, b"Subtype") in (b"Form", b"Type3")
                or document.entry(dictionary, b"PatternType") == b"1"):
            return True
    return False

