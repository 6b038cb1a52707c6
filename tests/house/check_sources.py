#!/usr/bin/python3
"""Holds the sources to their rooms: who may include whom, and which libraries each room may name.

Usage: check_sources.py ROOT QT_INCLUDE_FOLDER, the one that QtCore is in
Prints one line per fault and exits 1 when there is any.
"""
import os
import re
import sys

NONE = r"(?!)"
# What the rooms of pdf/ offer to those outside of it.
PDF = ("pdf/copy/CopyVerifier.h", "pdf/copy/CopyWriter.h", "pdf/copy/PageLabel.h", "pdf/source/Document.h",
       "pdf/source/PageGeometry.h", "pdf/syntax/ContentStream.h", "pdf/syntax/Geometry.h", "pdf/syntax/NumberFormat.h", "pdf/text/Graphemes.h",
       "pdf/text/ShapedLine.h", "pdf/viewing/Bitmap.h", "pdf/viewing/PageReader.h", "pdf/viewing/ReaderMessages.h")
# Room: the rooms and headers of ours it may include, and the library headers it may name besides the standard ones.
ROOMS = {
    "files": (("files",), NONE),
    "pdf/log": (("pdf/log",), r"QLoggingCategory"),
    "pdf/syntax": (("files", "pdf/syntax"), r"QCryptographicHash|zlib\.h"),
    "pdf/source": (("files", "pdf/log", "pdf/syntax", "pdf/source"), r"Q\w+|qpdf/.+"),
    "pdf/text": (("pdf/log", "pdf/syntax", "pdf/text"), r"Q\w+|harfbuzz/.+|fontconfig/.+|unicode/.+"),
    "pdf/annotations": (("pdf/syntax", "pdf/source", "pdf/text", "pdf/annotations"), r"Q\w+|qpdf/.+"),
    "pdf/copy": (("files", "pdf/syntax", "pdf/source", "pdf/text", "pdf/annotations", "pdf/copy"), r"qpdf/.+"),
    "pdf/viewing": (("files", "pdf/log", "pdf/syntax", "pdf/viewing"), r"Q\w+"),
    "reader": (("files", *PDF, "reader"), r"Q\w+|poppler-.+|seccomp\.h"),
    "core": (("files", *PDF, "core"), r"Q\w+|unicode/.+|openssl/evp\.h"),
    "app": (("files", "core", "app"), r"Q\w+"),
    "window_support": (("window_support",), r"Q\w+"),
    "ui/desktop": (("core", "app", "window_support", "ui"), r"Q\w+"),
    "ui": (("core", "app", "window_support", "ui"), r"Q\w+"),
    "packaging": ((), r"Q\w+"),
    "examples": (("files", "core", "examples"), r"Q\w+"),
    "fuzz": (("files", *PDF, "reader", "core", "app", "ui", "fuzz"), r"Q\w+"),
}
# Parts of Qt that a room may see besides Qt Core.
FURTHER_QT = {"app": ("QtGui",), "fuzz": ("QtGui",), "window_support": ("QtGui", "QtWidgets"),
              "ui/desktop": ("QtDBus", "QtGui", "QtWidgets"),
              "ui": ("QtGui", "QtNetwork", "QtSvg", "QtWidgets"),
              "packaging": ("QtGui", "QtSvg")}
# <vector>, <cstdint>
STANDARD = re.compile(r"[a-z_0-9]+\Z")
# <unistd.h>, <sys/stat.h>, and the bus of the session: what another system has otherwise, or not at all.
SYSTEM = re.compile(r"((sys|linux|netinet|arpa)/)?[a-z_0-9]+\.h\Z")
# The rooms that ask the system, so that the others need not be written anew for another one. The targets of fuzz/ play
# the other side of the reader's socket.
WITH_SYSTEM = ("files", "pdf/viewing", "reader", "ui/desktop", "fuzz")
INCLUDE = re.compile(r'\s*#\s*include\s*([<"])([^>"]+)[>"]')
UNFINISHED = re.compile(r"\b(TODO|FIXME|XXX)\b")


def is_own_header_first(path, lines):
    """A source whose header lies beside it includes that header before any other."""
    header = os.path.splitext(path)[0] + ".h"
    includes = [match.group(2) for match in map(INCLUDE.match, lines) if match]
    return not path.endswith(".cpp") or header not in includes or includes[0] == header


def room_of(path):
    """The room that `path`, relative to the root, lies in; None for a folder that is none."""
    return next((room for room in ROOMS if path.startswith(room + "/")), None)


def may_include(rooms_and_headers, name):
    """Whether `name` is one of these headers, or lies in one of these rooms."""
    return any(name == item or name.startswith(item + "/") for item in rooms_and_headers)


def faults_of(path, text, qt_headers):
    """The faults of the source at `path`, which is relative to the root and lies in a room and may include
    `qt_headers` of Qt."""
    room = room_of(path)
    if room is None:
        return [f"{path}: lies in no room"]
    own, libraries = ROOMS[room]
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
            if not may_include(own, name):
                faults.append(f'{place}: {room}/ may not include "{name}"')
        elif re.fullmatch(libraries, name):
            if name.startswith("Q") and name not in qt_headers:
                faults.append(f"{place}: <{name}> is not of the parts of Qt that {room}/ may see")
        elif SYSTEM.match(name) and room in WITH_SYSTEM and name != "zlib.h" and name != "seccomp.h":
            continue
        elif not STANDARD.match(name):
            faults.append(f"{place}: {room}/ may not include <{name}>")
    return faults


def sources_under(root):
    for top in sorted({room.split("/")[0] for room in ROOMS}):
        for folder, _, names in os.walk(os.path.join(root, top)):
            for name in sorted(names):
                if name.endswith((".h", ".cpp")):
                    yield os.path.relpath(os.path.join(folder, name), root)


def main():
    root, qt = sys.argv[1:]

    def qt_headers(room):
        parts = ("QtCore", *FURTHER_QT.get(room, ()))
        return {name for part in parts for name in os.listdir(os.path.join(qt, part))}

    faults = []
    count = 0
    for path in sources_under(root):
        count += 1
        with open(os.path.join(root, path), encoding="utf-8") as file:
            faults += faults_of(path, file.read(), qt_headers(room_of(path)))
    print("\n".join(faults + [f"{count} sources, {len(faults)} faults"]))
    return 1 if faults or count == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
