"""One file, rewritten in many ways: whether the copies of all are the same."""
import os
import random
import re
import tempfile
import traceback
from dataclasses import dataclass, field

import copies
import pictures
from limited import run
from rewriting.document import NotRewritable, by_qpdf
from rewriting.rewriting import rewrite
from same_objects import findings as object_findings

from .shown import resolution
from .stamped import NotStamped, Stamped

HELD, FAILED = "held", "failed"
NOT_REWRITTEN, DRAWN_OTHERWISE, NOT_STAMPED = "cannot be rewritten", "is drawn otherwise", "is no file to stamp"
NOT_READ = ("locked", "unreadable")
FARTHEST = 0.05  # Points that a number may be elsewhere: less than any viewer shows.


@dataclass
class Variant:
    """A file and how it is to be rewritten."""

    file: str
    kinds: tuple
    seed: int


@dataclass
class Outcome:
    """What came of a variant: one of the outcomes above, and why."""

    variant: Variant
    outcome: str
    reasons: list = field(default_factory=list)


@dataclass
class Options:
    """How a run is to be made."""

    produce: str
    produce_megabytes: int = 512
    with_pictures: bool = True
    most_pages: int = 0  # That are drawn of a file; 0 for all.
    keep: str = ""


class Examination:
    """The variants of one file. What they are held against is made once."""

    def __init__(self, path, options, folder):
        self._options, self._folder = options, folder
        base = path
        original = Stamped(path, options, self._new_folder())
        if run(["qpdf", "--is-encrypted", path]).code == 0:
            # What is written anew is not, and some viewers ask for a password where others need none.
            base = os.path.join(self._new_folder(), "base.pdf")
            by_qpdf(path, base, "--decrypt")
            original = Stamped(base, options, self._new_folder())
        if original.classification.problem in NOT_READ:
            raise NotStamped(original.classification.problem)
        self._path, self._original = base, original
        if not original.can_be_stamped:
            return
        original.stamp()
        self._numbers = original.numbers()
        count = original.classification.pages
        most = options.most_pages or count
        self._first = random.Random(path).randrange(max(1, count - most + 1)) + 1
        self._last = min(count, self._first + most - 1)
        sizes = [page.size for page in copies.pages_of(base, self._last)[self._first - 1:] if page.size]
        self._dpi = resolution(sizes)
        self._shown, self._copy_shown = original.shown(self._first, self._last, self._dpi)
        self._engines = [engine for engine in pictures.ENGINES if options.with_pictures and self._draws(engine)]

    def _draws(self, engine):
        return any(picture is not None for picture in self._shown.pages(engine))

    def _new_folder(self):
        return tempfile.mkdtemp(dir=self._folder)

    def examine(self, variant):
        folder = self._new_folder()
        path = os.path.join(folder, "rewritten.pdf")
        try:
            rewrite(self._path, path, variant.kinds, variant.seed)
        except NotRewritable as reason:
            return Outcome(variant, NOT_REWRITTEN, [str(reason)])
        try:
            return self._compare(variant, Stamped(path, self._options, folder))
        except NotStamped as reason:
            return Outcome(variant, FAILED, [str(reason)])

    def _compare(self, variant, rewritten):
        theirs = self._original.classification
        drawn_otherwise = []
        if self._original.can_be_stamped and self._options.with_pictures:
            shown, _ = rewritten.shown(self._first, self._last, self._dpi)
            drawn_otherwise = self._differences(variant, shown, self._shown, "rewritten")
        if drawn_otherwise:
            return Outcome(variant, DRAWN_OTHERWISE, drawn_otherwise)
        if rewritten.classification != theirs:
            return Outcome(variant, FAILED, [f"taken as {rewritten.classification}; the original: {theirs}"])
        if not self._original.can_be_stamped:
            return Outcome(variant, HELD)
        rewritten.stamp()
        found = [f"objects: {finding}" for finding in object_findings(rewritten.path, rewritten.copy)]
        found += self._number_findings(rewritten)
        if self._options.with_pictures:
            _, shown = rewritten.shown(self._first, self._last, self._dpi)
            found += self._differences(variant, shown, self._copy_shown, "copy")
        return Outcome(variant, FAILED if found else HELD, found)

    def _number_findings(self, rewritten):
        found = []
        if not self._numbers:  # Poppler reads nothing of the file itself, and may take its time about it.
            return found
        numbers = rewritten.numbers()
        if len(numbers) != len(self._numbers):
            return [f"numbers: {len(numbers)} pages of text, not {len(self._numbers)}"]
        for page, (ours, theirs) in enumerate(zip(numbers, self._numbers), 1):
            if [word for word, _ in ours] != [word for word, _ in theirs]:
                found.append(f"numbers: page {page} has {ours}, not {theirs}")
            elif any(abs(side - other) > FARTHEST for (_, box), (_, known) in zip(ours, theirs)
                     for side, other in zip(box, known)):
                found.append(f"numbers: on page {page} at {ours}, not at {theirs}")
        return found

    def _differences(self, variant, shown, known, what):
        found = []
        for engine in self._engines:
            for page in shown.differences_from(known, engine):
                found.append(f"{engine}: page {page} of the {what} is drawn otherwise")
                if self._options.keep:
                    name = f"{variant.file}-{'+'.join(variant.kinds)}-{variant.seed}-{page}-{engine}-{what}"
                    shown.keep_difference(known, engine, page, self._options.keep,
                                          re.sub(r"[^\w.+-]+", "_", name) + ".png")
        return found


def examine(path, options, variants):
    """The outcomes of variants of the file at `path`."""
    with tempfile.TemporaryDirectory() as work:
        try:
            examination = Examination(path, options, work)
        except (NotStamped, NotRewritable) as reason:
            return [Outcome(variant, NOT_STAMPED, [str(reason)]) for variant in variants]
        return [_examined(examination, variant) for variant in variants]


def _examined(examination, variant):
    """The outcome of a variant; a fault of these tests themselves is a failure of that one and ends no others."""
    try:
        return examination.examine(variant)
    except Exception as problem:  # pylint: disable=broad-except
        return Outcome(variant, FAILED, traceback.format_exception(problem)[-3:])
