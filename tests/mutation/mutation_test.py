#!/usr/bin/python3
"""Tries the tool that breaks the code: on one source for what it finds there, and on a small project for what it tells.

Usage: mutation_test.py COMPILER
"""
import contextlib
import io
import os
import subprocess
import sys
import tempfile
import types
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.insert(0, os.path.join(ROOT, "scripts", "mutation"))
import main  # noqa: E402
from judging import Equivalents, Results, key_of  # noqa: E402
from mutants import lines_of  # noqa: E402
from reading import CannotRead, sites_in  # noqa: E402
from rooms import Room  # noqa: E402
from weave import at_fault, woven  # noqa: E402

COMPILER = sys.argv.pop(1) if len(sys.argv) > 1 else "c++"


def found_in(source, name="toy.cpp"):
    """The mutants of a source, which may be text alone, as (kind, changed line)."""
    with tempfile.TemporaryDirectory() as root:
        with open(os.path.join(root, name), "w", encoding="utf-8") as file:
            file.write(source)
        read = sites_in([name], {name: "c++ -std=c++20"}, root)[name]
    return read, {(mutant.kind, lines_of(read.source, mutant)[1]) for mutant in read.mutants}


class Kinds(unittest.TestCase):
    def holds(self, source, *expected):
        _, mutants = found_in(source)
        for one in expected:
            self.assertIn(one, mutants)

    def test_comparisons_are_negated_and_their_borders_moved(self):
        self.holds("bool f(int a, int b)\n{\n    return a < b;\n}\n",
                   ("condition negated", "return a >= b;"), ("border", "return a <= b;"))

    def test_equality_has_no_border(self):
        _, mutants = found_in("bool f(int a, int b)\n{\n    return a == b;\n}\n")
        self.assertIn(("condition negated", "return a != b;"), mutants)
        self.assertNotIn("border", {kind for kind, _ in mutants})

    def test_either_half_of_a_condition_is_left_out(self):
        self.holds("bool f(bool a, bool b)\n{\n    return a && b;\n}\n",
                   ("condition weakened", "return a;"), ("condition weakened", "return b;"))

    def test_calls_and_variables_that_decide_are_negated(self):
        self.holds("bool g();\nint f(bool a)\n{\n    if (g()) {\n        return 2;\n    }\n    return a ? 3 : 4;\n}\n",
                   ("condition negated", "if (!(g())) {"), ("condition negated", "return !(a) ? 3 : 4;"))

    def test_what_is_converted_to_bool_is_negated(self):
        self.holds("int f(const int *a)\n{\n    if (a) {\n        return 2;\n    }\n    return 3;\n}\n",
                   ("condition negated", "if (!(a)) {"))

    def test_operands_and_arguments_are_swapped(self):
        self.holds("int g(int, int);\nint f(int a, int b)\n{\n    return g(a, b) + (a - b);\n}\n",
                   ("operands swapped", "return g(b, a) + (a - b);"), ("operands swapped", "return g(a, b) + ((b) - (a));"))

    def test_statements_are_removed(self):
        self.holds("void g();\nint f(int a)\n{\n    while (a < 9) {\n        ++a;\n        g();\n        break;\n    }\n    return a;\n}\n",
                   ("statement removed", "while (a < 9) {"), ("statement removed", "++a;"), ("statement removed", "g();"))
        read, _ = found_in("void g();\nvoid f()\n{\n    g();\n    g();\n}\n")
        self.assertEqual(sum(mutant.kind == "statement removed" for mutant in read.mutants), 2)

    def test_a_return_is_removed_only_where_another_statement_follows(self):
        read, _ = found_in("int f(bool a)\n{\n    if (a) {\n        return 1;\n    }\n    return 2;\n}\n")
        removed = [lines_of(read.source, mutant)[0] for mutant in read.mutants if mutant.kind == "statement removed"]
        self.assertEqual(removed, ["if (a) { return 1;"])

    def test_constants_are_changed(self):
        self.holds("double f(int a)\n{\n    return a * 2.0 + 1'000;\n}\n", ("constant", "return a * 2.2 + 1'000;"),
                   ("constant", "return a * 2.0 + 1001;"), ("constant", "return a * 2.0 + 999;"))
        self.holds("const char *f(bool &a)\n{\n    a = true;\n    return \"ab\";\n}\n", ("constant", "a = false;"),
                   ("constant", 'return "a";'), ("constant", 'return "";'))
        self.holds("char f()\n{\n    return 'a';\n}\n", ("constant", "return 'b';"))

    def test_enumerators_become_others(self):
        self.holds("enum class E { one, two };\nE f()\n{\n    return E::two;\n}\n", ("enumerator", "return E::one;"))

    def test_functions_return_early(self):
        self.holds("bool f(int a)\n{\n    return a > 0;\n}\n", ("early return", "bool f(int a) { return true;"),
                   ("early return", "bool f(int a) { return false;"))
        self.holds("void g();\nvoid f()\n{\n    g();\n}\n", ("early return", "void f() { return;"))

    def test_what_the_compiler_has_to_know_is_left_alone(self):
        _, mutants = found_in("enum E { one = 1 };\nint a[3];\nstatic_assert(sizeof(a) > 2);\n"
                              "int f(int b)\n{\n    switch (b) {\n    case 4:\n        return b;\n    }\n    return b;\n}\n")
        self.assertEqual({line for _, line in mutants if line not in ("", "int f(int b) { return {};")}, set())

    def test_what_only_makes_it_quicker_is_left_alone(self):
        read, _ = found_in("struct S { S(int); ~S(); operator int() const; };\n"
                           "struct V { void reserve(int); void add(int); };\n"
                           "void f(V &v)\n{\n    v.reserve(S(4) + 5);\n    v.add(6);\n}\n")
        self.assertEqual({lines_of(read.source, mutant)[0] for mutant in read.mutants if mutant.kind != "early return"},
                         {"v.add(6);", "v.reserve(S(4) + 5); v.add(6);"})

    def test_the_arguments_of_min_and_max_are_not_swapped(self):
        for source in ("int max(int, int);\nint f(int a, int b)\n{\n    return max(a, b);\n}\n",
                       "struct P { int a, b; };\nint max(P);\nint f(int a, int b)\n{\n    return max({a, b});\n}\n"):
            _, mutants = found_in(source)
            self.assertNotIn("operands swapped", {kind for kind, _ in mutants})
        self.holds("struct P { int a, b; };\nint g(P);\nint f(int a, int b)\n{\n    return g({a, b});\n}\n",
                   ("operands swapped", "return g({b, a});"))

    def test_what_a_statement_gives_nobody_is_not_negated(self):
        _, mutants = found_in("struct S { S(int); ~S(); };\nbool g(const S &);\nvoid f()\n{\n    g(3);\n    g(4);\n    (void)g(5);\n}\n")
        self.assertNotIn("condition negated", {kind for kind, _ in mutants})

    def test_the_operands_of_a_sum_with_a_pointer_are_not_swapped(self):
        _, mutants = found_in("const char *f(const char *a, int b)\n{\n    return a + b;\n}\n")
        self.assertNotIn("operands swapped", {kind for kind, _ in mutants})
        self.holds("long f(const char *a, const char *b)\n{\n    return a - b;\n}\n", ("operands swapped", "return (b) - (a);"))

    def test_the_break_that_ends_a_switch_is_not_removed(self):
        read, _ = found_in("void g();\nvoid f(int a)\n{\n    switch (a) {\n    case 1:\n        g();\n        break;\n"
                           "    default:\n        break;\n    }\n}\n")
        removed = [lines_of(read.source, mutant)[0] for mutant in read.mutants if mutant.kind == "statement removed"]
        self.assertEqual([line for line in removed if "break" in line], ["g(); break;"])

    def test_macros_are_left_alone(self):
        _, mutants = found_in("#define LESS(a, b) ((a) < (b))\nbool f(int a)\n{\n    return LESS(a, 3);\n}\n")
        self.assertEqual({kind for kind, _ in mutants}, {"early return", "condition negated"} & {kind for kind, _ in mutants})

    def test_a_source_that_cannot_be_read_is_told(self):
        with self.assertRaises(CannotRead):
            found_in("int f( {\n")


class Weaving(unittest.TestCase):
    def woven_text(self, source):
        read, _ = found_in(source)
        return woven(read.source, dict(enumerate(read.mutants)), read.constexpr_at)

    def test_everything_found_is_woven_in(self):
        source = "int g(int, int);\nint f(int a, int b)\n{\n    if (a < b && b > 2) {\n        g(a, b);\n    }\n    return a - b;\n}\n"
        read, _ = found_in(source)
        text, places = woven(read.source, dict(enumerate(read.mutants)), read.constexpr_at)
        for number in range(len(read.mutants)):
            self.assertIn(f"tallyfoldMutant({number})".encode(), text)
            self.assertTrue(any(number in place.mutants for place in places))

    def test_constants_of_the_language_become_those_of_the_run(self):
        text, _ = self.woven_text("constexpr int most = 4;\nint f()\n{\n    return most;\n}\n")
        self.assertIn(b"const int most = (tallyfoldMutant", text)
        self.assertNotIn(b"constexpr", text)

    def test_what_is_converted_to_bool_stays_so(self):
        """The two sides of a choice have one type, and an optional made of a bool is never empty."""
        text, _ = self.woven_text("struct Maybe { explicit operator bool() const; Maybe(bool); };\n"
                                  "int f(Maybe a)\n{\n    if (!a) {\n        return 2;\n    }\n    return a ? 3 : 4;\n}\n")
        self.assertRegex(text, rb"if \(\(tallyfoldMutant\(\d+\) \? static_cast<bool>\(a\) : static_cast<bool>\(!a\)\)\)")
        self.assertRegex(text, rb"return \(tallyfoldMutant\(\d+\) \? static_cast<bool>\(!\(a\)\) : static_cast<bool>\(a\)\) \?")

    def test_a_mistake_is_due_to_the_innermost_mutant(self):
        source = "int f(int a)\n{\n    return a + (a - 3);\n}\n"
        read, _ = found_in(source)
        text, places = woven(read.source, dict(enumerate(read.mutants)), read.constexpr_at)
        blamed = at_fault(places, [text.index(b" ? (4)") + 4])
        self.assertEqual([lines_of(read.source, read.mutants[number])[1] for number in blamed], ["return a + (a - 4);"])


TOY = {
    "CMakeLists.txt": """
cmake_minimum_required(VERSION 3.25)
project(toy LANGUAGES CXX)
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
find_package(GTest REQUIRED)
add_library(toy STATIC toy/Toy.cpp)
target_include_directories(toy PUBLIC ${PROJECT_SOURCE_DIR})
add_executable(toy_tests tests/ToyTest.cpp)
target_link_libraries(toy_tests PRIVATE toy GTest::gtest_main)
""",
    "toy/Toy.h": """#pragma once
constexpr int most = 7;
int bounded(int value);
int forgotten(int value);
int looped(int value);
""",
    "toy/Toy.cpp": """#include "toy/Toy.h"
static_assert(most > 0);
int bounded(int value)
{
    return value > most ? most : value;
}
int forgotten(int value)
{
    return value * 3;
}
int looped(int value)
{
    int steps = 0;
    while (value != 0) {
        value /= 2;
        ++steps;
    }
    return steps;
}
""",
    "tests/ToyTest.cpp": """#include "toy/Toy.h"
#include <gtest/gtest.h>
TEST(Toy, IsBounded)
{
    EXPECT_EQ(bounded(6), 6);
    EXPECT_EQ(bounded(7), 7);
    EXPECT_EQ(bounded(8), 7);
}
TEST(Toy, FailsByItself)
{
    EXPECT_EQ(bounded(1), 2);
}
TEST(Toy, Loops)
{
    EXPECT_EQ(looped(5), 3);
}
""",
}
ROOM = Room(("toy/*.cpp", "toy/*.h"), ("toy_tests",), (), 1000, 100)


class Toy(unittest.TestCase):
    """A project in which all is known: built once, broken in all places."""

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.root = cls.folder.name
        for name, text in TOY.items():
            cls.write(name, text)
        base = os.path.join(cls.root, "build", "release")
        for command in (["cmake", "-S", cls.root, "-B", base, "-G", "Ninja", f"-DCMAKE_CXX_COMPILER={COMPILER}"],
                        ["cmake", "--build", base]):
            result = subprocess.run(command, capture_output=True, text=True)
            if result.returncode != 0:
                raise RuntimeError(result.stdout + result.stderr)
        cls.is_good, cls.told = cls.mutate()

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    @classmethod
    def write(cls, name, text):
        path = os.path.join(cls.root, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)

    @classmethod
    def mutate(cls, changed=None, until=float("inf")):
        options = types.SimpleNamespace(changed=changed, jobs=2, sample=None, seed=3, survivors=False)
        out = io.StringIO()
        with contextlib.redirect_stdout(out):
            is_good = main.mutate(cls.root, "toy", ROOM, options, until)
        return is_good, out.getvalue()

    def test_what_no_test_notices_is_told_with_its_line(self):
        self.assertIn("toy/Toy.cpp:9: in forgotten (operator, no test comes here)\n  - return value * 3;\n  + return value / 3;",
                      self.told)
        self.assertFalse(self.is_good)

    def test_what_a_test_notices_is_counted_and_not_told(self):
        self.assertNotIn("return value <= most", self.told)
        self.assertRegex(self.told, r"toy: \d+ broken, 0 of them the same as before, [1-9]\d* noticed")

    def test_a_border_without_a_difference_survives(self):
        self.assertIn("return value >= most ? most : value;", self.told)

    def test_an_endless_loop_is_noticed_by_the_time_it_takes(self):
        self.assertRegex(self.told, r"\([1-9]\d* by the time limit")
        self.assertNotIn("value /= 2;", self.told)

    def test_what_cannot_be_chosen_is_left_out_and_told(self):
        self.assertRegex(self.told, r"places can be broken, [1-9]\d* cannot be chosen")

    def test_a_test_that_fails_by_itself_notices_nothing(self):
        self.assertIn("left out, for it fails without a mutant: Toy.FailsByItself", self.told)

    def test_an_interrupted_run_goes_on(self):
        path = os.path.join(self.root, "build", "mutate", "toy", "results-3")
        with open(path, encoding="utf-8") as file:
            whole = file.read()
        tried = []
        original, main.trials.tried = main.trials.tried, lambda *arguments: tried.append(arguments[0]) or original(*arguments)
        self.addCleanup(setattr, main.trials, "tried", original)
        lines = whole.splitlines(keepends=True)
        noticed = [line for line in lines[1:] if not line.endswith('""]\n')]
        with open(path, "w", encoding="utf-8") as file:
            file.write("".join(line for line in lines if line != noticed[0]) + noticed[0][:3])
        self.assertEqual(self.mutate()[1].splitlines()[-1], self.told.splitlines()[-1])
        self.assertEqual(len(tried), 1)

    def test_nothing_is_begun_when_it_is_late(self):
        os.remove(os.path.join(self.root, "build", "mutate", "toy", "results-3"))
        _, told = self.mutate(until=0)
        self.addCleanup(self.mutate)
        self.assertRegex(told, r"[1-9]\d* not tried for want of time")

    def test_only_lines_that_changed_are_broken(self):
        git = ["git", "-c", "user.name=a", "-c", "user.email=a@example", "-C", self.root]
        subprocess.run([*git, "init", "-q"], check=True)
        is_good, told = self.mutate(changed="HEAD")
        self.assertTrue(is_good)
        self.assertIn("there is no base HEAD", told)
        subprocess.run([*git, "add", "CMakeLists.txt", "toy", "tests"], check=True)
        subprocess.run([*git, "commit", "-q", "-m", "a"], check=True)
        is_good, told = self.mutate(changed="HEAD")
        self.assertTrue(is_good)
        self.assertIn("nothing differs from HEAD", told)
        self.write("toy/Toy.cpp", TOY["toy/Toy.cpp"].replace("value * 3", "value * 4"))
        self.addCleanup(self.write, "toy/Toy.cpp", TOY["toy/Toy.cpp"])
        is_good, told = self.mutate(changed="HEAD")
        self.assertFalse(is_good)
        self.assertIn("return value * 5;", told)
        self.assertNotIn("return value >= most", told)


class Judging(unittest.TestCase):
    def test_a_mutant_that_changes_nothing_is_known_wherever_its_line_moves(self):
        read, _ = found_in("int f(int a)\n{\n    return a > 3 ? 3 : a; // Bounded.\n}\n")
        border = next(mutant for mutant in read.mutants if mutant.kind == "border")
        with tempfile.NamedTemporaryFile("w", suffix=".tsv") as file:
            file.write("# File, function, line, changed, reason\n" + "\t".join((*key_of(read.source, border), "Both are three.")) + "\n")
            file.flush()
            equivalents = Equivalents(file.name)
        moved, _ = found_in("\n\nint f(int a)\n{\n        return a > 3 ? 3 : a;\n}\n")
        border = next(mutant for mutant in moved.mutants if mutant.kind == "border")
        self.assertEqual(equivalents.reason(moved.source, border), "Both are three.")
        self.assertEqual(equivalents.unused({key_of(moved.source, border)}, ["toy.cpp"]), [])
        self.assertEqual(len(equivalents.unused(set(), ["toy.cpp"])), 1)

    def test_an_entry_without_a_reason_is_refused(self):
        with tempfile.NamedTemporaryFile("w", suffix=".tsv") as file:
            file.write("a.cpp\tf\ta\tb\t\n")
            file.flush()
            with self.assertRaises(ValueError):
                Equivalents(file.name)

    def test_results_of_other_sources_are_forgotten(self):
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "results")
            Results(path, {"sources": 1}).add(5, "Toy.Test")
            self.assertEqual(Results(path, {"sources": 1}).of, {5: "Toy.Test"})
            self.assertEqual(Results(path, {"sources": 2}).of, {})


class RealEquivalents(unittest.TestCase):
    def test_the_list_can_be_read(self):
        path = os.path.join(ROOT, "tests", "mutation", "equivalents.tsv")
        self.assertTrue(os.path.exists(path))
        Equivalents(path)


if __name__ == "__main__":
    unittest.main()
