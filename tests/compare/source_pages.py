"""The pages of a file as a viewer finds them: the page tree walked by hand, with what pages inherit."""
from dataclasses import dataclass

import pikepdf

INHERITED = ("/Resources", "/MediaBox", "/CropBox", "/Rotate")


@dataclass
class SourcePage:
    """A page: its dictionary, and the attributes that hold for it, its own or inherited."""

    dictionary: object
    attributes: dict

    @property
    def resources(self):
        return self.attributes.get("/Resources")

    def content_streams(self):
        contents = self.dictionary.get("/Contents")
        if isinstance(contents, pikepdf.Stream):
            return [contents]
        if isinstance(contents, pikepdf.Array):
            return [item for item in contents if isinstance(item, pikepdf.Stream)]
        return []


def _with_own(dictionary, inherited):
    attributes = dict(inherited)
    attributes.update({key: dictionary.get(key) for key in INHERITED if dictionary.get(key) is not None})
    return attributes


def pages_of(pdf):
    """The pages of `pdf` in order. A lost page counts as one, empty."""
    root = pdf.Root.get("/Pages")
    climbed = set()
    while isinstance(root, pikepdf.Dictionary) and isinstance(root.get("/Parent"), pikepdf.Dictionary) \
            and root.objgen not in climbed:
        climbed.add(root.objgen)
        root = root.get("/Parent")
    if not isinstance(root, pikepdf.Dictionary):
        return []
    if not isinstance(root.get("/Kids"), pikepdf.Array):
        return [SourcePage(root, _with_own(root, {}))] if root.get("/Type") == pikepdf.Name.Page else []
    pages = []
    visited = {root.objgen}
    path = [(iter(root.Kids), _with_own(root, {}))]
    while path:
        kids, inherited = path[-1]
        try:
            kid = next(kids)
        except StopIteration:
            path.pop()
            continue
        if not isinstance(kid, pikepdf.Dictionary):
            kid = pikepdf.Dictionary()
        if not isinstance(kid.get("/Kids"), pikepdf.Array):
            pages.append(SourcePage(kid, _with_own(kid, inherited)))
        elif not kid.is_indirect or kid.objgen not in visited:
            visited.add(kid.objgen)
            path.append((iter(kid.Kids), _with_own(kid, inherited)))
    return pages
