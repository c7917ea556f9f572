#!/usr/bin/python3
"""Lets the programs of both systems work on one catalogue, and compares what each finds in it: equal rows
in equal order. A catalogue made here is exported there and the other way round; one that is made there is
updated here, and one that is made here is updated there.

    both.py --data FOLDER --updates FOLDER [--times RUNS]    RUNS: prints how long the searches took
"""

import argparse
import os
import statistics
import subprocess
import sys
import tempfile

import wine

sys.path.insert(0, os.path.join(wine.ROOT, "demo", "demonstration"))
from driver import copy_data  # noqa: E402
from screen import Screen  # noqa: E402
from site_of_updates import UpdateSite  # noqa: E402

HERE = os.path.join(wine.ROOT, "build", "release", "bin")
THERE = os.path.join(wine.BUILD, "project", "bin")
PATIENCE = 900  # seconds
UPDATED = 3  # exit code of an update that brought something


class Differs(Exception):
    pass


def here(program, *arguments):
    return subprocess.run([os.path.join(HERE, program), *arguments], capture_output=True, timeout=PATIENCE, check=False)


def there(program, *arguments):
    """Arguments that are paths of this machine become paths of the other one."""
    words = [wine.windows_path(word) if word.startswith("/") else word for word in arguments]
    more = {name: os.environ[name] for name in ("http_proxy",) if name in os.environ}
    return wine.wine(os.path.join(THERE, program + ".exe"), *words, env=wine.environment(**more), capture_output=True,
                     timeout=PATIENCE, check=False)


def must(done, code=0):
    if done.returncode != code:
        raise Differs(f"{done.args}: {done.returncode}\n{done.stdout[-500:]}{done.stderr[-500:]}")
    return done


def rows(system, data, runs="1"):
    """What the searches find, and for each how many rows and how long, as numbers."""
    done = must(system("tarvo_searches", data, runs))
    found = done.stdout.replace(b"\r\n", b"\n").decode().splitlines()
    lines = [tuple(map(float, line.split())) for line in done.stderr.decode().splitlines() if line[:1].isdigit()]
    searches = len(lines) // int(runs)
    if searches < 5 or not found:
        raise Differs(f"the searches did not run: {done.stderr}")
    return found, [tuple(map(statistics.median, zip(*lines[i::searches]))) for i in range(searches)]


def compare(what, data):
    one, _ = rows(here, data)
    other, _ = rows(there, data)
    if one != other:
        at = next((i for i, (a, b) in enumerate(zip(one, other)) if a != b), min(len(one), len(other)))
        raise Differs(f"{what}: row {at} of {len(one)} and {len(other)}: {one[at:at + 1]} {other[at:at + 1]}")
    print(f"{what}: {len(one)} rows, the same in both", flush=True)
    return one


def tables(folder):
    """The exported files, whose lines must be the same."""
    found = {}
    for name in sorted(os.listdir(folder)):
        with open(os.path.join(folder, name), "rb") as file:
            found[name] = file.read()
    return found


def work(data, updates, folder):
    def path(name):
        return os.path.join(folder, name)

    copy_data(data, path("daqui"), own_pictures=True)
    before = compare("made here", path("daqui"))
    must(here("tarvo-exportar", path("daqui"), path("csv-daqui")))
    must(there("tarvo-exportar", path("daqui"), path("csv-de-la")))
    if tables(path("csv-daqui")) != tables(path("csv-de-la")):
        raise Differs("the exported tables differ")
    print(f"exported: {len(tables(path('csv-daqui')))} tables, the same in both", flush=True)

    must(there("tarvo-importar", path("csv-daqui"), path("de-la")))
    if compare("made there", path("de-la")) != before:
        raise Differs("what was made there is not what was made here")

    with UpdateSite(updates) as site:
        site.publish()
        for maker, system in (("daqui", there), ("de-la", here)):
            pointer = os.path.join(HERE if system is here else THERE, "Caminho.txt")
            kept = open(pointer, "rb").read() if os.path.exists(pointer) else None
            try:
                with open(pointer, "w", encoding="utf-8", newline="") as file:
                    file.write(path(maker) if system is here else wine.windows_path(path(maker)))
                done = system("CatalogoTarvo", "--atualizar")
            finally:
                os.remove(pointer)
                if kept is not None:
                    with open(pointer, "wb") as file:
                        file.write(kept)
            must(done, UPDATED)
            after = compare(f"updated {'here' if system is here else 'there'}", path(maker))
            if after == before:
                raise Differs("the update changed nothing that is searched")
    # The other one has no pictures.
    for system in (here, there):
        must(system("tarvo-verificar", path("daqui")))


def times(data, runs):
    both = zip(rows(here, data, runs)[1], rows(there, data, runs)[1])
    for (count, first, whole), (_, first_there, whole_there) in both:
        print(f"| {count:,.0f} | {first:.1f} | {whole:.1f} | {first_there:.1f} | {whole_there:.1f} |")


def main():
    arguments = argparse.ArgumentParser(description=__doc__)
    arguments.add_argument("--data", required=True)
    arguments.add_argument("--updates")
    arguments.add_argument("--times", metavar="RUNS")
    options = arguments.parse_args()
    with tempfile.TemporaryDirectory(prefix="tarvo-windows-") as folder, Screen(800, 600):
        os.environ["QT_QPA_PLATFORM"] = "offscreen"
        os.makedirs(os.path.join(folder, "share"))
        wine.prepare(os.path.join(folder, "share"))
        try:
            if options.times:
                times(options.data, options.times)
            else:
                work(options.data, options.updates, folder)
        except Differs as problem:
            print(f"FAILED: {problem}")
            return 1
        finally:
            wine.stop()
    return 0


if __name__ == "__main__":
    sys.exit(main())
