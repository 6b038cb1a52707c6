#!/usr/bin/python3
"""Holds the sources to the layers: who may include whom, and which libraries each layer may name.

Usage: check_sources.py ROOT QT_INCLUDE_FOLDER, the one that QtCore is in
Prints one line per fault and exits 1 when there is any.
"""
import os
import re
import sys

# Folder: the folders of ours it may include from, and the library headers it may name besides the standard ones.
LAYERS = {
    "pdf": (("pdf",), r"Q\w+|qpdf/.+|harfbuzz/.+|fontconfig/.+|unicode/.+|zlib\.h"),
    "reader": (("pdf", "reader"), r"Q\w+|poppler-.+|seccomp\.h"),
    "core": (("pdf", "core"), r"Q\w+|unicode/.+"),
    "app": (("core", "app"), r"Q\w+"),
    "window_support": (("window_support",), r"Q\w+"),
    "ui": (("core", "app", "window_support", "ui"), r"Q\w+"),
    "packaging": ((), r"Q\w+"),
    "examples": (("pdf", "core", "examples"), r"Q\w+"),
    "fuzz": (("pdf", "reader", "core", "app", "ui", "fuzz"), r"Q\w+"),
}
# Parts of Qt that a layer may see besides Qt Core.
FURTHER_QT = {"app": ("QtGui",), "window_support": ("QtGui", "QtWidgets"),
              "ui": ("QtDBus", "QtGui", "QtNetwork", "QtSvg", "QtWidgets"),
              "packaging": ("QtGui", "QtSvg")}
# Lower case words, perhaps in a folder of the system: <vector>, <cstdint>, <unistd.h>, <sys/stat.h>.
STANDARD = re.compile(r"(sys/)?[a-z_0-9]+(\.h)?\Z")
LIBRARIES = re.compile(r"(zlib|seccomp)\.h\Z")
INCLUDE = re.compile(r'\s*#\s*include\s*([<"])([^>"]+)[>"]')
UNFINISHED = re.compile(r"\b(TODO|FIXME|XXX)\b")


def is_own_header_first(path, lines):
    """A source whose header lies beside it includes that header before any other."""
    header = os.path.splitext(path)[0] + ".h"
    includes = [match.group(2) for match in map(INCLUDE.match, lines) if match]
    return not path.endswith(".cpp") or header not in includes or includes[0] == header


def faults_of(path, text, qt_headers):
    """The faults of the source at `path`, which is relative to the root and begins with its layer and may include
    `qt_headers` of Qt."""
    layer = path.split("/", 1)[0]
    own_folders, libraries = LAYERS[layer]
    lines = text.splitlines()
    faults = []
    if path.endswith(".h") and "#pragma once" not in lines:
        faults.append(f"{path}: no #pragma once")
    if not is_own_header_first(path, lines):
        faults.append(f"{path}: its own header is not the first it includes")
    for number, line in enumerate(lines, 1):
        place = f"{path}:{number}"
        if UNFINISHED.search(line):
            faults.append(f"{place}: unfinished work is not kept in the sources")
        match = INCLUDE.match(line)
        if not match:
            continue
        quote, name = match.groups()
        if quote == '"':
            if name.split("/", 1)[0] not in own_folders:
                faults.append(f'{place}: {layer}/ may not include "{name}"')
        elif re.fullmatch(libraries, name):
            if name.startswith("Q") and name not in qt_headers:
                faults.append(f"{place}: <{name}> is not of the parts of Qt that {layer}/ may see")
        elif not STANDARD.match(name) or LIBRARIES.match(name):
            faults.append(f"{place}: {layer}/ may not include <{name}>")
    return faults


def sources_under(root):
    for layer in LAYERS:
        for folder, _, names in os.walk(os.path.join(root, layer)):
            for name in sorted(names):
                if name.endswith((".h", ".cpp")):
                    yield os.path.relpath(os.path.join(folder, name), root)


def main():
    root, qt = sys.argv[1:]

    def qt_headers(layer):
        parts = ("QtCore", *FURTHER_QT.get(layer, ()))
        return {name for part in parts for name in os.listdir(os.path.join(qt, part))}

    faults = []
    count = 0
    for path in sources_under(root):
        count += 1
        with open(os.path.join(root, path), encoding="utf-8") as file:
            faults += faults_of(path, file.read(), qt_headers(path.split("/")[0]))
    print("\n".join(faults + [f"{count} sources, {len(faults)} faults"]))
    return 1 if faults or count == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
