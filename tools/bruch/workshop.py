"""A copy of the sources with a build folder of its own, where things may be broken.

The copy is brought up to date by contents at each start, so a run that was killed leaves nothing behind. The folder
it is copied from is only read.
"""

import contextlib
import fcntl
import hashlib
import os
import shlex
import shutil
import subprocess
import tempfile
from pathlib import Path
from typing import Iterator

from children import run

BUILD_LIMIT = 900  # seconds for one step of the build; a compiler that hangs is a break that doesn't compile
PRESET = "dev"


class WorkshopError(Exception):
    """The unbroken sources can't be copied, configured or built."""


class Workshop:
    def __init__(self, root: Path, home: Path):
        """`root` holds the sources; `home` is this tool's own folder."""
        self.root, self.home = root, home
        self.tree = home / "tree"
        self.build_folder = self.tree / "build" / PRESET
        self.log = home / "build.log"
        self._broken: str | None = None
        home.mkdir(parents=True, exist_ok=True)
        self._lock = open(home / "lock", "w")
        try:
            fcntl.flock(self._lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except BlockingIOError:
            raise WorkshopError(f"another run works in {home}") from None

    # --- the copy ---

    def prepare(self) -> None:
        """Copies what differs, and has the build know it."""
        self._copy()
        query = self.build_folder / ".cmake/api/v1/query/codemodel-v2"
        query.parent.mkdir(parents=True, exist_ok=True)
        query.touch()
        if not (self.build_folder / "build.ninja").exists():
            self._must(["cmake", "--preset", PRESET], self.tree)
        self._must(["ninja", "build.ninja"], self.build_folder)
        if not any((self.build_folder / ".cmake/api/v1/reply").glob("index-*.json")):
            self._must(["cmake", "--preset", PRESET], self.tree)

    def _copy(self) -> None:
        listed = subprocess.run(["git", "ls-files", "-coz", "--exclude-standard"], cwd=self.root, check=True,
                                stdout=subprocess.PIPE).stdout.decode().split("\0")
        names = sorted({name for name in listed if name and (self.root / name).is_file()})
        for name in names:
            source, target = self.root / name, self.tree / name
            if not same_file(source, target):
                target.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, target)  # with a time of its own: the build shall see it
        wanted = set(names)
        for folder, folders, files in os.walk(self.tree):
            inside = Path(folder).relative_to(self.tree)
            if inside == Path("."):
                folders[:] = [name for name in folders if name != "build"]
            for name in files:
                if str(inside / name) not in wanted:
                    (self.tree / inside / name).unlink()

    def source(self, path: str) -> str:
        return (self.tree / path).read_bytes().decode()

    # --- breaking ---

    @contextlib.contextmanager
    def _holding(self, path: str, text: str, broken: str | None) -> Iterator[None]:
        """Inside, the source has another text, whatever ends it; `broken` is what it leaves to be mended."""
        file = self.tree / path
        before, broken_before = file.read_bytes(), self._broken
        try:
            file.write_bytes(text.encode())
            self._broken = broken
            yield
        finally:
            file.write_bytes(before)
            self._broken = broken_before

    def broken(self, path: str, text: str) -> contextlib.AbstractContextManager[None]:
        """Inside, the source has another text. The mend holds whatever ends it."""
        return self._holding(path, text, path)

    def mended(self, path: str, text: str) -> contextlib.AbstractContextManager[None]:
        """Within `broken`: the other way round for a moment."""
        return self._holding(path, text, None)

    # --- building ---

    def build(self, target: str) -> bool:
        """False where a broken source doesn't build; a sound one must."""
        command = ["ninja", target]
        if self._broken:
            return run(command, self.build_folder, self._environment(), BUILD_LIMIT, self.log) == 0
        self._must(command, self.build_folder)
        return True

    def _environment(self) -> dict[str, str]:
        environment = dict(os.environ)
        environment.setdefault("CCACHE_SLOPPINESS",
                               "pch_defines,time_macros,include_file_mtime,include_file_ctime")
        if self._broken:
            environment["CCACHE_READONLY"] = "1"  # nobody will want it again
        return environment

    def _must(self, command: list[str], folder: Path) -> None:
        if run(command, folder, self._environment(), 100 * BUILD_LIMIT, self.log) != 0:
            tail = "\n".join(self.log.read_text(errors="replace").splitlines()[-30:])
            raise WorkshopError(f"{shlex.join(command)} fails on the unbroken sources:\n{tail}")

    # --- comparing ---

    def code_of(self, object_file: Path) -> str:
        """A mark of what an object file does, without what it tells a debugger."""
        with tempfile.TemporaryDirectory(prefix="qk-bruch-") as folder:
            bare = Path(folder) / "bare.o"
            subprocess.run(["objcopy", "--strip-debug", str(object_file), str(bare)], check=True)
            return digest(bare)

    def optimised_code(self, command: list[str]) -> str:
        """The same after the optimiser, which makes many ways of saying one thing equal. Empty if it fails."""
        words = [word for word in command if "ccache" not in word and not word.startswith("-g")]
        with tempfile.TemporaryDirectory(prefix="qk-bruch-") as folder:
            bare = Path(folder) / "optimised.o"
            words[words.index("-o") + 1] = str(bare)
            words += ["-O2", "-g0", "-w"]
            if run(words, self.build_folder, self._environment(), BUILD_LIMIT, self.log) != 0:
                return ""
            return self.code_of(bare)


def same_file(one: Path, other: Path) -> bool:
    return other.is_file() and one.stat().st_size == other.stat().st_size and one.read_bytes() == other.read_bytes()


def digest(*files: Path) -> str:
    sums = hashlib.sha256()
    for file in files:
        sums.update(file.read_bytes() if file.is_file() else b"missing")
    return sums.hexdigest()[:16]
