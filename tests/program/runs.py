"""What the whole-program tests share: one screen for the process, folders that go away again."""

import contextlib
import os
import subprocess
import sys
import tempfile
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "..", "demo", "demonstration"))

from driver import PATIENCE, Catalogue, copy_data, stage, wait, xdotool  # noqa: E402
from screen import Screen  # noqa: E402

# Set by CTest.
PROGRAMS = os.environ["TARVO_PROGRAMS"]
DATA = os.environ["TARVO_DATA"]
WORD = "INICIOPAINELVERDE"
EXIT = ("push button", "Sair do catálogo")
TOOL = os.path.join(PROGRAMS, "tarvo-catalogue-tool")


def activate(window):
    """Brings a window to the front, by its identifier."""
    xdotool("windowactivate", "--sync", window)


class ProgramTest(unittest.TestCase):
    screen = None  # one for the process: the accessibility library connects only once

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = os.path.realpath(folder.name)
        self._runs = 0

    def new_data(self):
        """A data folder with a catalogue of its own."""
        path = os.path.join(self.folder, f"data{self._runs}")
        self._runs += 1
        copy_data(DATA, path)
        return path

    def run_sql(self, data, sql):
        """The first value of a statement in the engine's own SQL, in a data folder's catalogue."""
        return subprocess.run([TOOL, "run", os.path.join(data, "Tarvo.mdb"), sql], check=True,
                              capture_output=True, text=True).stdout.rstrip("\n")

    def expect_sound(self, data):
        """The catalogue's structure, and each of its pages."""
        self.assertEqual(self.run_sql(data, "PRAGMA integrity_check"), "ok")
        self.assertEqual(self.run_sql(data, "PRAGMA cipher_integrity_check"), "")

    @contextlib.contextmanager
    def catalogue(self, pointer=None):
        """A staged program; `pointer` is the content of its Caminho.txt, text or bytes."""
        folder = os.path.join(self.folder, f"program{self._runs}")
        self._runs += 1
        stage(PROGRAMS, folder, pointer.encode() if isinstance(pointer, str) else pointer)
        with Catalogue(self.screen, folder) as catalogue:
            yield catalogue

    def reach_search(self, catalogue):
        """The search screen, past the splash by a click."""
        wait("the splash", catalogue.windows)
        catalogue.click(400, 300)
        catalogue.await_node(*EXIT)

    def type_number(self, catalogue, text):
        """Into the number box of the panel of parts."""
        catalogue.click(634, 161)
        catalogue.await_node("text", "Nº Tarvo")
        catalogue.type(text)
        grid = catalogue.await_node("table", "Resultado da pesquisa")
        wait("rows", grid.rows)

    def expect_box_then_end(self, catalogue, process, beginning):
        """The error box with this beginning, and the end of the program once it is answered."""
        text = wait(f"a box with {beginning!r}", catalogue.box)
        self.assertTrue(text.startswith(beginning), text)
        catalogue.answer_box(lambda: process.poll() is not None)
        self.assertEqual(process.returncode, 1)
        return text


def main(*size):
    with Screen(*size) as screen:
        ProgramTest.screen = screen
        outcome = unittest.main(module="__main__", exit=False, verbosity=2).result
    sys.exit(not outcome.wasSuccessful())
