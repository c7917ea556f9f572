#!/usr/bin/python3
"""Runs the test programs that were built for Windows, under wine. What is known not to hold there stands
in unproved.txt; anything else that fails, and anything in that list that has come to hold, is told.

    unit.py [PROGRAM | PROGRAM/CLASS]...    all of PROGRAMS without one
"""

import glob
import os
import re
import subprocess
import sys
import tempfile
import threading
import time

import wine

sys.path.insert(0, os.path.join(wine.ROOT, "demo", "demonstration"))
from driver import xdotool  # noqa: E402
from screen import Screen  # noqa: E402

PROGRAMS = ["system", "sql", "dao", "session", "settings", "search", "update", "forms", "verificar", "publicar",
            "importar", "exportar", "verifier"]
BIN = os.path.join(wine.BUILD, "project", "bin")
HERE = os.path.dirname(os.path.realpath(__file__))
PATIENCE = 2400  # seconds for one program
TOTALS = re.compile(r"^Totals: (\d+) passed, (\d+) failed, (\d+) skipped", re.MULTILINE)
FAILED = re.compile(r"^(?:FAIL!|XPASS)\s*: Suite::Run\(([A-Za-z]+::\w+)\)", re.MULTILINE)
PASSED = re.compile(r"^PASS\s*: Suite::Run\(([A-Za-z]+::\w+)\)", re.MULTILINE)
TEST = re.compile(r"^TEST\((\w+), (\w+)\)", re.MULTILINE)
RUNNING = re.compile(r"^\*+ Start testing of (\w+) \*+$", re.MULTILINE)


class Desk(threading.Thread):
    """Starts the servers that a test asks for by a file, and ends each when its file goes; see
    tests/support/servers_windows.cpp."""

    def __init__(self, folder):
        super().__init__(daemon=True)
        self.folder = folder
        self.servers = {}
        self.open = True

    def run(self):
        while self.open:
            asked = {name for name in os.listdir(self.folder) if name.endswith(".ask")}
            for name in asked - self.servers.keys():
                self.serve(name)
            for name in self.servers.keys() - asked:
                self.servers.pop(name).communicate()
                os.remove(os.path.join(self.folder, name.removesuffix(".ask") + ".port"))
            time.sleep(0.02)
        for server in self.servers.values():
            server.communicate()

    def serve(self, name):
        with open(os.path.join(self.folder, name), encoding="utf-8") as file:
            folder, log, certified = (file.read().split("\n") + [""])[:3]
        folder, log = map(wine.here, (folder, log))
        arguments = [folder, log]
        if certified:
            certificate, key = log + ".certificate", log + ".key"
            subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1",
                            "-nodes", "-batch", "-out", certificate, "-keyout", key, "-addext",
                            "subjectAltName=" + certified], check=True, stderr=subprocess.DEVNULL)
            arguments += [certificate, key]
        server = subprocess.Popen(["python3", os.path.join(HERE, "..", "support", "server.py"), *arguments],
                                  stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        port = server.stdout.readline()
        self.servers[name] = server
        answer = os.path.join(self.folder, name.removesuffix(".ask"))
        with open(answer + ".new", "w", encoding="ascii") as file:
            file.write(port)
        os.rename(answer + ".new", answer + ".port")


def unproved():
    with open(os.path.join(HERE, "unproved.txt"), encoding="utf-8") as file:
        lines = [line.split("#")[0].split() for line in file]
    return {words[0] for words in lines if words}


def tests():
    """The names of all that there are, whatever program they belong to."""
    names = set()
    for path in glob.glob(os.path.join(HERE, "..", "*", "*.cpp")):
        with open(path, encoding="utf-8") as file:
            names.update("::".join(found) for found in TEST.findall(file.read()))
    return names


def bring_words():
    """The toolkit's own in Portuguese, for programs that lie elsewhere than their installation."""
    words = os.path.join(wine.LIBRARIES, "translations")
    if not os.path.lexists(words):
        os.symlink(os.path.join("..", "Catalogo", "translations"), words)


def run(program, folder, known):
    """The problems of one test program, as texts."""
    temporary = os.path.join(folder, program)
    os.makedirs(temporary)
    program, _, only = program.partition("/")
    log = os.path.join(wine.BUILD, "logs", f"test_{program}.log")
    place = wine.windows_path(temporary)
    began = time.monotonic()
    with open(log, "wb"):
        pass
    # Appended to, since wine's server keeps it as its own output, and has something to say at its end.
    with open(log, "ab") as output:
        try:
            # The toolkit counts a function's time from where it last looked, which may be many functions ago.
            code = wine.wine(os.path.join(BIN, f"test_{program}.exe"), *filter(None, [only]), stdout=output,
                             stderr=subprocess.STDOUT, timeout=PATIENCE, cwd=temporary, env=wine.environment(
                                 TMP=place, TEMP=place, QT_PLUGIN_PATH=wine.windows_path(wine.LIBRARIES + "/plugins"),
                                 QTEST_FUNCTION_TIMEOUT=str(PATIENCE * 1000), TARVO_KILL_ROUNDS="16",
                                 TARVO_SERVERS=wine.windows_path(os.path.join(folder, "desk")),
                                 TARVO_TEST_LOG=place + "\\log-")).returncode
        except subprocess.TimeoutExpired:
            code = "no end"
    with open(log, "ab") as output:
        for part in sorted(glob.glob(os.path.join(temporary, "log-*"))):
            with open(part, "rb") as file:
                output.write(file.read())
    with open(log, encoding="utf-8", errors="replace") as output:
        text = output.read().replace("\r\n", "\n")
    sums = [sum(map(int, column)) for column in zip(*TOTALS.findall(text))] or [0, 0, 0]
    failed = set(FAILED.findall(text))
    problems = sorted(failed - known)
    problems += [f"{name}: holds, but stands in unproved.txt" for name in sorted(
        (set(PASSED.findall(text)) & known) - failed)]
    if len(RUNNING.findall(text)) != len(TOTALS.findall(text)) or (code != 0 and not failed):
        problems.append(f"{program}: ended with {code} (log: {os.path.relpath(log, wine.ROOT)})")
    print(f"{program}: {sums[0]} passed, {sums[1]} failed, {sums[2]} skipped, {len(failed & known)} known as unproved, "
          f"{time.monotonic() - began:.0f} s", flush=True)
    return problems


def main():
    programs = sys.argv[1:] or PROGRAMS
    known = unproved()
    problems = [f"{name}: stands in unproved.txt and is no test" for name in sorted(known - tests())]
    bring_words()
    with tempfile.TemporaryDirectory(prefix="tarvo-windows-") as folder, Screen(800, 600):
        xdotool("mousemove", 799, 599)  # a window that comes up beneath it would hear of a move
        os.makedirs(os.path.join(folder, "desk"))
        os.makedirs(os.path.join(folder, "share"))
        wine.prepare(os.path.join(folder, "share"))
        desk = Desk(os.path.join(folder, "desk"))
        desk.start()
        for program in programs:
            problems += run(program, folder, known)
        desk.open = False
        desk.join()
        wine.stop()
    for problem in problems:
        print(f"FAILED: {problem}")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
