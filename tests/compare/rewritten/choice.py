"""Which files are rewritten in which kinds."""
import hashlib
import random

from rewriting.kinds import KINDS, conflict_of

from .examination import Variant

# Files in which most of what a page may say is said: three that are made, four samples, and five of the folder given.
FIXED = ("made/drawing.pdf", "made/notes.pdf", "made/boxes.pdf", "samples/Board minutes.pdf",
         "samples/Deposition excerpt.pdf", "samples/Exhibit A - Lease.pdf", "samples/Intake form.pdf",
         "OCRmyPDF/type3_font_nomapping.pdf", "krilla/pattern_shading_on_text.pdf",
         "pdf-differences/InlineAbbreviations.pdf", "qpdf/manual-appearances.pdf", "PyMuPDF/test_4415.pdf")
PAIRS = 60
SHARE = 10


def sampled(kind, file):
    """Whether `file` is in the tenth that is rewritten in `kind`."""
    return hashlib.sha256(f"{kind}\n{file}".encode()).digest()[0] % SHARE == 0


def pair(dice):
    """Two kinds that can be combined."""
    while True:
        kinds = tuple(dice.sample(sorted(KINDS), 2))
        if not conflict_of(kinds):
            return kinds


def in_sample(files, seed):
    """Every kind on the fixed files, on another tenth of the others each, and pairs of kinds on any."""
    fixed = [file for file in FIXED if file in files]
    variants = [Variant(file, (kind,), seed) for file in fixed for kind in KINDS]
    variants += [Variant(file, (kind,), seed) for file in files if file not in fixed
                 for kind in KINDS if sampled(kind, file)]
    dice = random.Random(seed)
    return variants + [Variant(dice.choice(files), pair(dice), seed + index) for index in range(PAIRS)]


def everything(files, seed):
    """Every kind on every file, and two pairs of kinds."""
    dice = random.Random(seed)
    variants = [Variant(file, (kind,), seed) for file in files for kind in KINDS]
    return variants + [Variant(file, pair(dice), seed + index) for file in files for index in range(2)]
