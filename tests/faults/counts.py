"""Counts for the summary of all tests."""
import os


def note(what, count):
    """Adds `count` to what the summary says of `what`: a line of the file that TALLYFOLD_COUNTS names, if any."""
    path = os.environ.get("TALLYFOLD_COUNTS")
    if path:
        with open(path, "a", encoding="utf-8") as file:
            file.write(f"{count} {what}\n")
