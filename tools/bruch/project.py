"""What the build says of itself: which library a source stands in, and which tests link it."""

import functools
import json
import re
import shlex
import subprocess
from dataclasses import dataclass
from pathlib import Path, PurePosixPath

STRANGERS = 8  # tests of other rooms that are asked after those of the room itself
LAST_RESORT = "program"  # label of tests that run the whole program
OTHER_ENGINE = "postgres"  # label of tests that want a server
JUDGED_OTHERWISE = {"PASS_REGULAR_EXPRESSION", "FAIL_REGULAR_EXPRESSION", "WILL_FAIL", "DISABLED"}


@dataclass(frozen=True)
class Test:
    name: str
    command: tuple[str, ...]
    folder: str
    environment: tuple[str, ...]
    labels: frozenset[str]
    fixtures: frozenset[str]
    target: str
    programs: tuple[str, ...]  # what it runs: its own first, then others that it is built with
    libraries: frozenset[str]
    source: str  # its own, from the root

    def limit(self, normal: float) -> float:
        return max(5 * normal, 10)  # the shortest tests are done before a busy machine has noticed them


class Project:
    def __init__(self, tree: Path, build_folder: Path):
        self.tree, self.build_folder = tree, build_folder
        reply = build_folder / ".cmake/api/v1/reply"
        index = json.loads(max(reply.glob("index-*.json")).read_text())
        model = json.loads((reply / index["reply"]["codemodel-v2"]["jsonFile"]).read_text())
        self._targets = {}
        for target in model["configurations"][0]["targets"]:
            self._targets[target["id"]] = json.loads((reply / target["jsonFile"]).read_text())
        self._compiled = {}
        for entry in json.loads((build_folder / "compile_commands.json").read_text()):
            self._compiled[entry["file"]] = shlex.split(entry["command"])
        self.fixtures: dict[str, tuple[str, ...]] = {}  # name of a fixture -> command that sets it up
        self.endings: dict[str, tuple[str, ...]] = {}
        self.tests = self._tests()

    # --- sources ---

    def compile_command(self, path: str) -> list[str] | None:
        """None for what isn't compiled on its own."""
        return self._compiled.get(str(self.tree / path))

    def object_of(self, path: str) -> str:
        command = self.compile_command(path)
        return command[command.index("-o") + 1]

    @functools.cache
    def _owners(self) -> dict[str, set[str]]:
        owners: dict[str, set[str]] = {}
        for identity, target in self._targets.items():
            for source in target.get("sources", []):
                owners.setdefault(source["path"], set()).add(identity)
        return owners

    # --- tests ---

    def tests_for(self, path: str, seconds: dict[str, float], killers: dict[str, int]) -> list[Test]:
        """Those that can notice a break of a source, in the order in which they are asked: on files before on a
        server, near before far, those that noticed much before, fast before slow."""
        owners = self._owners().get(path, set())
        linked = [test for test in self.tests if owners & test.libraries]
        inside = [test for test in linked if LAST_RESORT not in test.labels] or linked

        def order(test: Test) -> tuple:
            return (OTHER_ENGINE in test.labels, self._distance(path, test) > 1, -killers.get(test.name, 0),
                    self._distance(path, test), seconds.get(test.name, 1.0), test.name)

        ordered = sorted(inside, key=order)
        near = [test for test in ordered if self._distance(path, test) <= 1]
        far = [test for test in ordered if self._distance(path, test) > 1 and OTHER_ENGINE not in test.labels]
        chosen = set(near + far[:STRANGERS])
        return [test for test in ordered if test in chosen]

    @functools.cache
    def _distance(self, path: str, test: Test) -> int:
        """0 for a test that names the source, 1 for one of its folder or of those above, 2 for one of the room, 3 for
        others."""
        source, own = PurePosixPath(path), PurePosixPath(test.source)
        said = (self.tree / test.source).read_text() if test.source else ""
        if own.stem == f"test_{source.stem}" or f'"{source.with_suffix(".h")}"' in said:
            return 0
        if own.parent in ["tests" / folder for folder in source.parents if folder.name]:
            return 1
        return 2 if own.parts[:2] == ("tests", source.parts[0]) else 3

    def _tests(self) -> list[Test]:
        said = subprocess.run(["ctest", "--show-only=json-v1"], cwd=self.build_folder, check=True,
                              stdout=subprocess.PIPE).stdout
        programs = {}
        for identity, target in self._targets.items():
            if target["type"] == "EXECUTABLE":
                programs[str(self.build_folder / target["artifacts"][0]["path"])] = identity
        commands, found = self._commands(), []
        for entry in json.loads(said)["tests"]:
            properties = {one["name"]: one["value"] for one in entry.get("properties", [])}
            command = commands.get(entry["name"], ())
            for fixture in properties.get("FIXTURES_SETUP", []):
                self.fixtures[fixture] = command
            for fixture in properties.get("FIXTURES_CLEANUP", []):
                self.endings[fixture] = command
            own = [programs[word] for word in command if word in programs]
            if own and not JUDGED_OTHERWISE & properties.keys():
                found.append(self._test(entry["name"], command, properties, own[0]))
        return found

    def _test(self, name: str, command: tuple[str, ...], properties: dict, identity: str) -> Test:
        target, used = self._targets[identity], self._closure(identity)
        others = [self._targets[one] for one in sorted(used - {identity})]
        programs = [target] + [one for one in others if one["type"] == "EXECUTABLE"]
        sources = [one["path"] for one in target["sources"] if one["path"].endswith(".cpp")]
        return Test(name=name, command=command, folder=properties["WORKING_DIRECTORY"],
                    environment=tuple(properties.get("ENVIRONMENT", ())),
                    labels=frozenset(properties.get("LABELS", ())),
                    fixtures=frozenset(properties.get("FIXTURES_REQUIRED", ())), target=target["name"],
                    programs=tuple(one["artifacts"][0]["path"] for one in programs), libraries=frozenset(used),
                    source=next((one for one in sources if not one.startswith("build/")), ""))

    def _closure(self, identity: str) -> set[str]:
        used, waiting = set(), [identity]
        while waiting:
            one = waiting.pop()
            if one not in used:
                used.add(one)
                waiting += [link["id"] for link in self._targets[one].get("dependencies", [])]
        return used

    def _commands(self) -> dict[str, tuple[str, ...]]:
        """CTest itself tells a command only when its program has been built."""
        found = {}
        for file in self.build_folder.rglob("CTestTestfile.cmake"):
            for name, words in re.findall(r"^add_test\(\[=\[(.*?)\]=\] (.*)\)$", file.read_text(), re.MULTILINE):
                found[name] = tuple(shlex.split(words))
        return found
