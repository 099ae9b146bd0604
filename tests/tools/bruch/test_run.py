"""The whole command on a small project of its own."""

import json
import signal
import subprocess
import sys
import unittest

import support

PRESETS = {"version": 3, "configurePresets": [
    {"name": "dev", "generator": "Ninja", "binaryDir": "${sourceDir}/build/${presetName}",
     "cacheVariables": {"CMAKE_BUILD_TYPE": "Debug", "CMAKE_EXPORT_COMPILE_COMMANDS": "ON"}}]}
SAMPLE = {
    "CMakePresets.json": json.dumps(PRESETS),
    ".gitignore": "/build/\n",
    "CMakeLists.txt": """cmake_minimum_required(VERSION 3.21)
project(sample CXX)
enable_testing()
include_directories(.)
add_library(counting STATIC counting/counting.cpp)
foreach(name test_counting test_nothing)
  add_executable(${name} tests/counting/${name}.cpp)
  target_link_libraries(${name} PRIVATE counting)
  add_test(NAME ${name} COMMAND ${name})
endforeach()
""",
    "counting/counting.h": "int larger(int one, int other);\nint sumUpTo(int last);\nint unasked(int value);\n",
    "counting/counting.cpp": """#include "counting/counting.h"

int larger(int one, int other) {
  return one > other ? one : other;
}

int sumUpTo(int last) {
  return last * (last + 1) / 2;
}

int unasked(int value) {
  return value + 70;
}
""",
    "tests/counting/test_counting.cpp": """#include "counting/counting.h"

int main() {
  return larger(3, 2) == 3 && larger(2, 3) == 3 && sumUpTo(4) == 10 ? 0 : 1;
}
""",
    "tests/counting/test_nothing.cpp": "int main() {}\n",
    "tools/bruch/gleichwertig.txt": """counting/counting.cpp
- return value + 70;
+ return value - 70;
Nobody asks for it.

counting/counting.cpp
- return value + 80;
+ return value - 80;
It is gone.
""",
}
NOBODY_NOTICES = {"return value + 71;", "return {}; return value + 70;"}


class Run(support.TemporaryFolder):
    def setUp(self):
        super().setUp()
        for name, text in SAMPLE.items():
            file = self.folder / name
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text(text)
        subprocess.run(["git", "init", "-q"], cwd=self.folder, check=True)

    def start(self, *words: str) -> subprocess.Popen:
        return subprocess.Popen([sys.executable, "-B", str(support.TOOL), *words], cwd=self.folder, text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT)

    def said(self, *words: str, status: int = 0) -> str:
        process = self.start(*words)
        text = process.communicate()[0]
        self.assertEqual(process.returncode, status, text)
        return text

    def check_unharmed(self) -> None:
        for root in (self.folder, self.folder / "build/bruch/tree"):
            self.assertEqual({name: (root / name).read_text() for name in SAMPLE}, SAMPLE)

    def survivors(self, text: str) -> set[str]:
        return {line[2:] for line in text.partition("stayed green")[2].partition("explained, but")[0].splitlines()
                if line.startswith("+ ")}

    def verdicts(self) -> list[str]:
        return (self.folder / "build/bruch/verdicts.jsonl").read_text().splitlines()

    def test_what_is_noticed_and_what_is_not(self):
        text = self.said("--seed", "1", str(self.folder / "counting/counting.cpp"))
        self.assertEqual(self.survivors(text), NOBODY_NOTICES, text)
        self.assertIn("comparison: same code", text)  # the greater of two equal ones is either
        self.assertIn(" killed by test_counting", text)
        self.assertNotIn("by test_nothing", text)
        self.assertRegex(text, r"all +11 +7 +1 +1 +2\n")
        self.assertEqual(text.partition("no such break exists any more: ")[2].splitlines(),
                         ["counting/counting.cpp", "- return value + 80;", "+ return value - 80;"], text)
        self.check_unharmed()

    def test_a_new_test_notices_what_survived(self):
        self.said("--seed", "1", "counting")
        fresh = SAMPLE["tests/counting/test_counting.cpp"].replace("== 10", "== 10 && unasked(1) == 71")
        (self.folder / "tests/counting/test_counting.cpp").write_text(fresh)
        before = len(self.verdicts())
        text = self.said("--seed", "1", "counting")
        self.assertIn("nothing stayed green", text)
        self.assertEqual(len(self.verdicts()) - before, len(NOBODY_NOTICES), text)

    def test_a_red_test_proves_nothing(self):
        (self.folder / "tests/counting/test_nothing.cpp").write_text("int main() { return 1; }\n")
        text = self.said("--seed", "1", "counting")
        self.assertEqual(self.survivors(text), NOBODY_NOTICES, text)
        self.assertIn("red on unbroken sources, and not asked: test_nothing", text)

    def test_a_red_that_does_not_repeat_proves_nothing(self):
        (self.folder / "tests/counting/test_nothing.cpp").write_text("""#include <fstream>
#include "counting/counting.h"
int main() {
  int runs = 0;
  std::ifstream("runs") >> runs;
  std::ofstream("runs") << runs + 1;
  return runs == 1 && larger(1, 1) <= 1;
}
""")
        text = self.said("--seed", "1", "counting")
        self.assertNotIn("by test_nothing", text)
        self.assertEqual(self.survivors(text), NOBODY_NOTICES, text)
        self.assertIn("red once, but not again on the same break: test_nothing", text)

    def test_stopped_it_tells_what_it_has_and_goes_on(self):
        whole = self.said("--seed", "7", "counting")
        (self.folder / "build/bruch/verdicts.jsonl").unlink()
        process = self.start("--seed", "7", "counting")
        head = ""
        while "[3/" not in head:
            line = process.stdout.readline()
            self.assertTrue(line, head)
            head += line
        process.send_signal(signal.SIGINT)
        text = head + process.communicate()[0]
        self.assertEqual(process.returncode, 130, text)
        self.assertIn("stopped; the same seed goes on", text)
        self.assertRegex(text, r"all +[3-9] ")
        self.check_unharmed()
        again = self.said("--seed", "7", "counting")
        self.assertEqual(self.survivors(again), self.survivors(whole))
        keys = [json.loads(line)["key"] for line in self.verdicts()]
        self.assertEqual(len(keys), len(set(keys)), "one was tried twice")

    def test_no_more_than_asked_for(self):
        text = self.said("--seed", "1", "--anzahl", "2", "counting")
        self.assertRegex(text, r"all +2 ")
        self.assertIn("nothing and nowhere", self.said("nothing and nowhere", status=1))

    def test_sources_that_do_not_build_are_told(self):
        (self.folder / "counting/counting.cpp").write_text("int larger() { return nonsense; }\n")
        self.assertIn("fails on the unbroken sources", self.said("counting", status=1))

    def test_one_run_at_a_time(self):
        first = self.start("--seed", "1", "counting")
        first.stdout.readline()
        self.assertIn("another run works", self.said("--seed", "1", "counting", status=1))
        first.send_signal(signal.SIGTERM)
        text = first.communicate()[0]
        self.assertEqual(first.returncode, 130, text)


if __name__ == "__main__":
    unittest.main()
