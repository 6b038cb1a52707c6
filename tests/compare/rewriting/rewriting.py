"""Rewrites a file in the kinds named."""
import os
import random
import tempfile

from .content_syntax import write_contents
from .document import Document, NotRewritable, by_qpdf
from .kinds import CONTENTS, DATA, conflict_of, in_order
from .numbering import Numbering
from .syntax import Syntax
from .writer import Layout, around, write


class Work:
    """A rewriting as far as it has come: the document, and what is to be done when it is written."""

    def __init__(self, source, seed):
        self.document = Document(source)
        self.dice = random.Random(seed)
        self.syntax = Syntax(seed)
        self.layout = Layout()
        self.numbering = Numbering()
        self.qpdf_options = []


def rewrite(source, target, kinds, seed=0):
    """Writes `target` from `source`, the same for the same seed; NotRewritable, which says why, when that has no sense
    for it."""
    conflict = conflict_of(kinds)
    if conflict:
        raise NotRewritable(conflict)
    work = Work(source, seed)
    chosen = in_order(kinds)
    for kind in chosen:
        if kind.stage < CONTENTS:
            kind.apply(work)
    if not work.syntax.is_plain:
        write_contents(work.document, work.syntax, compresses=all(kind.stage != DATA for kind in chosen))
    for kind in chosen:
        if kind.stage > CONTENTS:
            kind.apply(work)
    data = _by_qpdf(work) if work.qpdf_options else _written(work)
    with open(target, "wb") as file:
        file.write(data)


def _written(work):
    numbers = work.numbering.numbers(work.document, work.dice)
    return write(work.document, numbers, work.syntax, work.layout)


def _by_qpdf(work):
    """What qpdf writes, in which encrypted strings and data may then be said otherwise."""
    layout, work.layout = work.layout, Layout(object_streams=work.layout.object_streams)
    is_qdf, is_linearized = "--qdf" in work.qpdf_options, "--linearize" in work.qpdf_options
    options = list(work.qpdf_options)
    if not is_qdf:
        options += ["--stream-data=preserve", "--decode-level=none",
                    "--object-streams=" + ("generate" if layout.object_streams else "disable")]
    is_plain = not (is_qdf or is_linearized or layout.object_streams)
    if not is_plain and (layout.updates or not work.syntax.is_plain):
        raise NotRewritable("qpdf would undo the notation")
    with tempfile.TemporaryDirectory() as folder:
        ours, theirs = (os.path.join(folder, name) for name in ("ours.pdf", "theirs.pdf"))
        with open(ours, "wb") as file:
            file.write(_written(work))
        by_qpdf(ours, theirs, *options)
        if is_plain:
            work.document, work.layout = Document(theirs, is_final=True), layout
            return _written(work)
        with open(theirs, "rb") as file:
            data = file.read()
    return around(data) if layout.text_around else data
