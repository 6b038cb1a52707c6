"""Page trees of other shapes (PDF 1.7, 7.7.3.2 to 7.7.3.4)."""
from .pages import INHERITABLE, pages_of, set_root
from .values import Name, copied, integer

LEVELS = 30
_BOX = [integer(side) for side in (0, 0, 612, 792)]
# What the nodes at the top say, and those below say otherwise.
_DECOYS = {Name(b"MediaBox"): [integer(side) for side in (0, 0, 70, 90)],
           Name(b"CropBox"): [integer(side) for side in (10, 10, 40, 50)], Name(b"Rotate"): integer(90),
           Name(b"Resources"): {}}


def _node(document, kids, count):
    reference = document.add({Name(b"Type"): Name(b"Pages"), Name(b"Kids"): kids, Name(b"Count"): integer(count)})
    for kid in kids:
        document.get(kid)[Name(b"Parent")] = reference
    return reference


def flatten(document):
    pages = pages_of(document)
    for page in pages:
        page.settle()
    root = _node(document, [page.reference for page in pages], len(pages))
    set_root(document, root)
    document.drop_unused()


def deepen(document):
    pages = pages_of(document)
    groups = []
    for page in pages:
        page.settle()
        said = {key: page.dictionary.pop(key) for key in INHERITABLE if key in page.dictionary}
        said.setdefault(Name(b"MediaBox"), list(_BOX))
        said.setdefault(Name(b"CropBox"), copied(said[b"MediaBox"]))
        said.setdefault(Name(b"Rotate"), integer(0))
        said.setdefault(Name(b"Resources"), {})
        if groups and groups[-1][0] == said:
            groups[-1][1].append(page)
        else:
            groups.append((said, [page]))
    tops = [(_branch(document, said, [page.reference for page in group]), len(group)) for said, group in groups]
    root = _node(document, [top for top, _ in tops], len(pages))
    document.get(root).update(copied(_DECOYS))
    set_root(document, root)
    document.drop_unused()


def _branch(document, said, kids):
    """A chain of nodes down to `kids`, on which what they inherit is said at different levels."""
    count = len(kids)
    node = _node(document, kids, count)
    where = dict(zip(range(3, LEVELS, LEVELS // len(said)), said.items()))
    for level in range(1, LEVELS - 1):
        node = _node(document, [node], count)
        if level in where:
            key, value = where[level]
            document.get(node)[key] = value
    return node
