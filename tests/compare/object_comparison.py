"""Two values of two files side by side, down every reference, as a reader of the files sees them: what is direct in
one and an object of its own in the other is the same."""
import re
from decimal import Decimal

import pikepdf

from filters import decoded
from left_out import NAMES, is_left_out

# Objects that may be drawn without resources of their own take those of what draws them (PDF 1.7, 7.8.3).
BORROWS = "/Resources"
NAMING = re.compile(rb"/[^\s/]+\s+(Do|gs|sh|[-+.\d]+\s+Tf)\b")


class Comparison:
    """Collects what differs, each with the path that leads there."""

    def __init__(self):
        self.findings = []
        self.copied = {}  # Identity of an object of the original: of those in the copy that stand for it.
        self.strings = set()  # All that the originals' compared values say.
        self.streams = []  # The originals' compared streams.
        self._visited = set()
        self._pending = []

    def find(self, path, text):
        self.findings.append(f"{path}: {text}")

    def values(self, path, original, copy, resources=None):
        """Compares two values. `resources` are those of the original's page or form that leads here."""
        self._compare(path, original, copy, self._value, resources)

    def appearance(self, path, original, copy, resources):
        """As `values`, for the stream that an annotation shows, which is a form in the copy."""
        self._compare(path, original, copy, self._appearance, resources)

    def resources(self, path, original, copy):
        """Compares two resource dictionaries, the names in which are the author's own."""
        self._compare(path, original, copy, self._resources, original)

    def data(self, path, originals, copy):
        """Compares the content of a page, streams `originals` of the original, with the stream `copy`."""
        self.streams += originals
        if len(originals) == 1:
            self._raw_data(path, originals[0], copy)
            self._encoding(path, originals[0].stream_dict, copy.stream_dict, None)
            self._drain()
            return
        joined = b"".join(decoded(stream) + b"\n" for stream in originals)
        if decoded(copy) != joined:
            self.find(path, "joined content differs")

    def _compare(self, path, original, copy, step, resources):
        self._pending.append((path, original, copy, step, resources))
        self._drain()

    def _drain(self):
        while self._pending:
            path, original, copy, step, resources = self._pending.pop()
            step(path, original, copy, resources)

    def _later(self, path, original, copy, step, resources):
        self._pending.append((path, original, copy, step, resources))

    def _is_new(self, original, copy, resources):
        """Whether this pair of objects was not compared yet. Notes which object stands for which."""
        if not (_is_object(original) and original.is_indirect and _is_object(copy) and copy.is_indirect):
            return True
        self.copied.setdefault(original.objgen, set()).add(copy.objgen)
        borrowed = _identity(resources) if _borrows(original) else None
        pair = (original.objgen, copy.objgen, borrowed)
        if pair in self._visited:
            return False
        self._visited.add(pair)
        return True

    def _value(self, path, original, copy, resources):
        if not self._is_new(original, copy, resources):
            return
        if original is None or is_left_out(original):
            if copy is not None:
                self.find(path, f"{_short(copy)} in the copy, where the original shows nothing")
            return
        if _type(original) != _type(copy):
            self.find(path, f"{_short(original)} became {_short(copy)}")
        elif isinstance(original, pikepdf.Stream):
            self._stream(path, original, copy, resources)
        elif isinstance(original, pikepdf.Dictionary):
            if _borrows(original):
                self._borrowed(path, original, copy, resources)
            self._entries(path, original, copy, set(), resources)
        elif isinstance(original, pikepdf.Array):
            self._array(path, original, copy, resources)
        else:
            if isinstance(original, pikepdf.String):
                self.strings.add(bytes(original))
            if _plain(original) != _plain(copy):
                self.find(path, f"{_short(original)} became {_short(copy)}")

    def _array(self, path, original, copy, resources):
        if len(original) != len(copy):
            self.find(path, f"{len(original)} items became {len(copy)}")
            return
        for index, (theirs, ours) in enumerate(zip(original, copy)):
            self._later(f"{path}[{index}]", theirs, ours, self._value, resources)

    def _entries(self, path, original, copy, without, resources, plainly=False):
        """Compares all entries of two dictionaries but those `without`; of a form that paints `plainly`, or not."""
        if _borrows(original):
            without = without | {BORROWS}
        keys = (set(original.keys()) | set(copy.keys())) - without
        for key in sorted(keys):
            inner = original.get(BORROWS) or resources if _has_resources(original) else resources
            step = self._resources if key == BORROWS and _has_resources(original) else self._value
            if key == BORROWS and plainly:
                step = self._resources_painted_plainly
            self._later(path + key, original.get(key), copy.get(key), step, inner)

    def _borrowed(self, path, original, copy, resources):
        """Something drawn without resources: the copy may give it those it took, and nothing else."""
        if copy.get(BORROWS) is not None:
            self._later(f"{path}{BORROWS}(borrowed)", resources, copy.get(BORROWS), self._resources, resources)
        elif isinstance(resources, pikepdf.Dictionary) and _names_resources(original):
            self.find(path + BORROWS, "missing, and the original took those of what draws it")

    def _appearance(self, path, original, copy, resources):
        if not self._is_new(original, copy, resources):
            return
        left_out = set(NAMES["appearance"])
        if not _is_matrix(original.get("/Matrix")):
            left_out.add("/Matrix")
        if not _is_knockout(original.get("/Group")):
            left_out.add("/Group")  # Most viewers take no notice of it there, and others do in a form.
        for key in left_out:
            if copy.get(key) is not None:
                self.find(path + key, "copied, though it means nothing in an appearance")
        self._stream(path, original, copy, resources, left_out, _paints_plainly(original))

    def _painted_plainly(self, path, original, copy, resources):
        """As `_value`, for what an appearance paints without any state of its own: groups that make no difference then are
        left out."""
        if not isinstance(original, pikepdf.Stream) or not isinstance(copy, pikepdf.Stream) \
                or original.get("/Subtype") != "/Form" or _borrows(original):
            self._value(path, original, copy, resources)
            return
        if not self._is_new(original, copy, resources):
            return
        group = original.get("/Group")
        left_out = set()
        if isinstance(group, pikepdf.Dictionary) and group.get("/I") is not True and group.get("/K") is not True:
            left_out.add("/Group")
            if copy.get("/Group") is not None:
                self.find(path + "/Group", "copied, though it makes no difference")
        self._stream(path, original, copy, resources, left_out, _paints_plainly(original))

    def _stream(self, path, original, copy, resources, without=frozenset(), plainly=False):
        self.streams.append(original)
        theirs, ours = original.stream_dict, copy.stream_dict
        without = without | NAMES["stream"] | {"/Filter", "/DecodeParms"}
        if theirs.get("/Subtype") is None and ours.get("/Subtype") == pikepdf.Name.Form:
            without = without | {"/Subtype"}  # Appearances often do not say that they are forms.
        for key in NAMES["stream"] - {"/Length"}:
            if ours.get(key) is not None:
                self.find(path + key, "copied, though it is not seen")
        if _borrows(original):
            self._borrowed(path, original, copy, resources)
        self._entries(path, theirs, ours, without, resources, plainly)
        self._encoding(path, theirs, ours, resources)
        self._raw_data(path, original, copy)

    def _encoding(self, path, original, copy, resources):
        """Compares the filters; the crypt filter is undone in the copy."""
        filters = _listed(original.get("/Filter"))
        parameters = _listed(original.get("/DecodeParms"))
        if "/Crypt" in map(str, filters):
            parameters += [None] * (len(filters) - len(parameters))
            kept = [index for index, name in enumerate(filters) if str(name) != "/Crypt"]
            filters, parameters = [filters[index] for index in kept], [parameters[index] for index in kept]
        for key, expected in (("/Filter", filters), ("/DecodeParms", parameters)):
            given = _listed(copy.get(key))
            if len(expected) != len(given):
                self.find(path + key, f"{len(expected)} became {len(given)}")
            for index, (theirs, ours) in enumerate(zip(expected, given)):
                self._later(f"{path}{key}[{index}]", theirs, ours, self._value, resources)

    def _raw_data(self, path, original, copy):
        if original.read_raw_bytes() != copy.read_raw_bytes():
            self.find(path, "stream data differs")

    def _resources(self, path, original, copy, _):
        self._categories(path, original, copy, self._value)

    def _resources_painted_plainly(self, path, original, copy, _):
        self._categories(path, original, copy, self._painted_plainly)

    def _categories(self, path, original, copy, step_of_objects):
        if not self._is_new(original, copy, original):
            return
        if not isinstance(original, pikepdf.Dictionary):
            if isinstance(copy, pikepdf.Dictionary) and len(copy.keys()) > 0:
                self.find(path, f"{_short(original)} became {_short(copy)}")
            return
        if not isinstance(copy, pikepdf.Dictionary):
            self.find(path, f"resources became {_short(copy)}")
            return
        for category in sorted(set(original.keys()) | set(copy.keys())):
            theirs, ours = original.get(category), copy.get(category)
            if isinstance(theirs, pikepdf.Array):  # /ProcSet
                self._later(path + category, theirs, ours, self._value, original)
            elif isinstance(theirs, pikepdf.Dictionary):
                step = step_of_objects if category == "/XObject" else self._value
                self._names(path + category, theirs, ours, original, step)
            elif ours is not None:
                self.find(path + category, f"{_short(theirs)} became {_short(ours)}")

    def _names(self, path, original, copy, resources, step):
        if not isinstance(copy, pikepdf.Dictionary):
            if len(original.keys()) > 0:
                self.find(path, f"{_short(original)} became {_short(copy)}")
            return
        for name in sorted(set(original.keys()) | set(copy.keys())):
            self._later(path + name, original.get(name), copy.get(name), step, resources)


def _is_object(value):
    return isinstance(value, pikepdf.Object)


def _has_resources(dictionary):
    """Whether it is of a kind that draws with resources: a form, a pattern of tiles, a Type 3 font."""
    return dictionary.get("/Subtype") in ("/Form", "/Type3") or dictionary.get("/PatternType") == 1


def _borrows(value):
    dictionary = value.stream_dict if isinstance(value, pikepdf.Stream) else value
    return isinstance(dictionary, pikepdf.Dictionary) and _has_resources(dictionary) \
        and not isinstance(dictionary.get(BORROWS), pikepdf.Dictionary)


def _names_resources(value):
    """Whether the content behind a form, a pattern or a Type 3 font shows something by its name."""
    if isinstance(value, pikepdf.Stream):
        streams = [value]
    else:
        glyphs = value.get("/CharProcs")
        streams = [glyphs[name] for name in glyphs.keys()] if isinstance(glyphs, pikepdf.Dictionary) else []
    return any(NAMING.search(decoded(stream)) for stream in streams if isinstance(stream, pikepdf.Stream))


def _identity(value):
    """Equal for the same resource dictionary."""
    if not _is_object(value):
        return None
    return value.objgen if value.is_indirect else value.unparse()


def _type(value):
    if value is None or isinstance(value, bool):
        return type(value)
    if isinstance(value, (int, Decimal, float)):
        return Decimal
    return value._type_code


def _plain(value):
    """A scalar to compare; of names and strings their bytes."""
    if isinstance(value, (pikepdf.String, pikepdf.Name)):
        return bytes(value) if isinstance(value, pikepdf.String) else value.unparse(resolved=True)
    return value


def _listed(value):
    """What stands once or in an array; a null entry says nothing."""
    if value is None:
        return []
    return list(value) if isinstance(value, pikepdf.Array) else [value]


def _short(value):
    if value is None:
        return "nothing"
    if isinstance(value, pikepdf.Stream):
        return "a stream"
    if isinstance(value, (pikepdf.Dictionary, pikepdf.Array)):
        return "a dictionary" if isinstance(value, pikepdf.Dictionary) else "an array"
    text = value.unparse(resolved=True).decode(errors="replace") if _is_object(value) else str(value)
    return text if len(text) <= 60 else text[:57] + "..."


def _paints_plainly(form):
    """Whether all that `form` draws is opaque and without a mask or a blend mode if the form is."""
    resources = form.get("/Resources")
    return isinstance(resources, pikepdf.Dictionary) and resources.get("/ExtGState") is None


def _is_knockout(group):
    return isinstance(group, pikepdf.Dictionary) and group.get("/K") is True


def _is_matrix(value):
    """Whether viewers take `value` for the matrix of an appearance."""
    return isinstance(value, pikepdf.Array) and len(value) >= 6 and \
        all(isinstance(item, (int, float, Decimal)) and not isinstance(item, bool) for item in list(value)[:6])
