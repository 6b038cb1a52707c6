"""Reads the sources of a room with libclang and finds their mutants."""
import glob
import os
import shlex

from clang.cindex import CursorKind as Kind, Diagnostic, Index, TranslationUnit

from sites import Sites


class CannotRead(Exception):
    """What clang does not accept is not half known."""


def arguments_of(command, root):
    """What clang has to know of a command of the compiler."""
    words = shlex.split(command)
    kept = [word for word in words if word.startswith(("-I", "-D", "-std=")) or word in ("-fPIC", "-fPIE")]
    for at, word in enumerate(words):
        if word in ("-isystem", "-include"):
            kept += [word, words[at + 1]]
    adapter = os.path.join(root, "cmake", "ClangAndQpdf.h")
    if os.path.exists(adapter):
        kept += ["-include", adapter]
    resources = sorted(glob.glob("/usr/lib/llvm-14/lib/clang/*"))
    if resources:
        kept += ["-resource-dir", resources[-1]]
    return kept


class Read:
    """What was found in one file."""

    def __init__(self, source, mutants, constexpr_at):
        self.source = source
        self.mutants = mutants
        self.constexpr_at = constexpr_at


def units_for(path, units, root):
    """A unit that has the file: itself, the source beside a header, or one that includes it. A source may be left out of this
    build."""
    if path in units or path.endswith(".cpp"):
        return path if path in units else None
    beside = os.path.splitext(path)[0] + ".cpp"
    if beside in units:
        return beside
    line = f'#include "{path}"'
    present = [unit for unit in units if os.path.exists(os.path.join(root, unit))]
    for unit in sorted(present, key=lambda unit: (unit.split("/")[0] != path.split("/")[0], unit)):
        with open(os.path.join(root, unit), encoding="utf-8") as file:
            if line in file.read():
                return unit
    return None


def macros_of(unit, absolute):
    uses = []
    for cursor in unit.cursor.get_children():
        if cursor.kind == Kind.MACRO_INSTANTIATION and cursor.location.file and cursor.location.file.name == absolute:
            uses.append((cursor.extent.start.offset, cursor.extent.end.offset, cursor.spelling))
    return uses


def sites_in(paths, units, root):
    """The mutants of each of `paths`; `units` are commands of the compiler by the path of their source."""
    by_unit = {}
    for path in paths:
        unit = units_for(path, units, root)
        if unit:
            by_unit.setdefault(unit, []).append(path)
    index = Index.create()
    found = {}
    for name, files in sorted(by_unit.items()):
        unit = index.parse(os.path.join(root, name), arguments_of(units[name], root),
                           options=TranslationUnit.PARSE_DETAILED_PROCESSING_RECORD)
        errors = [str(message) for message in unit.diagnostics if message.severity >= Diagnostic.Error]
        if errors:
            raise CannotRead("\n".join(errors))
        for path in files:
            absolute = os.path.join(root, path)
            with open(absolute, "rb") as file:
                source = file.read()
            sites = Sites(path, source, macros_of(unit, absolute))
            for cursor in unit.cursor.get_children():
                in_file = cursor.location.file and cursor.location.file.name == absolute
                if in_file and not cursor.kind.is_preprocessing():
                    sites.walk(cursor)
            sites.strings_of_macros()
            found[path] = Read(source, list(sites.found), sites.constexpr_at)
    return found
