"""One run: draws breaks, tries them, tells how it goes and what came of it."""

import random
from pathlib import Path
from typing import Iterator, TextIO

from drawing import of_a_room
from explained import Explained
from places import Break, breaks
from project import Project
from records import EXPLAINED, HUNG, KILLED, NO_BUILD, SAME, SURVIVED, Records, Verdict
from rooms import sources_of
from trial import Trial
from workshop import Workshop

COLUMNS = [KILLED, SAME, EXPLAINED, SURVIVED]


class Session:
    def __init__(self, root: Path, home: Path, out: TextIO):
        self.out = out
        self.workshop = Workshop(root, home)
        self.explained = Explained(root / "tools/bruch/gleichwertig.txt")
        self.results: list[tuple[str, Break, Verdict]] = []
        self.replaced = 0  # breaks that didn't compile
        self.trial: Trial | None = None

    def run(self, wanted: list[str], most: int, seed: int | None) -> None:
        seed = random.randrange(1, 10000) if seed is None else seed
        self._say(f"seed {seed}: preparing {self.workshop.tree}")
        self.workshop.prepare()
        project = Project(self.workshop.tree, self.workshop.build_folder)
        lots: dict[str, Iterator[Break]] = {}
        for room, paths in sources_of(self.workshop.tree, wanted).items():
            found = [one for path in paths if project.compile_command(path) for one in self._breaks(path)]
            lots[room] = of_a_room(found, seed) if found else iter(())
        self.trial = Trial(self.workshop, project, Records(self.workshop.home))
        try:
            while lots and len(self.results) < most:
                for room in list(lots):
                    if len(self.results) < most and not self._next_of(room, lots[room], most):
                        del lots[room]
        finally:
            self.trial.close()

    def _breaks(self, path: str) -> list[Break]:
        return breaks(path, self.workshop.source(path))

    def _next_of(self, room: str, lots: Iterator[Break], most: int) -> bool:
        """Tries the room's lots until one counts. False when it has no more."""
        for one in lots:
            verdict = Verdict(EXPLAINED) if self.explained.reason(one) else self.trial.judge(one, room)
            if verdict.name == NO_BUILD:
                self.replaced += 1
                continue
            self.results.append((room, one, verdict))
            by = f" by {verdict.by}" if verdict.by else ""
            self._say(f"[{len(self.results)}/{most}] {one.path}:{one.line} {one.kind}: {verdict.name}{by} "
                      f"({verdict.seconds:.0f} s)")
            return True
        return False

    # --- what came of it ---

    def report(self) -> None:
        survivors = [(one, verdict) for _, one, verdict in self.results if verdict.name == SURVIVED]
        self._say(f"\nstayed green: {len(survivors)}" if survivors else "\nnothing stayed green")
        for one, verdict in survivors:
            self._say(f"\n{one.path}:{one.line} {one.kind}, {len(verdict.passed)} tests\n- {one.before}\n+ {one.after}")
        self._tell_figures()
        if self.trial and self.trial.red:
            self._say("\nred on unbroken sources, and not asked: " + ", ".join(sorted(self.trial.red)))
        if self.trial and self.trial.shaky:
            self._say("\nred once, but not again on the same break: " + ", ".join(sorted(self.trial.shaky)))
        for path in self.explained.paths():
            if (self.workshop.tree / path).exists():
                self.explained.meet(self._breaks(path))
        for entry in self.explained.unmatched():
            self._say(f"\nexplained, but no such break exists any more: {entry.path}\n- {entry.before}\n+ {entry.after}")

    def _tell_figures(self) -> None:
        rooms: dict[str, list[Verdict]] = {}
        for room, _, verdict in self.results:
            rooms.setdefault(room, []).append(verdict)
        self._say("\n" + f"{'room':16} {'breaks':>7}" + "".join(f"{name:>11}" for name in COLUMNS))
        for room, verdicts in [*rooms.items(), ("all", [verdict for one in rooms.values() for verdict in one])]:
            counts = [sum(self._column(verdict) == name for verdict in verdicts) for name in COLUMNS]
            self._say(f"{room:16} {len(verdicts):7}" + "".join(f"{count:11}" for count in counts))
        hung = sum(verdict.name == HUNG for _, _, verdict in self.results)
        self._say(f"{hung} of those killed hung; {self.replaced} more didn't build, and don't count")

    @staticmethod
    def _column(verdict: Verdict) -> str:
        return KILLED if verdict.name == HUNG else verdict.name

    def _say(self, text: str) -> None:
        print(text, file=self.out, flush=True)
