#!/usr/bin/python3
"""Holds a stamped copy against its original object by object, with no renderer between.

Usage: same_objects.py ORIGINAL COPY

Follows every page of the original and the form that stands for it in the copy side by side, from resources and content
down every reference, and prints each value that can be seen and is not the same, with the path to it. What is left out
on purpose is listed in left_out.tsv, with the reasons. Exit code 1 when there is any finding.
"""
import sys

import pikepdf

import object_graph
import unseen_texts
from object_comparison import Comparison
from source_pages import pages_of

MOST_FINDINGS = 20
HIDDEN, NO_VIEW = 2, 32  # Bits of an annotation's /F.
NOT_DRAWN = "/Popup"


def findings(original_path, copy_path):
    """What the copy at `copy_path` says differently, a line each; empty when it is the same."""
    with _opened(original_path) as original, _opened(copy_path) as copy:
        found = _findings(original, copy)
    found += object_graph.findings_in(copy_path)
    return found[:MOST_FINDINGS] + ([f"and {len(found) - MOST_FINDINGS} more"] if len(found) > MOST_FINDINGS else [])


def _opened(path):
    """The file as it is: by default the page tree would be mended, and what pages inherit put into them."""
    return pikepdf.open(path, inherit_page_attributes=False)


def _findings(original, copy):
    comparison = Comparison()
    originals, copies = pages_of(original), pages_of(copy)
    if len(originals) != len(copies):
        return [f"{len(originals)} pages became {len(copies)}"]
    for number, (theirs, ours) in enumerate(zip(originals, copies), 1):
        _compare_pages(comparison, f"page {number} ", original, theirs, ours)
    _compare_layers(comparison, original.Root.get("/OCProperties"), copy.Root.get("/OCProperties"))
    return comparison.findings + unseen_texts.findings_in(original, copy, comparison)


def _compare_pages(comparison, path, original, theirs, ours):
    objects = ours.resources.get("/XObject", {})
    form = objects.get("/P")
    if not isinstance(form, pikepdf.Stream):
        comparison.find(path, "the page has no form")
        return
    comparison.resources(path + "/Resources", theirs.resources, form.get("/Resources"))
    comparison.data(path + "/Contents", theirs.content_streams(), form)
    group = theirs.dictionary.get("/Group")
    comparison.values(path + "/Group", group if isinstance(group, pikepdf.Dictionary) else None,
                      ours.dictionary.get("/Group"), theirs.resources)
    _compare_appearances(comparison, path, original, theirs, objects)


def _compare_appearances(comparison, path, original, page, objects):
    """Every appearance that is used as it is stands among what the copy's page draws, in the same order."""
    drawn = [objects[name] for name in sorted((name for name in objects.keys() if name[:2] == "/A"),
                                              key=lambda name: int(name[2:]))]
    place = 0
    for number, appearance, may_be_outdated in _appearances(original, page):
        data = appearance.read_raw_bytes()
        found = next((index for index in range(place, len(drawn)) if drawn[index].read_raw_bytes() == data), None)
        if found is None:
            if may_be_outdated:
                continue
            comparison.find(f"{path}/Annots[{number}]", "the copy does not draw its appearance")
            return
        place = found
        comparison.appearance(f"{path}/Annots[{number}]/AP/N", appearance, drawn[place], page.resources)
        place += 1


def _appearances(original, page):
    """The appearances of a page's annotations that a viewer uses as they are, each with its place in /Annots and whether
    the form says that its fields' may be outdated: then a copy draws some as they are, and others from their values."""
    form = original.Root.get("/AcroForm")
    is_outdated = isinstance(form, pikepdf.Dictionary) and form.get("/NeedAppearances") is True
    annotations = page.dictionary.get("/Annots")
    for number, annotation in enumerate(annotations if isinstance(annotations, pikepdf.Array) else []):
        if not isinstance(annotation, pikepdf.Dictionary):
            continue
        flags = annotation.get("/F")
        subtype = annotation.get("/Subtype")
        if isinstance(flags, int) and flags & (HIDDEN | NO_VIEW) or subtype == NOT_DRAWN:
            continue
        appearance = annotation.get("/AP")
        normal = appearance.get("/N") if isinstance(appearance, pikepdf.Dictionary) else None
        state = annotation.get("/AS")
        if isinstance(normal, pikepdf.Dictionary) and not isinstance(normal, pikepdf.Stream):
            normal = normal.get(str(state)) if isinstance(state, pikepdf.Name) else None
        if isinstance(normal, pikepdf.Stream) and _has_area(annotation.get("/Rect")) \
                and _has_area(normal.get("/BBox")) and not _is_flat(normal.get("/Matrix")):
            yield number, normal, is_outdated and subtype == "/Widget"


def _has_area(box):
    try:
        left, bottom, right, top = (float(side) for side in box)
    except (TypeError, ValueError):
        return False
    return left != right and bottom != top


def _is_flat(matrix):
    """Whether it takes everything onto a line."""
    try:
        a, b, c, d, *_ = (float(item) for item in matrix)
    except (TypeError, ValueError):
        return False
    return a * d == b * c


def _compare_layers(comparison, theirs, ours):
    """Layers that something in the copy belongs to are as visible as they were."""
    if not isinstance(theirs, pikepdf.Dictionary) or not isinstance(theirs.get("/OCGs"), pikepdf.Array):
        return
    layers = [layer.objgen for layer in theirs.OCGs if isinstance(layer, pikepdf.Dictionary)
              and layer.objgen in comparison.copied]
    if not layers:
        return
    if not isinstance(ours, pikepdf.Dictionary):
        comparison.find("/OCProperties", "missing")
        return
    theirs_default, ours_default = _default_of(theirs), _default_of(ours)
    base = [str(default.get("/BaseState", "/ON")) for default in (theirs_default, ours_default)]
    if base[0] != base[1]:
        comparison.find("/OCProperties/D/BaseState", f"{base[0]} became {base[1]}")
    for key, before, after in (("/OCGs", theirs, ours), ("/D/ON", theirs_default, ours_default),
                               ("/D/OFF", theirs_default, ours_default)):
        listed_before, listed_after = (_listed(default.get(key[key.rindex("/"):])) for default in (before, after))
        for layer in layers:
            is_after = bool(comparison.copied[layer] & listed_after)
            if (layer in listed_before) != is_after:
                comparison.find("/OCProperties" + key, f"layer {layer[0]} {'added' if is_after else 'missing'}")


def _default_of(layers):
    default = layers.get("/D")
    return default if isinstance(default, pikepdf.Dictionary) else pikepdf.Dictionary()


def _listed(layers):
    return {layer.objgen for layer in layers if isinstance(layer, pikepdf.Dictionary)} \
        if isinstance(layers, pikepdf.Array) else set()


def main():
    if len(sys.argv) != 3:
        print(__doc__, file=sys.stderr)
        return 64
    found = findings(*sys.argv[1:])
    print("".join(line + "\n" for line in found), end="")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
