"""Which tests are asked first, and which at all."""

import types
import unittest

import support  # noqa: F401
from project import Project


class Distance(support.TemporaryFolder):
    def of(self, source: str, test: str, text: str = "") -> int:
        file = self.folder / test
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)
        project = Project.__new__(Project)  # without a build
        project.tree = self.folder
        return Project._distance.__wrapped__(project, source, types.SimpleNamespace(source=test))

    def test_a_test_that_names_the_source_is_nearest(self):
        self.assertEqual(self.of("app/shell/demo.cpp", "tests/app/test_demo.cpp"), 0)
        self.assertEqual(self.of("app/shell/demo.cpp", "tests/cash/test_x.cpp", '#include "app/shell/demo.h"'), 0)

    def test_a_folder_is_held_by_the_tests_of_those_above(self):
        self.assertEqual(self.of("app/shell/demo.cpp", "tests/app/shell/test_x.cpp"), 1)
        self.assertEqual(self.of("app/shell/demo.cpp", "tests/app/test_x.cpp"), 1)
        self.assertEqual(self.of("app/start.cpp", "tests/app/test_x.cpp"), 1)

    def test_others_are_far(self):
        self.assertEqual(self.of("app/shell/demo.cpp", "tests/app/watch/test_x.cpp"), 2)
        self.assertEqual(self.of("app/shell/demo.cpp", "tests/cash/test_x.cpp"), 3)
        self.assertEqual(self.of("app/shell/demo.cpp", "tests/test_x.cpp"), 3)


if __name__ == "__main__":
    unittest.main()
