"""Runs one command with a limit of time, and leaves nothing of it behind."""

import contextlib
import ctypes
import os
import re
import resource
import signal
import subprocess
import time
from pathlib import Path

MOST_MEMORY = 6 << 30
LARGEST_FILE = 2 << 30
PR_SET_CHILD_SUBREAPER = 36
HUNG, ENOUGH = -1000, -1001  # beside all exit statuses and signals


def adopt_orphans() -> None:
    """What a command's own children leave running falls to this process (on Linux), which then can end it."""
    with contextlib.suppress(OSError, AttributeError):
        ctypes.CDLL(None).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)


def within_bounds() -> None:
    """A broken program may want all memory or write without end."""
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    resource.setrlimit(resource.RLIMIT_AS, (MOST_MEMORY, MOST_MEMORY))
    resource.setrlimit(resource.RLIMIT_FSIZE, (LARGEST_FILE, LARGEST_FILE))


def children() -> set[int]:
    try:
        return {int(pid) for pid in Path(f"/proc/self/task/{os.getpid()}/children").read_text().split()}
    except OSError:
        return set()


def run(command: list[str], folder: Path, environment: dict[str, str], limit: float, log: Path,
        enough: re.Pattern[bytes] | None = None) -> int:
    """The exit status, or HUNG, or ENOUGH as soon as the command has said something that matches `enough`. What it
    says goes into `log`, which begins anew."""
    before = children()
    with open(log, "wb") as output:
        process = subprocess.Popen(command, cwd=folder, env=environment, stdin=subprocess.DEVNULL, stdout=output,
                                   stderr=subprocess.STDOUT, start_new_session=True, preexec_fn=within_bounds)
        try:
            return watched(process, limit, log, enough)
        except KeyboardInterrupt:
            with contextlib.suppress(ProcessLookupError, subprocess.TimeoutExpired):
                os.killpg(process.pid, signal.SIGINT)  # the build takes half-written files away
                process.wait(timeout=5)
            raise
        finally:
            end(process.pid)
            process.wait()
            end_orphans(before)


def watched(process: subprocess.Popen, limit: float, log: Path, enough: re.Pattern[bytes] | None) -> int:
    deadline = time.monotonic() + limit
    while (left := deadline - time.monotonic()) > 0:
        try:
            return process.wait(timeout=min(left, 0.5) if enough else left)
        except subprocess.TimeoutExpired:
            if enough and enough.search(log.read_bytes()):
                return ENOUGH
    return HUNG


def end(group: int) -> None:
    with contextlib.suppress(ProcessLookupError):
        os.killpg(group, signal.SIGKILL)


def end_orphans(known: set[int]) -> None:
    while orphans := children() - known:
        for pid in orphans:
            try:
                os.kill(pid, signal.SIGKILL)
                os.waitpid(pid, 0)
            except (ProcessLookupError, ChildProcessError, PermissionError):
                known = known | {pid}
