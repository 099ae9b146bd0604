"""Tries one break: builds it, asks the tests one by one, stops at the first that notices."""

import os
import re
import shutil
import subprocess
import tempfile
import time
from pathlib import Path

import children
from places import Break
from project import Project, Test
from records import HUNG, KILLED, NO_BUILD, SAME, SURVIVED, Measure, Records, Verdict
from workshop import Workshop, digest

AT_A_TIME = 6
RED_LINE = re.compile(rb"^(FAIL!|XPASS)  : ", re.MULTILINE)  # Qt Test goes on after it, though all is decided


class Trial:
    def __init__(self, workshop: Workshop, project: Project, records: Records):
        self.workshop, self.project, self.records = workshop, project, records
        self.red: set[str] = set()  # tests that fail on unbroken sources; they prove nothing
        self.shaky: set[str] = set()  # tests that were red on a break once, and green on the same the next time
        self._checked: set[str] = set()
        self._codes: dict[str, str] = {}
        self._runtime = Path(tempfile.mkdtemp(prefix="qk-bruch-"))
        self._running: set[str] = set()  # fixtures

    def close(self) -> None:
        for fixture in self._running:
            if fixture in self.project.endings:
                subprocess.run(self.project.endings[fixture], check=False, stdin=subprocess.DEVNULL)
        shutil.rmtree(self._runtime, ignore_errors=True)

    # --- one break ---

    def judge(self, one: Break, room: str) -> Verdict:
        begin = time.monotonic()
        sound = self.workshop.source(one.path)
        mark = digest(self.workshop.tree / one.path)
        known = self.records.settled(one.key, mark)
        if known:
            return known
        tests = self.project.tests_for(one.path, self._seconds(), self.records.killers(room))
        passed = dict(self.records.passed(one.key, mark))
        if passed and not self._unasked(tests, passed):
            return self.records.verdicts[one.key]
        verdict = self._verdict(one, sound, tests, passed)
        verdict.source, verdict.room, verdict.passed = mark, room, passed
        verdict.seconds = round(time.monotonic() - begin, 1)
        self.records.keep(one.key, verdict)
        return verdict

    def _unasked(self, tests: list[Test], passed: dict[str, str]) -> list[Test]:
        """Those that have changed, or came, since the break stayed green."""
        for test in tests:
            self._measured(test)
        return [test for test in tests
                if test.name not in self.red and passed.get(test.name) != self.records.measures[test.name].mark]

    def _verdict(self, one: Break, sound: str, tests: list[Test], passed: dict[str, str]) -> Verdict:
        target = self.project.object_of(one.path)
        if one.path not in self._codes:
            self.workshop.build(target)
            self._codes[one.path] = self.workshop.code_of(self.workshop.build_folder / target)
        if tests:
            self._measured(tests[0])
        with self.workshop.broken(one.path, one.applied(sound)):
            if not self.workshop.build(target):
                return Verdict(NO_BUILD)
            if self.workshop.code_of(self.workshop.build_folder / target) == self._codes[one.path]:
                return Verdict(SAME)
            built: set[str] = set()
            for test in tests:
                if test.name not in self._checked:
                    self._measure_next(tests, one.path, sound)
                    built.clear()
                if test.name in self.red or passed.get(test.name) == self.records.measures[test.name].mark:
                    continue
                if test.target not in built and not self.workshop.build(test.target):
                    return Verdict(NO_BUILD)
                built.add(test.target)
                verdict = self._asked(test)
                if verdict:
                    return verdict
                passed[test.name] = self.records.measures[test.name].mark
            command = self.project.compile_command(one.path)
            after = self.workshop.optimised_code(command)
        return Verdict(SAME if after and after == self.workshop.optimised_code(command) else SURVIVED)

    def _asked(self, test: Test) -> Verdict | None:
        measure = self.records.measures[test.name]
        if self._mark(test) == measure.mark:
            return None  # the linker took nothing of the broken source into it
        status = self._run(test, test.limit(measure.seconds))
        if status == 0:
            return None
        if self._run(test, test.limit(measure.seconds)) == 0:
            self.shaky.add(test.name)
            return None  # what notices, notices again; the first time something else was wrong, or the machine busy
        return Verdict(HUNG if status == children.HUNG else KILLED, by=test.name)

    # --- tests ---

    def _measure_next(self, tests: list[Test], path: str, sound: str) -> None:
        """A few at a time: mending and breaking again costs a build each."""
        with self.workshop.mended(path, sound):
            for test in [one for one in tests if one.name not in self._checked][:AT_A_TIME]:
                self._measured(test)

    def _measured(self, test: Test) -> None:
        """Once a run: is the test green on unbroken sources, and how long does it take?"""
        if test.name in self._checked:
            return
        self.workshop.build(test.target)
        mark, known = self._mark(test), self.records.measures.get(test.name)
        if not known or known.mark != mark or not known.green:
            begin = time.monotonic()
            status = self._run(test, 600)
            self.records.keep_measure(test.name, Measure(mark, time.monotonic() - begin, status == 0))
        if not self.records.measures[test.name].green:
            self.red.add(test.name)
        self._checked.add(test.name)

    def _seconds(self) -> dict[str, float]:
        return {name: measure.seconds for name, measure in self.records.measures.items()}

    def _mark(self, test: Test) -> str:
        return digest(*(self.workshop.build_folder / program for program in test.programs))

    def _run(self, test: Test, limit: float) -> int:
        self._set_up(test)
        room = Path(tempfile.mkdtemp(prefix="qk-bruch-"))
        room.chmod(0o755)  # some start servers that run as users of their own
        environment = dict(os.environ, TMPDIR=str(room), XDG_RUNTIME_DIR=str(self._runtime))
        environment.update(line.split("=", 1) for line in test.environment)
        try:
            return children.run(list(test.command), Path(test.folder), environment, limit,
                                self.workshop.home / "test.log", RED_LINE)
        finally:
            shutil.rmtree(room, ignore_errors=True)

    def _set_up(self, test: Test) -> None:
        for fixture in test.fixtures - self._running:
            self._running.add(fixture)
            subprocess.run(self.project.fixtures[fixture], check=True, stdin=subprocess.DEVNULL,
                           stdout=subprocess.DEVNULL)
