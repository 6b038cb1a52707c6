"""Contents divided into many streams (PDF 1.7, 7.8.2)."""
from .lexer import content_tokens
from .pages import contents_of, pages_of
from .values import Name, Reference, Stream

MOST_PIECES = 400


def split_contents(document, dice):
    """Divides at every border between tokens; where there are very many, at every one of the first and at some of the
    others, for viewers open thousands of streams as slowly as thousands of files."""
    done = {}
    for page in pages_of(document):
        numbers = contents_of(document, page)
        key = tuple(numbers)
        if key not in done:
            pieces = [piece for number in numbers for piece in _pieces(document, number, dice)]
            done[key] = [piece if isinstance(piece, Reference) else document.add(piece) for piece in pieces]
        if done[key]:
            page.dictionary[Name(b"Contents")] = list(done[key])


def _pieces(document, number, dice):
    data = document.decoded(number)
    if data is None:
        return [Reference(number)]
    borders = [end for _, end in content_tokens(data)][:-1]
    if len(borders) > MOST_PIECES:
        half = MOST_PIECES // 2
        borders = borders[:half] + sorted(dice.sample(borders[half:], half))
    borders = [0, *borders, len(data)]
    return [Stream({}, data[start:end]) for start, end in zip(borders, borders[1:])]
