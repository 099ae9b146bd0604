"""Draws breaks by a seed, in turn from each kind.

What is drawn depends on seed and contents alone, so the same seed goes on where it was stopped, and a change of one
source leaves the lots of the others as they are.
"""

import hashlib
from collections import defaultdict
from typing import Iterator

from places import Break


def lot(seed: int, text: str) -> str:
    return hashlib.sha256(f"{seed} {text}".encode()).hexdigest()


def of_a_room(found: list[Break], seed: int) -> Iterator[Break]:
    kinds: dict[str, list[Break]] = defaultdict(list)
    for one in found:
        kinds[one.kind].append(one)
    for one in kinds.values():
        one.sort(key=lambda known: lot(seed, known.key), reverse=True)
    order = sorted(kinds, key=lambda kind: lot(seed, kind + found[0].path))
    while any(kinds.values()):
        for kind in order:
            if kinds[kind]:
                yield kinds[kind].pop()
