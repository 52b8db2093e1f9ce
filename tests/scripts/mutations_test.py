"""What scripts/lib/mutations.py finds in a source, and what it leaves alone."""

import pathlib
import sys
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts/lib"))

from mutations import find_mutations  # noqa: E402


def edits(code, kind=""):
    """The lines that change, as they stand afterwards."""
    text = f"void f()\n{{\n    {code}\n}}\n"
    found = []

    for mutation in find_mutations("f.cpp", text):
        if kind in mutation.kind:
            changed = mutation.apply(text)
            found.append(" ".join(changed[len("void f()\n{\n") : -len("\n}\n")].split()))

    return found


class MutationsTest(unittest.TestCase):
    def test_turns_comparisons_and_moves_limits(self):
        self.assertEqual(edits("x = a < b;", "comparison"), ["x = a >= b;"])
        self.assertEqual(edits("x = a < b;", "limit"), ["x = a <= b;"])
        self.assertEqual(edits("x = a == b;", "comparison"), ["x = a != b;"])

    def test_knows_template_brackets_and_references(self):
        self.assertEqual(edits("std::vector<int> v;"), [])
        self.assertEqual(edits("template <typename T> class C;"), [])
        self.assertEqual(edits("auto&& x = y;"), [])

    def test_swaps_and_for_or(self):
        self.assertEqual(edits("x = a && b;", "and"), ["x = a || b;"])

    def test_changes_signs(self):
        self.assertEqual(edits("x = a - b;", "sign changed"), ["x = a + b;"])
        self.assertEqual(edits("f (-b);", "sign changed"), ["f (b);"])

    def test_doubles_constants(self):
        doubled = {"21": "42", "0": "1", "0.5f": "1.0f", "0.0": "1.0", "0xff10": "0xff50", "1.0e-6": "2e-06"}

        for number, other in doubled.items():
            self.assertEqual(edits(f"x = {number};", "constant"), [f"x = {other};"])

        self.assertEqual(edits("x1 = int64;", "constant"), [])

    def test_negates_what_a_function_returns(self):
        self.assertEqual(edits("return a < b;", "return"), ["return ! (a < b);"])
        self.assertEqual(edits("return a + 1;", "return"), ["return -(a + 1);"])
        self.assertEqual(edits("return true;", "truth"), ["return false;"])
        self.assertEqual(edits('return x == "a";', "return"), ['return ! (x == "a");'])

    def test_drops_calls_and_assignments(self):
        self.assertEqual(edits("a.b (c);", "dropped"), [";"])
        self.assertEqual(edits("if (a)\n        b->c (d);", "dropped"), ["if (a) ;"])
        self.assertEqual(edits("x[1] = 2;", "dropped"), [";"])
        self.assertEqual(edits("g ([this] { h(); });", "call dropped"), [";"])

    def test_keeps_declarations(self):
        self.assertEqual(edits("int x = 2;", "dropped"), [])
        self.assertEqual(edits("Type name (a);", "dropped"), [])
        self.assertEqual(edits("return f (a);", "dropped"), [])
        self.assertEqual(find_mutations("f.cpp", "\nC::C (int a)\n    : b (a)\n{\n}\n"), [])

    def test_leaves_out_what_is_no_code(self):
        self.assertEqual(edits("// a < 1"), [])
        self.assertEqual(edits('f ("a < 1");', "comparison"), [])
        self.assertEqual(edits("jassert (a < 1);"), [])
        self.assertEqual(find_mutations("f.cpp", "#define A 1\n#if JUCE_MAC\nint x = 2;\n#endif\n"), [])

    def test_takes_the_branch_of_this_system(self):
        found = find_mutations("f.cpp", "#if JUCE_MAC\nint x = 2;\n#else\nint x = 3;\n#endif\n")
        self.assertEqual([mutation.replacement for mutation in found], ["6"])


if __name__ == "__main__":
    unittest.main()
