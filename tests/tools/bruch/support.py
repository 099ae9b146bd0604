"""What the tests of tools/bruch share. Puts the tool's modules into reach."""

import shutil
import sys
import tempfile
import unittest
from pathlib import Path

TOOL = Path(__file__).resolve().parents[3] / "tools/bruch"
sys.path.insert(0, str(TOOL))
sys.dont_write_bytecode = True


class TemporaryFolder(unittest.TestCase):
    def setUp(self):
        self.folder = Path(tempfile.mkdtemp(prefix="qk-bruch-test-"))
        self.addCleanup(shutil.rmtree, self.folder)
