"""What a copy leaves out of its original on purpose: `left_out.tsv` as sets of names."""
import csv
import os

import pikepdf


def _names():
    path = os.path.join(os.path.dirname(os.path.abspath(__file__)), "left_out.tsv")
    with open(path, encoding="utf-8", newline="") as file:
        rows = csv.DictReader((line for line in file if not line.startswith("#")), delimiter="\t",
                              quoting=csv.QUOTE_NONE)
        names = {"type": set(), "stream": set(), "appearance": set(), "drawn": set()}
        for row in rows:
            names[row["kind"]].add(row["name"])
    return names


NAMES = _names()


def is_left_out(value):
    """Whether `value` is an object that no copy holds."""
    dictionary = value
    if isinstance(value, pikepdf.Object) and isinstance(value, pikepdf.Stream):
        dictionary = value.stream_dict
    elif not isinstance(value, pikepdf.Dictionary):
        return False
    kind = dictionary.get("/Type")
    if isinstance(kind, pikepdf.Name):
        return str(kind) in NAMES["type"]
    # A node of the page tree is one even when it does not say so.
    return "/Parent" in dictionary and ("/MediaBox" in dictionary or "/Kids" in dictionary)
