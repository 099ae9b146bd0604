"""What a command that hangs, or leaves others running, comes to."""

import os
import re
import subprocess
import sys
import time
import unittest

import support  # first: it brings the others into reach
import children


class Children(support.TemporaryFolder):
    def run_shell(self, script: str, limit: float, enough: re.Pattern[bytes] | None = None) -> int:
        return children.run(["sh", "-c", script], self.folder, dict(os.environ), limit, self.folder / "log", enough)

    def test_a_status_is_handed_back(self):
        self.assertEqual(self.run_shell("echo said; exit 3", 60), 3)
        self.assertEqual((self.folder / "log").read_text(), "said\n")

    def test_one_that_hangs_is_ended(self):
        self.assertEqual(self.run_shell("sleep 1000", 0.2), children.HUNG)

    def test_what_is_decided_is_not_waited_for(self):
        self.assertEqual(self.run_shell("echo FAIL; sleep 1000", 600, re.compile(b"^FAIL")), children.ENOUGH)

    def test_it_can_not_fill_the_disk(self):
        self.assertNotEqual(self.run_shell("truncate -s 3G filled", 60), 0)

    def test_its_orphans_end_too(self):
        script = (f"import sys; sys.path.insert(0, {str(support.TOOL)!r}); import children, os, pathlib\n"
                  "children.adopt_orphans()\n"
                  "children.run(['sh', '-c', 'setsid sleep 1000 & echo $! > pid; sleep 0.3'], pathlib.Path('.'),"
                  " dict(os.environ), 60, pathlib.Path('log'))\n")
        subprocess.run([sys.executable, "-c", script], cwd=self.folder, check=True)
        pid = int((self.folder / "pid").read_text())
        deadline = time.monotonic() + 60
        while os.path.exists(f"/proc/{pid}") and time.monotonic() < deadline:
            pass
        self.assertFalse(os.path.exists(f"/proc/{pid}"))


if __name__ == "__main__":
    unittest.main()
