"""What is known from earlier runs, so that one that was stopped can go on.

A break that was noticed, or changed nothing, keeps its verdict as long as its source is the same. One that stayed
green is tried again with those tests that have changed since.
"""

import json
from dataclasses import asdict, dataclass, field
from pathlib import Path

KILLED, HUNG, SAME, EXPLAINED, SURVIVED, NO_BUILD = "killed", "hung", "same code", "explained", "survived", "no build"


@dataclass
class Verdict:
    name: str
    by: str = ""  # the test that noticed it
    passed: dict[str, str] = field(default_factory=dict)  # test -> mark of its unbroken programs
    source: str = ""  # mark of the unbroken source
    room: str = ""
    seconds: float = 0


@dataclass
class Measure:
    """A test on unbroken sources."""

    mark: str  # of its programs
    seconds: float
    green: bool


class Records:
    def __init__(self, folder: Path):
        self._verdicts_file, self._measures_file = folder / "verdicts.jsonl", folder / "measures.json"
        self.verdicts: dict[str, Verdict] = {}
        if self._verdicts_file.exists():
            for line in self._verdicts_file.read_text().splitlines():
                try:
                    entry = json.loads(line)
                except ValueError:
                    continue  # the last line of a run that was killed
                key = entry.pop("key")
                self.verdicts[key] = Verdict(**entry)
        self.measures: dict[str, Measure] = {}
        if self._measures_file.exists():
            for name, entry in json.loads(self._measures_file.read_text()).items():
                self.measures[name] = Measure(**entry)

    def keep(self, key: str, verdict: Verdict) -> None:
        self.verdicts[key] = verdict
        with open(self._verdicts_file, "a") as file:
            file.write(json.dumps({"key": key, **asdict(verdict)}) + "\n")

    def keep_measure(self, test: str, measure: Measure) -> None:
        self.measures[test] = measure
        whole = json.dumps({name: asdict(one) for name, one in self.measures.items()}, indent=1)
        fresh = self._measures_file.with_suffix(".new")
        fresh.write_text(whole)
        fresh.replace(self._measures_file)

    def settled(self, key: str, source_mark: str) -> Verdict | None:
        known = self.verdicts.get(key)
        if known and known.source == source_mark and known.name in (KILLED, HUNG, SAME, NO_BUILD):
            return known
        return None

    def passed(self, key: str, source_mark: str) -> dict[str, str]:
        known = self.verdicts.get(key)
        return known.passed if known and known.name == SURVIVED and known.source == source_mark else {}

    def killers(self, room: str) -> dict[str, int]:
        counts: dict[str, int] = {}
        for verdict in self.verdicts.values():
            if verdict.by and verdict.room == room:
                counts[verdict.by] = counts.get(verdict.by, 0) + 1
        return counts
