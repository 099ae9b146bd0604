"""Which sources belong to which room."""

from pathlib import Path

ROOMS = ["link", "capture", "shooters", "targetconfig", "app", "platform/grid", "cash", "evaluation", "masterdata"]


class UnknownSource(Exception):
    """Neither a source nor a folder of sources."""


def sources_of(tree: Path, wanted: list[str]) -> dict[str, list[str]]:
    """Room -> its sources, paths from the root. What is wanted is a source or a folder; nothing means all rooms."""
    rooms: dict[str, list[str]] = {}
    for name in wanted or ROOMS:
        place = tree / name
        if place.is_file() and place.suffix == ".cpp":
            found = [place]
        else:
            found = sorted(place.rglob("*.cpp")) if place.is_dir() else []
        if not found:
            raise UnknownSource(f"neither a .cpp nor a folder with some: {name}")
        for file in found:
            path = str(file.relative_to(tree))
            rooms.setdefault(room_of(path), []).append(path)
    return {room: sorted(set(paths)) for room, paths in rooms.items()}


def room_of(path: str) -> str:
    for room in ROOMS:
        if path.startswith(room + "/"):
            return room
    return path.rsplit("/", 1)[0] if "/" in path else "."
