#!/usr/bin/env python3
"""The plan of the house, read off the includes of src/.

Fails on folders that include each other in a circle, on an include that runs up or to a neighbour of
the same floor, on one that leads out of src/ or past a room's front door, and on a platform that names
the product. Each failure comes with the includes that make it.
"""
import pathlib
import re
import sys

# From the ground up. A folder may include those of the floors below it and its own files.
FLOORS = [
    ["platform"],
    ["platform/system"],
    ["platform/sql"],
    ["platform/dao"],
    ["platform/forms"],
    ["platform/printer"],
    ["session"],
    ["look", "parts"],
    ["settings"],
    ["update"],
    ["search", "partviews", "figure", "printing", "help"],
    ["app"],
    ["."],
]
# What the rooms, and the programs beside them, see of a folder: the engine's own SQL is for the folder itself
# and for the tools, benchmarks and the demonstration, which make, check or measure the file.
FRONT = {"platform/dao": {"dao.h", "errors.h"}}
SAME_FRONT = ["companions"]
FLOOR = {room: floor for floor, rooms in enumerate(FLOORS) for room in rooms}

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.M)
PRODUCT = re.compile(r"TARVO(?!_VERSION)|Tarvo|CONTROLETRAN|Ordavia")


def room_of(path):
    return path.parent.as_posix()


def includes(src):
    """(file, included file), both below src, for each include of ours."""
    for file in sorted(f for kind in ("*.h", "*.cpp") for f in src.rglob(kind)):
        for name in INCLUDE.findall(file.read_text(encoding="utf-8")):
            if name.endswith(".moc"):
                continue
            found = next((f for f in (src / name, file.parent / name) if f.is_file()), None)
            yield file.relative_to(src), found and found.resolve().relative_to(src), name


def circle(arrows):
    """The rooms of one circle, in order, or nothing."""
    state = {}

    def walk(room, way):
        state[room] = "open"
        for to in sorted(arrows.get(room, ())):
            if state.get(to) == "open":
                return (way + [room])[(way + [room]).index(to):]
            if to not in state and (found := walk(to, way + [room])):
                return found
        state[room] = "closed"
        return None

    return next((found for room in sorted(arrows) if room not in state and (found := walk(room, []))), None)


def main():
    src = pathlib.Path(sys.argv[1]).resolve()
    faults = []
    arrows = {}
    for file, to, name in includes(src):
        if to is None:
            faults.append(f'{file}: "{name}" does not stand in src')
            continue
        here, there = room_of(file), room_of(to)
        if here == there:
            continue
        arrows.setdefault(here, {}).setdefault(there, []).append(f"{file} includes {to}")
        for room in (here, there):
            if room not in FLOOR:
                faults.append(f"{room}: stands on no floor of the plan")
        if FLOOR.get(there, 0) >= FLOOR.get(here, 0):
            faults.append(f"{file} includes {to}: {there} is not below {here}")
        if to.name not in FRONT.get(there, {to.name}):
            faults.append(f"{file} includes {to}: only {', '.join(sorted(FRONT[there]))} are for others")
    for folder in SAME_FRONT:
        for file in (f for kind in ("*.h", "*.cpp") for f in sorted((src.parent / folder).rglob(kind))):
            for name in map(pathlib.PurePosixPath, INCLUDE.findall(file.read_text(encoding="utf-8"))):
                if name.name not in FRONT.get(name.parent.as_posix(), {name.name}):
                    faults.append(f"{file.relative_to(src.parent)} includes {name}: not for others")
    if rooms := circle(arrows):
        faults.append("circle: " + " -> ".join(rooms + rooms[:1]))
        faults += [line for here, there in zip(rooms, rooms[1:] + rooms[:1]) for line in arrows[here][there]]
    for file in sorted(f for f in (src / "platform").rglob("*") if f.suffix in (".h", ".cpp")):
        for number, line in enumerate(file.read_text(encoding="utf-8").split("\n"), 1):
            if PRODUCT.search(line):
                faults.append(f"{file.relative_to(src)}:{number}: names the product: {line.strip()}")
    print("\n".join(dict.fromkeys(faults)) or f"{len(FLOOR)} rooms, no arrow up, no circle")
    return 1 if faults or not arrows else 0


sys.exit(main())
