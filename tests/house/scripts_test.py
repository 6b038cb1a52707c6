#!/usr/bin/python3
"""Shows that scripts/coverage counts what it says it counts, and that scripts/tidy forgets nothing that changed."""
import os
import sys
import unittest
from importlib.machinery import SourceFileLoader
from importlib.util import module_from_spec, spec_from_loader

sys.dont_write_bytecode = True
SCRIPTS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "scripts")


def script(name):
    loader = SourceFileLoader(name, os.path.join(SCRIPTS, name))
    module = module_from_spec(spec_from_loader(name, loader))
    loader.exec_module(module)
    return module


coverage = script("coverage")
tidy = script("tidy")


def line(number, count, *branches):
    return {"line_number": number, "count": count,
            "branches": [{"count": taken, "throw": throw} for taken, throw in branches]}


class Coverage(unittest.TestCase):
    def test_sums_the_instances_of_a_template(self):
        source = coverage.Source()
        source.add([line(3, 0), line(3, 2), line(4, 0), line(5, 1)])
        self.assertEqual(source.lines, {3: 2, 4: 0, 5: 1})
        self.assertEqual(source.uncovered(), [4])

    def test_leaves_out_branches_that_only_throw(self):
        source = coverage.Source()
        source.add([line(3, 1, (1, False), (0, False), (0, True))])
        source.add([line(3, 1, (1, False), (0, False), (0, True))])
        self.assertEqual(list(source.branches.values()), [2, 0])

    def test_writes_ranges(self):
        self.assertEqual(coverage.ranges([1, 3, 4, 5, 9]), "1, 3-5, 9")
        self.assertEqual(coverage.ranges([]), "")

    def test_holds_rooms_to_their_goal(self):
        good, bad = coverage.Source(), coverage.Source()
        good.add([line(number, 1) for number in range(9)] + [line(9, 0)])
        bad.add([line(1, 1), line(2, 0)])
        self.assertEqual(coverage.table({"core/A.cpp": good, "app/B.cpp": bad})[1], [])
        self.assertEqual(coverage.table({"core/A.cpp": bad, "pdf/text/B.cpp": bad})[1], ["core", "pdf/text"])


class Tidy(unittest.TestCase):
    def setUp(self):
        self.tree = tidy.Tree()
        self.tree.texts = {"a/A.cpp": b'#include "a/A.h"\n#include <vector>\n', "a/A.h": b'  # include "b/B.h"\n',
                           "b/B.h": b'#include "a/A.h"\n', "c/C.h": b"", "c/C.cpp": b'#include "c/C.h"\n'}

    def key(self, command="c++", base=b""):
        self.tree.closures = {}
        return tidy.key_of(self.tree, "a/A.cpp", command, base)

    def test_follows_includes_that_go_in_circles(self):
        self.assertEqual(self.tree.closure("a/A.cpp"), {"a/A.cpp", "a/A.h", "b/B.h"})

    def test_sees_every_change_that_matters(self):
        before = self.key()
        self.assertNotEqual(self.key(command="c++ -O2"), before)
        self.assertNotEqual(self.key(base=b"other checks"), before)
        self.tree.texts["c/C.h"] = b"int c;"
        self.assertEqual(self.key(), before)
        self.tree.texts["b/B.h"] += b"int b;"
        changed = self.key()
        self.assertNotEqual(changed, before)
        self.tree.texts["c/.clang-tidy"] = b"Checks: bugprone-*"
        self.assertEqual(self.key(), changed)
        self.tree.texts["a/.clang-tidy"] = b"Checks: bugprone-*"
        self.assertNotEqual(self.key(), changed)

    def test_begins_with_the_sources_that_changed_themselves(self):
        paths = ["a/A.cpp", "c/C.cpp"]
        self.assertEqual(tidy.affected(self.tree, paths, {"b/B.h", "c/C.cpp"}), ["c/C.cpp", "a/A.cpp"])
        self.assertEqual(tidy.affected(self.tree, paths, {"c/C.h"}), ["c/C.cpp"])


if __name__ == "__main__":
    unittest.main()
