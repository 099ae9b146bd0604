"""What tools/bruch breaks in a source, and what it leaves alone."""

import unittest

import support  # first: it brings the others into reach
from drawing import of_a_room
from explained import Explained, ListError
from places import breaks


def broken_lines(source: str, kind: str) -> list[str]:
    return [one.after for one in breaks("a/b.cpp", source) if one.kind == kind]


class Places(unittest.TestCase):
    def check(self, kind: str, source: str, *expected: str) -> None:
        self.assertEqual(broken_lines(source, kind), list(expected))

    def test_comparisons(self):
        self.check("comparison", "if (a < b) x = c == d;", "if (a <= b) x = c == d;", "if (a < b) x = c != d;")
        self.check("comparison", "std::map<int, QList<A>> m; template <class A> void f(); x->y; s << t;")

    def test_logic(self):
        self.check("logic", "if (a && b) f(std::move(c));", "if (a || b) f(std::move(c));")
        self.check("logic", "void f(A&& a, auto&& b) {}")

    def test_numbers(self):
        self.check("constant", "int a = 10'000; bool b = true;", "int a = 10001; bool b = true;",
                   "int a = 10'000; bool b = false;")
        self.check("constant", "double a = 0.5;", "double a = 1.5;")
        self.check("off by one", "f(size - 1, v[2]);", "f(size - 2, v[2]);", "f(size - 1, v[3]);")
        self.check("constant", "int a = 0x10; int b2 = c;")

    def test_signs(self):
        self.check("sign", "a = b + -c;", "a = b - -c;", "a = b + c;")
        self.check("sign", "if (!a) ++b;", "if (a) ++b;", "if (!a) --b;")
        self.check("sign", 'a = b + "x"; T* c; f(*d, a->b, a - b);', 'a = b + "x"; T* c; f(*d, a->b, a + b);')

    def test_calls(self):
        self.check("dropped call", "void f() { a.b(c)->d(); }", "void f() { ; }")
        self.check("dropped call", "if (a) b();", "if (a) ;")
        self.check("dropped call", "f(); x = g(); return h(); QTimer t(this); if (a(b)) c = 1; throw e();",)
        self.check("dropped call", "{ f([&] { g(); }); }", "{ ; }", "{ f([&] { ; }); }")

    def test_a_dropped_call_keeps_the_number_of_lines(self):
        source = "{\n  f(a,\n    b);\n}\n"
        one = next(one for one in breaks("a.cpp", source) if one.kind == "dropped call")
        self.assertEqual(one.applied(source).count("\n"), source.count("\n"))

    def test_arguments(self):
        self.check("swapped argument", "f(a.x(), b, 3, 4);", "f(b, a.x(), 3, 4);", "f(a.x(), b, 4, 3);")
        self.check("swapped argument", "void f(int a, int b); if (a, b) {} g(a, 1); h(a, a);")

    def test_texts(self):
        self.check("text", 'f("Name"); g("Ort");', 'f("Ort"); g("Ort");', 'f("Name"); g("Name");')
        self.check("text", r'f("%1 Schüsse\r\n");', r'f("%1 Schüssx\r\n");')
        self.check("text", "f(';');", "f('x');")
        self.check("text", '#include "a/b.h"\n// "Name"\n/* "Name" */')

    def test_returns(self):
        self.check("early return", "void A::f() { a(); b(); c(); }", "void A::f() { return; a(); b(); c(); }",
                   "void A::f() { a(); return; b(); c(); }")
        self.check("early return", "namespace n { A::A() : b_{1}, c_(2) { d(); } }",
                   "namespace n { A::A() : b_{1}, c_(2) { return; d(); } }")
        self.check("early return", "QString f(int a) const { return b; }",
                   "QString f(int a) const { return {}; return b; }")
        self.check("early return", "const A& f() { return a; } struct S { int a = 0; }; const int x{f(1)}; enum E { a };")

    def test_else(self):
        self.check("removed else", "if (a) b(); else c();", "if (a) b(); c();")

    def test_what_never_runs(self):
        self.assertEqual(breaks("a.cpp", 'static_assert(a == 1, "x"); using A = B<1>;'), [])

    def test_equal_lines_are_told_apart(self):
        found = breaks("a.cpp", "x = a < b;\nx = a < b;\n")
        self.assertEqual([one.before for one in found], ["x = a < b;"] * 2)
        self.assertEqual(len({one.key for one in found}), 2)
        self.assertEqual([one.line for one in found], [1, 2])


class Drawing(unittest.TestCase):
    SOURCE = 'void f() { if (a < b && c > 1) g("x"); else h(1); k(); }'

    def test_the_seed_decides(self):
        found = breaks("a.cpp", self.SOURCE)
        first = [one.key for one in of_a_room(found, 1)]
        self.assertEqual(first, [one.key for one in of_a_room(list(reversed(found)), 1)])
        self.assertEqual(sorted(first), sorted(one.key for one in found))
        self.assertTrue(any(first != [one.key for one in of_a_room(found, seed)] for seed in range(2, 9)))

    def test_kinds_take_turns(self):
        found = breaks("a.cpp", self.SOURCE)
        kinds = [one.kind for one in of_a_room(found, 1)]
        different = len(set(kinds))
        self.assertEqual(len(set(kinds[:different])), different)

    def test_other_sources_keep_their_lots(self):
        one, other = breaks("a.cpp", self.SOURCE), breaks("b.cpp", "x = y < z;")
        alone = [known.key for known in of_a_room(one, 1)]
        both = [known.key for known in of_a_room(one + other, 1) if known.path == "a.cpp"]
        self.assertEqual(sorted(alone), sorted(both))
        of_kind = [known.key for known in of_a_room(one, 1) if known.kind == "comparison"]
        self.assertEqual(of_kind, [known.key for known in of_a_room(one + other, 1)
                                   if known.kind == "comparison" and known.path == "a.cpp"])


class List(support.TemporaryFolder):
    ENTRY = "# why\na.cpp\n-   x = a <  b;\n+ x = a <= b;\nThey are never equal.\n"

    def listed(self, text: str) -> Explained:
        file = self.folder / "gleichwertig.txt"
        file.write_text(text)
        return Explained(file)

    def test_it_goes_by_contents(self):
        listed = self.listed(self.ENTRY)
        found = breaks("a.cpp", "\n\n   x = a < b;\n")
        self.assertEqual([listed.reason(one) for one in found], ["They are never equal."])
        self.assertEqual([listed.reason(one) for one in breaks("b.cpp", "x = a < b;")], [""])

    def test_what_matches_no_more_is_told(self):
        listed = self.listed(self.ENTRY)
        listed.meet(breaks("a.cpp", "x = a <= b;"))
        self.assertEqual([entry.reason for entry in listed.unmatched()], ["They are never equal."])
        listed.meet(breaks("a.cpp", "x = a < b;"))
        self.assertEqual(listed.unmatched(), [])

    def test_no_entry_without_a_reason(self):
        with self.assertRaises(ListError):
            self.listed("a.cpp\n- x = a < b;\n+ x = a <= b;\n")


if __name__ == "__main__":
    unittest.main()
