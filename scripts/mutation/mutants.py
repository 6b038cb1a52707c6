"""What a mutant is: one change of a source that is chosen when the program runs."""
import dataclasses
import re


@dataclasses.dataclass(frozen=True)
class Edit:
    """One place of a mutant, in bytes of the source. `how` says what becomes of it:
    choose: the expression is `text` when the mutant is chosen
    remove: the statement is left out
    insert: `text` is a statement that stands at `start`
    """
    start: int
    end: int
    how: str
    text: str = ""


@dataclasses.dataclass(frozen=True)
class Mutant:
    """A change of `file`, a path from the root of the project."""
    file: str
    function: str  # That it is in, if any.
    kind: str
    edits: tuple
    as_bool: bool = False  # The expression is converted to bool where it stands.
    at_compile_time: bool = False  # It may stand where the compiler computes; it is not chosen then.
    variable: tuple = None  # (start, end) of a constexpr declaration that has to become const for it.

    @property
    def start(self):
        return self.edits[0].start


# A literal, which is kept, or a comment.
LITERAL_OR_COMMENT = re.compile(rb'("(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\\n])+\')|//[^\n]*|/\*.*?\*/', re.DOTALL)


def one_line(text):
    """`text` (bytes) without comments and line breaks."""
    return b" ".join(LITERAL_OR_COMMENT.sub(lambda match: match.group(1) or b"", text).split())


def first_line(source, mutant):
    """The number of the line that the mutant begins on."""
    return source.count(b"\n", 0, mutant.start) + 1


def lines_of(source, mutant):
    """The lines that the mutant changes, before and after, each as one line of text."""
    begin = source.rfind(b"\n", 0, mutant.start) + 1
    if mutant.edits[0].how == "remove" or mutant.edits[0].how == "insert" and source[begin:mutant.start].strip() == b"{":
        begin = source.rfind(b"\n", 0, max(begin - 1, 0)) + 1  # The line before says which one it is.
    last = max(edit.end for edit in mutant.edits)
    end = source.find(b"\n", last)
    end = len(source) if end < 0 else end
    after = source[begin:end]
    for edit in sorted(mutant.edits, key=lambda edit: edit.start, reverse=True):
        text = edit.text.encode()
        if edit.how == "insert":
            text = b" " + text
        after = after[:edit.start - begin] + text + after[edit.end - begin:]
    return tuple(one_line(text).decode() for text in (source[begin:end], after))
