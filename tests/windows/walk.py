#!/usr/bin/python3
"""Drives the programs for Windows under wine, by mouse and keys, from the folder that an installation
consists of, on a data folder that is a share. What stands on the screen is compared with the pictures
that the demonstration has taken of the programs of this machine on the same data: the same screens,
painted by another system.

    walk.py --data FOLDER --updates FOLDER --reference FOLDER [--size 800x600] [--pictures FOLDER]
"""

import argparse
import glob
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time

import wine

sys.path.insert(0, os.path.join(wine.ROOT, "demo", "demonstration"))
import stations as st  # noqa: E402
from driver import copy_data, output_of, photograph, xdotool  # noqa: E402
from screen import Screen  # noqa: E402
from site_of_updates import UpdateSite  # noqa: E402

PATIENCE = 90  # seconds
# How far two pictures may be apart, 0 to 1. Letters are drawn a little otherwise; other rows in a grid are
# further away than that.
ALIKE = 0.027
# A dialog does not stand on the very same pixels; another dialog, or none, is further away.
DIALOG = 0.1
LETTERS = 0.12  # a whole screen of them


SAVE_TITLE = "Nenhuma impressora instalada: salvar em PDF"
# Places on the print dialog, design pixels.
PRINT_FIGURE = (243, 301)
PRINT_OK = (472, 377)


class NotReached(Exception):
    pass


class Walk:
    def __init__(self, screen, programs, reference, pictures, environment):
        self.screen = screen
        self.programs = programs
        self.reference = reference
        self.pictures = pictures
        self.environment = environment
        self.number = 0

    def launch(self, *arguments):
        wine.wine(os.path.join(self.programs, "Tarvo.exe"), *arguments, env=self.environment, check=True,
                  timeout=PATIENCE, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def running(self):
        """Processes of this catalogue itself; others may run on the machine."""
        program = (wine.windows_path(self.programs) + "\\CatalogoTarvo").encode()
        found = []
        for entry in filter(str.isdigit, os.listdir("/proc")):
            try:
                with open(f"/proc/{entry}/cmdline", "rb") as file:
                    words = file.read()
            except OSError:
                continue
            if program in words:
                found.append(int(entry))
        return found

    def distance(self, name):
        """From the demonstration's picture of that station, 0 to 1."""
        wanted, = glob.glob(os.path.join(self.reference, f"[0-9][0-9]-{name}.png"))
        here = os.path.join(self.pictures, "now.png")
        photograph(here)
        small = ["-colorspace", "gray", "-resize", "200x150!"]
        return float(output_of("convert", "(", wanted, *small, ")", "(", here, *small, ")", "-metric", "RMSE",
                               "-compare", "-format", "%[distortion]", "info:"))

    def shows(self, name, limit=ALIKE):
        """Waits for the station's picture, and keeps what is seen."""
        end = time.monotonic() + PATIENCE
        nearest = 1.0
        while True:
            distance = self.distance(name)
            nearest = min(nearest, distance)
            if distance <= limit:
                break
            if time.monotonic() > end:
                raise NotReached(f"{name}: {nearest:.3f} away from the picture")
            time.sleep(0.3)
        self.keep(name)
        print(f"  {self.number:02} {name}: {distance:.3f}", flush=True)

    def dialog(self, name, behind=1):
        """The picture alone does not tell a small dialog from none. `behind` it: so many windows."""
        self.wait(f"the window of {name}", lambda: self.windows() > behind)
        self.shows(name, DIALOG)

    def keep(self, name):
        self.number += 1
        photograph(os.path.join(self.pictures, f"{self.number:02}-{name}.png"))

    def wait(self, what, condition, patience=PATIENCE):
        end = time.monotonic() + patience
        while not condition():
            if time.monotonic() > end:
                raise NotReached(what)
            time.sleep(0.1)

    def windows(self):
        """How many of them the window manager knows."""
        return output_of("xprop", "-root", "_NET_CLIENT_LIST").count("0x")

    def window(self, title):
        """Whether a window of this title shows."""
        plain = re.sub("[^ -~]", ".+", title)  # in any coding
        return bool(xdotool("search", "--onlyvisible", "--name", f"^{plain}$").strip())

    def click(self, place, times=1):
        x, y = self.screen.design_to_screen(*place)
        xdotool("mousemove", x, y)
        time.sleep(0.1)
        xdotool("click", "--repeat", times, "--delay", 60, 1)

    def move(self, place):
        xdotool("mousemove", *self.screen.design_to_screen(*place))

    def retype(self, place, text):
        self.click(place)
        self.press("ctrl+a", "Delete")
        self.type(text)

    def pick(self, place, text):
        """In a drop-down list, by the letters that its row begins with."""
        self.click(place)
        time.sleep(0.7)
        self.type(text)
        time.sleep(0.3)
        self.press("Return")

    def type(self, text):
        xdotool("type", "--delay", 40, text)

    def press(self, *keys):
        xdotool("key", "--delay", 30, *keys)


def start(walk):
    walk.launch()
    walk.wait("the program", walk.running)
    walk.shows("search-screen")


def parts(walk):
    walk.click(st.OPEN_PARTS)
    time.sleep(0.5)
    walk.type("1")
    walk.shows("parts-by-number")
    walk.retype(st.TYPE_NUMBER, "")
    walk.retype(st.TYPE_DESCRIPTION, "*anel")
    walk.shows("description-with-asterisk")


def result(walk):
    walk.retype(st.TYPE_DESCRIPTION, "")
    walk.pick(st.CHOOSE_KIND, "Pe")
    walk.retype(st.TYPE_DESCRIPTION, "v?lvula rel?")
    time.sleep(1)
    walk.click(st.FIRST_FOUND_ROW, times=2)
    walk.shows("part-result")


def component_list(walk):
    walk.click(st.TO_COMPONENT_LIST)
    walk.shows("component-list")
    walk.click(st.SEEK_ITEM)
    walk.type("1")
    walk.shows("seek-by-item")


def print_to_file(walk):
    """There is no printer in there, and the program offers a file."""
    walk.click(st.PRINT_LIST)
    walk.wait("the print dialog", lambda: walk.windows() > 1)
    time.sleep(0.5)
    walk.click(PRINT_FIGURE)
    time.sleep(0.3)
    walk.keep("print-options")
    walk.click(PRINT_OK)
    walk.wait("the question for a file", lambda: walk.window(SAVE_TITLE))
    time.sleep(1)
    paper = os.path.join(walk.pictures, st.PRINTED + ".pdf")
    walk.press("ctrl+a")
    walk.type(wine.windows_path(paper))
    walk.keep("file-dialog")
    walk.press("Return")
    walk.wait("the printed file", lambda: os.path.exists(paper))
    walk.wait("the end of the dialogs", lambda: walk.windows() == 1)
    subprocess.run(["pdftoppm", "-r", "80", "-png", paper, paper.removesuffix(".pdf")], check=True, timeout=60)
    for page, title in ((1, "Figura Detalhada"), (2, "Lista de Componentes")):
        if title not in output_of("pdftotext", "-f", page, "-l", page, paper, "-"):
            raise NotReached(f"page {page} has no {title!r}")


def figure(walk):
    walk.click(st.TO_FIGURE)
    time.sleep(1)
    walk.move(st.BESIDE_FIGURE)
    walk.shows("exploded-figure")
    walk.click(st.TO_SEARCH)
    time.sleep(1)
    walk.click(st.BACKGROUND)
    walk.shows("search-screen")


def settings(walk):
    walk.click(st.SETTINGS)
    walk.dialog("settings")
    walk.press("Escape")
    walk.move(st.BACKGROUND)
    walk.shows("search-screen")


def help_window(walk):
    walk.click(st.HELP)
    walk.wait("the help", lambda: walk.window(st.HELP_TITLE))
    walk.shows("help-window", LETTERS)
    walk.press("alt+F4")
    walk.wait("the help's end", lambda: not walk.window(st.HELP_TITLE))
    walk.move(st.BACKGROUND)


def update(walk):
    """The server's newest version, with the program's new start through the launcher."""
    walk.site.publish()
    before = walk.running()
    walk.click(st.CHECK_FOR_UPDATES)
    walk.dialog("update-question")
    walk.press("alt+s")
    walk.dialog("update-done", behind=2)
    walk.press("Return")
    walk.wait("another process", lambda: walk.running() and not set(walk.running()) & set(before))
    walk.shows("search-screen")
    walk.click(st.OPEN_PARTS)
    time.sleep(0.5)
    walk.type(walk.site.new_part()[0].lower())
    walk.shows("new-part-found")
    walk.click(st.FIRST_FOUND_ROW, times=2)
    time.sleep(1.5)
    walk.click(st.FIRST_FOUND_PART, times=2)
    time.sleep(1)
    walk.move(st.BESIDE_FIGURE)
    walk.shows("figure-of-the-new-part")


def leave(walk):
    walk.click(st.TO_SEARCH)
    time.sleep(1)
    walk.click(st.LEAVE)
    walk.shows("credits-at-the-end")
    walk.wait("the end", lambda: not walk.running())


STATIONS = [start, parts, result, component_list, print_to_file, figure, settings, help_window, update, leave, start]


def go(options, folder):
    data = os.path.join(folder, "dados")
    programs = os.path.join(folder, "programas")
    copy_data(options.data, data, own_pictures=True)
    shutil.copytree(os.path.join(wine.BUILD, "Catalogo"), programs)
    with open(os.path.join(programs, "Caminho.txt"), "w", encoding="utf-8", newline="") as file:
        file.write(rf"\\{wine.SERVER}\dados")
    width, height = map(int, options.size.split("x"))
    with UpdateSite(options.updates) as site, Screen(width, height) as screen:
        wine.prepare(data)
        walk = Walk(screen, programs, options.reference, os.path.abspath(options.pictures), wine.environment(
            http_proxy=os.environ["http_proxy"], LOCALAPPDATA=wine.windows_path(folder)))
        walk.site = site
        try:
            for station in STATIONS:
                print(station.__name__, flush=True)
                station(walk)
        except Exception as problem:  # whatever it is, one line says where it happened
            photograph(os.path.join(walk.pictures, "not-reached.png"))
            print(f"FAILED: {station.__name__}: {problem!r}")
            return 1
        finally:
            wine.stop()
    os.remove(os.path.join(options.pictures, "now.png"))
    return 0


def main():
    arguments = argparse.ArgumentParser(description=__doc__)
    arguments.add_argument("--data", required=True)
    arguments.add_argument("--updates", required=True)
    arguments.add_argument("--reference", required=True)
    arguments.add_argument("--size", default="800x600")
    arguments.add_argument("--pictures", default=os.path.join(wine.ROOT, "build", "demonstration-windows"))
    options = arguments.parse_args()
    shutil.rmtree(options.pictures, ignore_errors=True)
    os.makedirs(options.pictures)
    with tempfile.TemporaryDirectory(prefix="tarvo-windows-") as folder:
        return go(options, folder)


if __name__ == "__main__":
    sys.exit(main())
