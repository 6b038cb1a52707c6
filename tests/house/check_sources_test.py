#!/usr/bin/python3
"""Shows that check_sources.py finds what it looks for."""
import unittest

from check_sources import faults_of

QT_CORE = {"QString", "QList"}


def faults(path, *lines):
    return faults_of(path, "\n".join(lines), QT_CORE)


class CheckSources(unittest.TestCase):
    def test_takes_a_source_of_the_upper_layer_as_it_should_be(self):
        self.assertEqual(faults("core/A.cpp", '#include "core/A.h"', '#include "pdf/copy/CopyWriter.h"', "#include <QString>",
                                "#include <unicode/unistr.h>", "#include <vector>", "#include <csignal>"), [])

    def test_finds_the_upper_layer_in_the_lower_one(self):
        self.assertEqual(len(faults("pdf/copy/A.cpp", '#include "core/B.h"')), 1)

    def test_finds_an_arrow_back_between_the_rooms_of_a_layer(self):
        self.assertEqual(faults("pdf/copy/A.cpp", '#include "pdf/syntax/B.h"'), [])
        self.assertEqual(len(faults("pdf/syntax/A.cpp", '#include "pdf/copy/B.h"')), 1)
        self.assertEqual(len(faults("files/A.cpp", '#include "pdf/syntax/B.h"')), 1)
        self.assertEqual(len(faults("pdf/text/A.cpp", '#include "pdf/source/B.h"')), 1)
        self.assertEqual(len(faults("pdf/syntax/A.cpp", "#include <qpdf/QPDF.hh>")), 1)

    def test_finds_a_header_that_a_room_does_not_offer(self):
        self.assertEqual(len(faults("core/A.cpp", '#include "pdf/copy/ObjectCopier.h"')), 1)

    def test_finds_a_source_in_no_room(self):
        self.assertEqual(len(faults("pdf/A.cpp", "#include <vector>")), 1)
        self.assertEqual(len(faults("pdf/copies/A.cpp", "#include <vector>")), 1)

    def test_finds_a_path_that_names_no_layer(self):
        self.assertEqual(len(faults("core/A.cpp", '#include "B.h"')), 1)
        self.assertEqual(len(faults("core/A.cpp", '#include "../pdf/B.h"')), 1)

    def test_finds_qt_outside_its_core(self):
        self.assertEqual(len(faults("pdf/text/A.cpp", "#include <QImage>")), 1)
        self.assertEqual(len(faults("pdf/text/A.cpp", "#include <QtGui/QImage>")), 1)
        self.assertEqual(len(faults("core/A.cpp", "#  include <QWidget>")), 1)

    def test_finds_a_pdf_library_above_the_pdf_layer(self):
        for room, header in (("source", "qpdf/QPDF.hh"), ("text", "harfbuzz/hb.h"), ("text", "fontconfig/fontconfig.h"),
                             ("syntax", "zlib.h")):
            self.assertEqual(faults(f"pdf/{room}/A.cpp", f"#include <{header}>"), [], header)
            self.assertEqual(len(faults("core/A.cpp", f"#include <{header}>")), 1, header)

    def test_finds_calls_of_the_system_outside_of_its_rooms(self):
        for header in ("unistd.h", "signal.h", "sys/stat.h", "linux/seccomp.h"):
            for room in ("files", "pdf/viewing", "reader", "ui/desktop"):
                self.assertEqual(faults(f"{room}/A.cpp", f"#include <{header}>"), [], (room, header))
            for room in ("pdf/source", "core", "app", "window_support", "ui/shell", "examples"):
                self.assertEqual(len(faults(f"{room}/A.cpp", f"#include <{header}>")), 1, (room, header))

    def test_finds_the_reader_and_its_libraries_outside_of_it(self):
        for header in ("poppler-page.h", "seccomp.h"):
            self.assertEqual(faults("reader/A.cpp", f"#include <{header}>"), [], header)
            for layer in ("pdf/source", "core", "app", "fuzz"):
                self.assertEqual(len(faults(f"{layer}/A.cpp", f"#include <{header}>")), 1, (layer, header))
        self.assertEqual(len(faults("pdf/viewing/A.cpp", '#include "reader/B.h"')), 1)
        self.assertEqual(faults("fuzz/A.cpp", '#include "reader/B.h"'), [])

    def test_finds_a_header_that_can_come_in_twice(self):
        self.assertEqual(len(faults("core/A.h", "int a();")), 1)
        self.assertEqual(faults("core/A.h", "#pragma once", "int a();"), [])

    def test_finds_an_own_header_that_is_not_the_first(self):
        self.assertEqual(len(faults("core/A.cpp", "#include <vector>", '#include "core/A.h"')), 1)

    def test_finds_unfinished_work(self):
        self.assertEqual(len(faults("core/A.cpp", "// TO" + "DO: more")), 1)


if __name__ == "__main__":
    unittest.main()
