"""The list of breaks that change nothing: gleichwertig.txt.

An entry is a paragraph of four lines: the source, "- " and its line as it stands, "+ " and the line when broken, the
reason. Lines are compared by contents, blanks squeezed; where they stand doesn't matter. "#" begins a comment.
"""

from dataclasses import dataclass
from pathlib import Path
from typing import Iterable

from places import Break, squeezed


class ListError(Exception):
    """The list can't be read."""


@dataclass(frozen=True)
class Entry:
    path: str
    before: str
    after: str
    reason: str


class Explained:
    def __init__(self, file: Path):
        self._entries: dict[tuple[str, str, str], Entry] = {}
        self._met: set[tuple[str, str, str]] = set()
        if not file.exists():
            return
        text = "\n".join(line for line in file.read_text().splitlines() if not line.startswith("#"))
        for number, paragraph in enumerate((one for one in text.split("\n\n") if one.strip()), 1):
            lines = paragraph.strip("\n").splitlines()
            if len(lines) != 4 or lines[1][:2] != "- " or lines[2][:2] != "+ " or not lines[3].strip():
                raise ListError(f"{file}: entry {number} isn't a source, a line with -, a line with +, a reason:\n"
                                + paragraph)
            entry = Entry(lines[0].strip(), squeezed(lines[1][2:]), squeezed(lines[2][2:]), lines[3].strip())
            self._entries[entry.path, entry.before, entry.after] = entry

    def reason(self, one: Break) -> str:
        """Empty for what isn't listed."""
        entry = self._entries.get((one.path, one.before, one.after))
        return entry.reason if entry else ""

    def paths(self) -> set[str]:
        return {entry.path for entry in self._entries.values()}

    def meet(self, known: Iterable[Break]) -> None:
        self._met.update((one.path, one.before, one.after) for one in known)

    def unmatched(self) -> list[Entry]:
        """Entries that fit no break of their source any more."""
        return [entry for key, entry in self._entries.items() if key not in self._met]
