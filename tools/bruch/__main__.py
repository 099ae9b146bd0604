"""./qk bruch: breaks the sources one small way at a time and lists what no test notices. See --help."""

import argparse
import os
import signal
import subprocess
import sys
from pathlib import Path

from children import adopt_orphans, end_orphans
from explained import ListError
from rooms import ROOMS, UnknownSource
from session import Session
from workshop import WorkshopError

HELP = """Breaks the sources one small way at a time (a comparison, a constant, a sign, a dropped call, a swapped
argument, a wrong column or text, && for ||, off by one, an early return, a removed else), builds what is needed, runs
the tests that link the source, those of its folder first, and lists what stayed green. Works in build/bruch; the
sources themselves are only read. Ctrl-C stops it and prints what it has; the same seed goes on."""


def arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(prog="./qk bruch", description=HELP)
    parser.add_argument("files", metavar="FILE", nargs="*",
                        help="a .cpp or a folder; without one: " + ", ".join(ROOMS))
    parser.add_argument("--anzahl", metavar="N", type=int, default=100, help="how many breaks count (100)")
    parser.add_argument("--seed", metavar="S", type=int, help="the same seed draws the same breaks")
    given = parser.parse_args()
    if given.anzahl < 1:
        parser.error("--anzahl wants at least 1")
    return given


def main() -> int:
    given = arguments()
    root = Path(subprocess.run(["git", "rev-parse", "--show-toplevel"], check=True, stdout=subprocess.PIPE,
                               text=True).stdout.strip())
    adopt_orphans()
    for one in (signal.SIGINT, signal.SIGTERM):  # also where the caller has it ignored
        signal.signal(one, signal.default_int_handler)
    try:
        session = Session(root, root / "build/bruch", sys.stdout)
        status = 0
        try:
            session.run([os.path.relpath(root / name, root) for name in given.files], given.anzahl, given.seed)
        except KeyboardInterrupt:
            print("\nstopped; the same seed goes on", flush=True)
            status = 130
        session.report()
        return status
    except (WorkshopError, ListError, UnknownSource) as error:
        print(f"qk bruch: {error}", file=sys.stderr)
        return 1
    finally:
        end_orphans(set())


sys.exit(main())
