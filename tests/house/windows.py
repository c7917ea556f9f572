"""What stands in a file of its own for Windows, or branches by system, must compile there: the cross compiler
reads it, with this machine's headers of the toolkit and of the engine. Without the compiler nothing is checked, and
that is said.

    windows.py PROJECT TOOLKIT_HEADERS ENGINE_HEADERS
"""

import concurrent.futures
import glob
import os
import re
import shutil
import subprocess
import sys

COMPILER = "x86_64-w64-mingw32-g++-posix"
SKIPPED = 77  # tests/house/CMakeLists.txt knows it
DEFINITIONS = ["UNICODE", "_UNICODE", "_WIN32_WINNT=0x0A00", "NOMINMAX", "WIN32_LEAN_AND_MEAN", "QT_NO_KEYWORDS",
               "QT_NO_CAST_FROM_ASCII", 'TARVO_VERSION="0"']
FOLDERS = ["src", "companions", "tools", "tests"]
BRANCH = re.compile(r"^#.*\b(_WIN32|Q_OS_\w+)", re.MULTILINE)
NAMED = re.compile(r'(?<!["\w])TARVO_[A-Z_]+')
OWN = re.compile(r"^#define (TARVO_[A-Z_]+)", re.MULTILINE)


def concerned(folders):
    """The files to be read, and the texts that the build defines for them."""
    paths = []
    given = set()
    own = {"TARVO_VERSION"}
    for folder in folders:
        for path in glob.glob(os.path.join(folder, "**", "*"), recursive=True):
            if not path.endswith((".cpp", ".h")):
                continue
            with open(path, encoding="utf-8") as file:
                text = file.read()
            given.update(NAMED.findall(text))
            own.update(OWN.findall(text))
            if path.endswith("_windows.cpp") or BRANCH.search(text):
                paths.append(path)
    return sorted(paths), [f'{name}=""' for name in sorted(given - own)]


def complaint(path, folders, headers, engine, definitions):
    parts = ("Core", "Gui", "Widgets", "PrintSupport", "Test")
    given = [engine, headers, *(os.path.join(headers, "Qt" + part) for part in parts)]
    return subprocess.run(
        [COMPILER, "-std=c++20", "-fsyntax-only", "-Wall", "-Wextra", "-Wshadow", "-Werror",
         *("-D" + definition for definition in DEFINITIONS + definitions), *("-I" + folder for folder in folders),
         *(word for folder in given for word in ("-isystem", folder)),
         *(["-x", "c++", "-include", path, os.devnull] if path.endswith(".h") else [path])],
        capture_output=True, text=True, check=False).stderr


def main():
    project, headers, engine = sys.argv[1:]
    folders = [os.path.join(project, name) for name in FOLDERS]
    if not shutil.which(COMPILER):
        print(f"skipped: no {COMPILER}; setup/install packages.txt windows.txt brings it")
        return SKIPPED
    paths, definitions = concerned(folders)
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        told = pool.map(lambda path: complaint(path, folders, headers, engine, definitions), paths)
        complaints = list(filter(None, told))
    print("\n".join(complaints) or f"{len(paths)} files")
    return 1 if complaints or not paths else 0


if __name__ == "__main__":
    sys.exit(main())
