#!/usr/bin/env python3
"""The formatter would change nothing, and no line of what it does not see is overlong.

    format.py [--fix]

Looks at the files that git knows; outside a checkout at all that lie in the source folders.
"""
import os
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDERS = ["src", "companions", "tools", "demo", "bench", "artwork", "tests"]
LONGEST = 120  # characters
PLAIN = {".py", ".cmake", ".sh", ".txt"}


def files():
    for folder in FOLDERS + ["cmake", "packaging"]:
        yield from sorted(f for f in (ROOT / folder).rglob("*") if f.is_file() and "__pycache__" not in f.parts)


def main():
    sources = [f for f in files() if f.suffix in (".cpp", ".h")]
    mode = "-i" if "--fix" in sys.argv[1:] else "--dry-run"
    half = (len(sources) + 1) // 2
    runs = [subprocess.Popen(["clang-format", mode, *part], stderr=subprocess.PIPE, text=True)
            for part in (sources[:half], sources[half:]) if part]
    told = [line for run in runs for line in run.communicate()[1].split("\n") if "clang-formatted" in line]
    faults = sorted({os.path.relpath(line.split(":")[0], ROOT) + ": the formatter would change it" for line in told})
    if any(run.returncode for run in runs):
        faults.append("clang-format failed")
    # The formatter leaves texts and comments as long as they are.
    for file in sources + [f for f in files() if f.suffix in PLAIN]:
        for number, line in enumerate(file.read_text(encoding="utf-8").split("\n"), 1):
            if len(line) > LONGEST:
                faults.append(f"{file.relative_to(ROOT)}:{number}: {len(line)} characters")
    print("\n".join(faults) or f"{len(sources)} files")
    return 1 if faults or not sources else 0


sys.exit(main())
