"""Writes one source that holds many mutants, of which a running program chooses one."""
import dataclasses

from mutants import one_line


@dataclasses.dataclass
class Place:
    """Where mutants ended up in the woven source. A mistake of the compiler inside of it is a mistake of theirs."""
    start: int
    end: int
    mutants: tuple
    is_variable: bool = False


def woven(source, mutants, constexpr_at):
    """The text of `source` with all `mutants`, a dictionary of numbers and mutants, and their places.
    `constexpr_at` gives the place of the word in a variable's declaration and what stands there instead."""
    pieces = {}
    for number, mutant in mutants.items():
        for edit in mutant.edits:
            pieces.setdefault((edit.start, edit.end, edit.how), []).append((number, mutant, edit))
    words = {}
    owners = {}
    for number, mutant in mutants.items():
        if mutant.variable:
            start, end, word = constexpr_at[mutant.variable]
            words[start] = (end, word)
            owners.setdefault(mutant.variable, []).append(number)
    # From the outside in; what is inserted comes before what begins at the same byte.
    order = sorted(pieces, key=lambda piece: (piece[0], piece[2] != "insert", -piece[1], piece[2] != "remove"))
    out = bytearray()
    places = []
    moved = {}  # A byte of the source: where it went.

    def call(number, mutant):
        name = "tallyfoldMutantUnlessConstant" if mutant.at_compile_time else "tallyfoldMutant"
        return f"{name}({number})".encode()

    def copy(begin, end):
        while begin < end:
            following = min((at for at in words if begin <= at < end), default=end)
            moved.setdefault(begin, len(out))
            out.extend(source[begin:following])
            begin = following
            if begin < end:
                begin, word = words[begin]
                out.extend(word)

    def write(begin, end, inside):
        at = begin
        index = 0
        while index < len(inside):
            start, stop, how = inside[index]
            children = []
            following = index + 1
            while following < len(inside) and inside[following][0] < stop:
                if inside[following][1] <= stop:
                    children.append(inside[following])
                following += 1
            if start < at:
                index += 1
                continue
            copy(at, start)
            entries = pieces[inside[index]]
            first = len(out)
            if how == "insert":
                for number, mutant, edit in entries:
                    alternative = len(out)
                    out.extend(b" if (" + call(number, mutant) + b") { " + edit.text.encode() + b" }")
                    places.append(Place(alternative, len(out), (number,)))
                at = start
                index += 1
                continue
            if how == "remove":
                out.extend(b"{ if (!" + call(*entries[0][:2]) + b") { ")
                write(start, stop, children)
                out.extend(b" } }")
            else:
                out.extend(b"(")
                for number, mutant, edit in entries:
                    alternative = len(out)
                    # Both sides have one type: that of an optional would make a value of a bool.
                    cast = b"static_cast<bool>(" if mutant.as_bool else b"("
                    out.extend(call(number, mutant) + b" ? " + cast + one_line(edit.text.encode()) + b") : ")
                    places.append(Place(alternative, len(out), (number,)))
                out.extend(b"static_cast<bool>(" if any(entry[1].as_bool for entry in entries) else b"(")
                write(start, stop, children)
                out.extend(b"))")
            places.append(Place(first, len(out), tuple(entry[0] for entry in entries)))
            at = stop
            index = following
        copy(at, end)

    write(0, len(source), order)
    for (start, end), numbers in owners.items():
        before = max((at for at in moved if at <= start), default=0)
        begin = moved.get(before, 0) + start - before
        last = max((at for at in moved if at <= end), default=0)
        places.append(Place(begin, moved.get(last, 0) + end - last, tuple(numbers), True))
    return bytes(out), places


def at_fault(places, offsets):
    """The mutants that a mistake of the compiler which names these `offsets` of the woven source is due to."""
    around = [place for place in places if any(place.start <= offset < place.end for offset in offsets)]
    variables = [place for place in around if place.is_variable]
    chosen = variables or around
    if not chosen:
        return ()
    return min(chosen, key=lambda place: place.end - place.start).mutants
