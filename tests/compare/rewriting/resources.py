"""Resources of pages, one dictionary for all or a set for each (PDF 1.7, 7.8.3)."""
from .document import NotRewritable
from .lexer import content_tokens
from .pages import contents_of, pages_of, takes_resources_of_pages
from .syntax import Syntax
from .values import Delimiter, InlineImage, Keyword, Name, Number, Stream, copied

# The category in which an operator looks up the name before it.
_CATEGORIES = {b"Tf": b"Font", b"Do": b"XObject", b"gs": b"ExtGState", b"cs": b"ColorSpace", b"CS": b"ColorSpace",
               b"scn": b"Pattern", b"SCN": b"Pattern", b"sh": b"Shading", b"BDC": b"Properties", b"DP": b"Properties"}
_NAMELESS = (b"ProcSet",)
# Color spaces that are used without being named.
_IMPLIED = (b"DefaultGray", b"DefaultRGB", b"DefaultCMYK")


def give_each_page_its_own(document):
    """A page has dictionaries of its own, and its own fonts and states. What is a stream, or a layer that is switched,
    stays the one it is."""
    for page in pages_of(document):
        page.settle()
        resources = {}
        for category, names in (document.get(page.dictionary.get(b"Resources")) or {}).items():
            names = copied(document.get(names))
            if isinstance(names, dict):
                names = {name: _own(document, value) for name, value in names.items()}
            resources[category] = names
        page.dictionary[Name(b"Resources")] = document.add(resources)


def _own(document, value):
    target = document.get(value)
    if not isinstance(target, dict) or document.entry(target, b"Type") in (b"OCG", b"OCMD") or target is value:
        return value
    return document.add(copied(target))


def share(document):
    """All pages have the same dictionary. Where two mean different things by a name, one of them gets another, in its
    contents as well."""
    if takes_resources_of_pages(document):
        raise NotRewritable("a form, pattern or font takes the resources of its page")
    shared = {}
    renamed_of = []
    pages = pages_of(document)
    for page in pages:
        page.settle()
        renamed = {}
        for category, names in (document.get(page.dictionary.get(b"Resources")) or {}).items():
            names = document.get(names)
            if category in _NAMELESS or not isinstance(names, dict):
                shared.setdefault(category, names)
                continue
            known = shared.setdefault(category, {})
            for name, value in names.items():
                new_name = _free_name(known, name, value)
                if new_name != name:
                    renamed[category, name] = new_name
                known[new_name] = value
        if any(name in _IMPLIED for _, name in renamed):
            raise NotRewritable("pages differ in a color space that is never named")
        renamed_of.append(renamed)
    _check_nothing_is_added(pages, shared)
    reference = document.add(shared)
    for page, renamed in zip(pages, renamed_of):
        page.dictionary[Name(b"Resources")] = reference
        if renamed:
            page.dictionary[Name(b"Contents")] = document.add(Stream({}, _renamed(document, page, renamed)))


def _free_name(known, name, value):
    candidate, number = name, 0
    while candidate in known and known[candidate] != value:
        number += 1
        candidate = Name(name + b"_%d" % number)
    return candidate


def _check_nothing_is_added(pages, shared):
    """A page that had no such color space must not get one."""
    if len(pages) > 1 and any(name in _IMPLIED for name in shared.get(b"ColorSpace", {})):
        raise NotRewritable("pages may differ in a color space that is never named")


def _renamed(document, page, renamed):
    parts = [document.decoded(number) for number in contents_of(document, page)]
    if None in parts:
        raise NotRewritable("the contents cannot be decoded")
    tokens = [token for token, _ in content_tokens(b"\n".join(parts))]
    depth = 0
    last_name = None
    written = []
    for token in tokens:
        if isinstance(token, InlineImage) and any(category == b"ColorSpace" for category, _ in renamed):
            raise NotRewritable("an inline image may name a color space")
        if isinstance(token, Delimiter):
            depth += 1 if token in (b"<<", b"[") else -1
        elif isinstance(token, Name) and depth == 0:
            last_name = len(written)
        elif isinstance(token, Keyword) and depth <= 0:
            category = _CATEGORIES.get(token)
            if category and last_name is not None:
                old = written[last_name]
                written[last_name] = renamed.get((category, old), old)
            last_name, depth = None, 0
        written.append((token, False) if isinstance(token, Number) else token)
    return Syntax().write(written)
