"""The kinds of rewriting: each says how, and whether that is legal PDF 1.7 or what common viewers read alike.

Kinds are done in the order of their stages, whatever order they are named in, so that one keeps what another did: the
notation is chosen first, pages and their contents follow, then the data of streams, then single values, then numbers.
What qpdf writes is in its own notation, so those forms go with fewer others; `conflict_of` says with which.
"""
from . import indirection, page_tree, resources, split_contents, stream_data

NOTATION, TREE, RESOURCES, CONTENTS, SPLIT, DATA, VALUES, NUMBERS, FILE = range(9)
KINDS = {}


class Kind:
    def __init__(self, name, stage, apply, keeps_out=()):
        self.name, self.stage, self.apply, self.keeps_out = name, stage, apply, frozenset(keeps_out)
        self.description = " ".join(apply.__doc__.split())


def kind(stage, keeps_out=()):
    """Names the function a kind; `keeps_out` holds the stages and kinds it cannot be combined with."""
    def register(apply):
        name = apply.__name__.replace("_", "-")
        KINDS[name] = Kind(name, stage, apply, keeps_out)
        return apply
    return register


def conflict_of(names):
    """Why kinds cannot be combined, None when they can."""
    chosen = [KINDS[name] for name in names]
    for one in chosen:
        for other in chosen:
            if one is not other and (other.stage in one.keeps_out or other.name in one.keeps_out):
                return f"{one.name} would undo {other.name}"
    return "a kind is named twice" if len(set(names)) != len(names) else None


def in_order(names):
    return sorted((KINDS[name] for name in names), key=lambda kind: kind.stage)


# Notation: a serializer of our own writes tokens as it is told, in the file and in contents.

@kind(NOTATION)
def hash_names(work):
    """Every character of every name as #xx, in the file and in contents. Legal: 7.3.5."""
    work.syntax.hashes_names = True


@kind(NOTATION, keeps_out=["literal-strings"])
def hex_strings(work):
    """Every string in hexadecimal, letters of both cases, with white space in some and without a last 0 in others.
    Legal: 7.3.4.3."""
    work.syntax.strings = "hex"


@kind(NOTATION, keeps_out=["hex-strings"])
def literal_strings(work):
    """Every string as a literal with escapes of every kind: by letter, one to three octal digits, balanced parentheses
    without, lines that go on, backslashes that mean nothing. Legal: 7.3.4.2."""
    work.syntax.strings = "literal"


@kind(NOTATION)
def odd_numbers(work):
    """Numbers with plus signs, leading zeros, leading and trailing points (+1.0, .5, 4.); those that have to be integers
    stay such. Legal: 7.3.3. Numbers of references, cross references and the like are plain (7.3.10, 7.5.4)."""
    work.syntax.odd_numbers = True


@kind(NOTATION)
def comments(work):
    """Comments and white space of every kind between all tokens, and nothing where nothing is needed. Legal: 7.2.2,
    7.2.3. Not between the words before an object (7.3.10) and in the table of cross references (7.5.4)."""
    work.syntax.comments = True


@kind(NOTATION)
def return_line_ends(work):
    """Lines end with a carriage return alone. Legal: 7.2.2; not after `stream`, where 7.3.8.1 forbids it."""
    work.syntax.line_end = work.layout.line_end = b"\r"


# Pages and their contents.

@kind(TREE, keeps_out=["deep-page-tree"])
def flat_page_tree(work):
    """One node with all pages, which say themselves what they inherited. Legal: 7.7.3.3."""
    page_tree.flatten(work.document)


@kind(TREE, keeps_out=["flat-page-tree"])
def deep_page_tree(work):
    """A tree of 30 levels, every inheritable entry on a level of its own, and other values for them at the top. Legal:
    7.7.3.4."""
    page_tree.deepen(work.document)


@kind(RESOURCES, keeps_out=["own-resources"])
def shared_resources(work):
    """One dictionary of resources for all pages, with new names in contents where two mean different things. Legal:
    7.8.3."""
    resources.share(work.document)


@kind(RESOURCES, keeps_out=["shared-resources"])
def own_resources(work):
    """A set of resources for each page, fonts and graphics states included. Legal: 7.8.3."""
    resources.give_each_page_its_own(work.document)


@kind(SPLIT)
def split_contents_at_tokens(work):
    """Contents as an array of streams, divided at every border between tokens, of very long ones at 400. Legal:
    7.8.2."""
    split_contents.split_contents(work.document, work.dice)


# Data of streams.

@kind(DATA, keeps_out=["streams-encoded-anew"])
def streams_decoded(work):
    """No filter on any stream but those for pictures (and those that cannot be decoded). Legal: 7.3.8.2."""
    work.document.decode()


@kind(DATA, keeps_out=["streams-decoded"])
def streams_encoded_anew(work):
    """Another filter on every stream: Flate with and without a predictor, LZW, run lengths, ASCII85, hexadecimal.
    Legal: 7.4."""
    stream_data.encode_anew(work.document, work.dice)


@kind(DATA)
def filters_as_arrays(work):
    """One filter, and its parameters, as arrays of one. Legal: 7.3.8.2, table 5."""
    stream_data.filters_as_arrays(work.document)


@kind(DATA)
def two_filters(work):
    """One more filter over that of every stream, or two. Legal: 7.3.8.2, 7.4.1."""
    stream_data.add_filter(work.document, work.dice)


# Values.

@kind(VALUES, keeps_out=["direct-values"])
def indirect_values(work):
    """Every value of dictionaries and arrays (the first 64 of an array) an object of its own. Legal: 7.3.10. Direct stay
    what has to: the trailer, /Length of streams and what is in the dictionaries of streams of objects and of cross
    references (7.5.5, 7.5.7, 7.5.8); encryption comes later (7.6.1); operands of contents have no references (7.8.2).
    Direct stay also three entries of fields and annotations that a viewer does not find otherwise."""
    indirection.make_indirect(work.document)


@kind(VALUES, keeps_out=["indirect-values"])
def direct_values(work):
    """Nothing an object of its own that need not be. Legal: 7.3.10; streams, nodes of trees, layers, annotations and
    descriptors of fonts stay objects (7.3.8, 7.7.3, 8.11.2, 9.8), and so does what is used often."""
    indirection.make_direct(work.document)


# Numbers.

@kind(NUMBERS)
def shuffled_numbers(work):
    """Objects numbered in any order, and so written in another than they had. Legal: 7.3.10."""
    work.numbering.is_shuffled = True


@kind(NUMBERS)
def generations(work):
    """Objects of generations above 0. Legal: 7.3.10, 7.5.4."""
    work.numbering.has_generations = True


@kind(NUMBERS)
def gaps(work):
    """Numbers that no object has, in the list of free entries. Legal: 7.5.4."""
    work.numbering.has_gaps = True


# The file.

@kind(FILE)
def plain_table(work):
    """Every object by itself, and a table of cross references. Legal: 7.5.4. So is every rewriting that says nothing
    else."""
    work.layout.object_streams = False


@kind(FILE, keeps_out=["plain-table", "qdf"])
def object_streams(work):
    """Objects in compressed streams, and a stream of cross references. Legal: 7.5.7, 7.5.8."""
    work.layout.object_streams = True


@kind(FILE, keeps_out=["update", "text-around"])
def two_updates(work):
    """Two updates appended, each with all pages, which had other boxes, turns and contents before. Legal: 7.5.6."""
    work.layout.updates = 2


@kind(FILE, keeps_out=["two-updates"])
def update(work):
    """An update appended with all pages, which had other boxes, turns and contents before. Legal: 7.5.6."""
    work.layout.updates = 1


@kind(FILE)
def text_around(work):
    """Text before the header and after the end. What common viewers read alike: 7.5.2 has the header first, and Annex H
    (3.4.1, 3.4.4) tells of readers that look for it in the first 1024 bytes, and for the end in the last."""
    work.layout.text_around = True


_NOT_KEPT_BY_QPDF = (NOTATION, NUMBERS, "update", "two-updates", "plain-table")


@kind(FILE, keeps_out=(*_NOT_KEPT_BY_QPDF, "linearized", "object-streams"))
def qdf(work):
    """Written by qpdf for a person to read: decoded, with comments, lengths as objects. Legal."""
    work.qpdf_options += ["--qdf", "--object-streams=disable"]


@kind(FILE, keeps_out=(*_NOT_KEPT_BY_QPDF, "qdf"))
def linearized(work):
    """Written by qpdf for reading over a network: the first page first. Legal: Annex F."""
    work.qpdf_options += ["--linearize"]


def _encrypted(work, *options):
    """No password to open, an owner's password, everything allowed."""
    work.qpdf_options += ["--allow-weak-crypto", "--encrypt", "", "owner", *options, "--"]


_OTHER_ENCRYPTIONS = ("encrypted-rc4-40", "encrypted-rc4-128", "encrypted-aes-128", "encrypted-aes-256")


def _encryption(apply):
    name = apply.__name__.replace("_", "-")
    return kind(FILE, (NUMBERS, *(other for other in _OTHER_ENCRYPTIONS if other != name)))(apply)


@_encryption
def encrypted_rc4_40(work):
    """Encrypted with RC4 and a key of 40 bits, no password needed, everything allowed. Legal: 7.6.2."""
    _encrypted(work, "40")


@_encryption
def encrypted_rc4_128(work):
    """Encrypted with RC4 and a key of 128 bits, no password needed, everything allowed. Legal: 7.6.2."""
    _encrypted(work, "128", "--use-aes=n")


@_encryption
def encrypted_aes_128(work):
    """Encrypted with AES and a key of 128 bits, no password needed, everything allowed. Legal: 7.6.2."""
    _encrypted(work, "128", "--use-aes=y")


@_encryption
def encrypted_aes_256(work):
    """Encrypted with AES and a key of 256 bits, no password needed, everything allowed. An extension of PDF 1.7 (level
    8), which common viewers read alike."""
    _encrypted(work, "256")

