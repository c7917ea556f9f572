"""What stands in a file of its own for Windows must compile there: the cross compiler reads it, with this
machine's headers of the toolkit. Without the compiler nothing is checked, and that is said.

    windows.py PROJECT TOOLKIT_HEADERS
"""

import concurrent.futures
import glob
import os
import shutil
import subprocess
import sys

COMPILER = "x86_64-w64-mingw32-g++-posix"
SKIPPED = 77  # tests/house/CMakeLists.txt knows it
DEFINITIONS = ["UNICODE", "_UNICODE", "_WIN32_WINNT=0x0A00", "NOMINMAX", "WIN32_LEAN_AND_MEAN", "QT_NO_KEYWORDS",
               "QT_NO_CAST_FROM_ASCII", 'TARVO_VERSION="0"']


def complaint(path, folders, headers):
    toolkit = [headers, *(os.path.join(headers, "Qt" + part) for part in ("Core", "Gui", "Widgets", "PrintSupport",
                                                                          "Test"))]
    return subprocess.run(
        [COMPILER, "-std=c++20", "-fsyntax-only", "-Wall", "-Wextra", "-Wshadow", "-Werror",
         *("-D" + definition for definition in DEFINITIONS), *("-I" + folder for folder in folders),
         *(word for folder in toolkit for word in ("-isystem", folder)), path],
        capture_output=True, text=True, check=False).stderr


def main():
    project, headers = sys.argv[1:]
    folders = [os.path.join(project, name) for name in ("src", "tests")]
    if not shutil.which(COMPILER):
        print(f"skipped: no {COMPILER}; setup/install packages.txt windows.txt brings it")
        return SKIPPED
    paths = sorted(path for folder in folders
                   for path in glob.glob(os.path.join(folder, "**", "*_windows.cpp"), recursive=True))
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        complaints = list(filter(None, pool.map(lambda path: complaint(path, folders, headers), paths)))
    print("\n".join(complaints) or f"{len(paths)} files")
    return 1 if complaints or not paths else 0


if __name__ == "__main__":
    sys.exit(main())
