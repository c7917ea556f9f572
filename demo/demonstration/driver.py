"""Starts the real program and uses it as a person would: by mouse and keys, from outside.

What a station must show is read from the accessible tree, the same that a screen reader speaks.
"""

import os
import shutil
import signal
import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

from screen import PATIENCE  # noqa: E402

# The library's own patience, 0.8 s for one answer, is less than a busy machine needs.
Atspi.set_timeout(PATIENCE * 1000, PATIENCE * 1000)

PROGRAM = "CatalogoTarvo"
LAUNCHER = "Tarvo.exe"
VERIFIER = "VerifAtualizCatalogoTarvo.exe"


class NotReached(Exception):
    """What was waited for did not come; the text says what."""


def wait(what, condition, seconds=PATIENCE):
    """Waits until the condition holds and returns its value. A tree that changes while it is read
    answers with an error, which counts as not yet."""
    end = time.monotonic() + seconds
    while True:
        try:
            value = condition()
        except GLib.Error:
            value = None
        if value:
            return value
        if time.monotonic() > end:
            raise NotReached(f"waited for {what}")
        while GLib.MainContext.default().iteration(False):
            pass
        time.sleep(0.05)


def stage(programs, folder, pointer=None):
    """Puts the programs into a folder of their own, with a Caminho.txt of these bytes. Copies, not
    links: a test may give its folder to another user."""
    os.makedirs(folder)
    for name in (PROGRAM, LAUNCHER, VERIFIER):
        shutil.copy2(os.path.join(programs, name), os.path.join(folder, name))
    if pointer is not None:
        with open(os.path.join(folder, "Caminho.txt"), "wb") as file:
            file.write(pointer)


def copy_data(data, folder, own_pictures=False):
    """A catalogue of one's own to write to. The pictures stay where they are; one's own, which an
    update may replace, cost no room either."""
    os.makedirs(folder)
    for entry in os.scandir(data):
        target = os.path.join(folder, entry.name)
        if entry.is_dir() and own_pictures:
            shutil.copytree(entry.path, target, copy_function=link_or_copy)
        elif entry.is_dir():
            os.symlink(os.path.abspath(entry.path), target)
        else:
            shutil.copy2(entry.path, target)


def link_or_copy(source, target):
    try:
        os.link(source, target)
    except OSError:
        shutil.copy2(source, target)


class Node:
    """One element of the accessible tree."""

    def __init__(self, accessible):
        self.accessible = accessible

    @property
    def name(self):
        return self.accessible.get_name()

    @property
    def role(self):
        return self.accessible.get_role_name()

    @property
    def ticked(self):
        return self.accessible.get_state_set().contains(Atspi.StateType.CHECKED)

    @property
    def text(self):
        return Atspi.Text.get_text(self.accessible, 0, -1)

    @property
    def showing(self):
        return self.accessible.get_state_set().contains(Atspi.StateType.SHOWING)

    def children(self):
        for index in range(self.accessible.get_child_count()):
            child = self.accessible.get_child_at_index(index)
            if child is not None:
                yield Node(child)

    def walk(self):
        yield self
        # The cells of a table are asked for one by one: there may be thousands.
        if self.role != "table":
            for child in self.children():
                yield from child.walk()

    def find(self, role=None, name=None):
        """The first showing element of this role and name."""
        for node in self.walk():
            if role in (None, node.role) and name in (None, node.name) and node.showing:
                return node
        return None

    def place(self):
        """Left, top, width and height on the display, design pixels from its corner."""
        return Atspi.Component.get_extents(self.accessible, Atspi.CoordType.SCREEN)

    def rows(self):
        return Atspi.Table.get_n_rows(self.accessible)

    def cell(self, row, column):
        return Node(Atspi.Table.get_accessible_at(self.accessible, row, column)).name

    def cell_of_selected_row(self, column):
        """None while no row is selected."""
        rows = Atspi.Table.get_selected_rows(self.accessible)
        return self.cell(rows[0], column) if rows else None


class Catalogue:
    """One running catalogue out of a staged folder."""

    def __init__(self, screen, folder):
        self.screen = screen
        self.folder = os.path.realpath(folder)
        self.pid = None
        self._bare = None

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for pid in self.running():
            os.kill(pid, signal.SIGKILL)
        if self._bare is not None:
            self._bare.wait()
        wait("end of what was killed", lambda: not self.running())

    def start(self):
        """Through the launcher, as users do."""
        subprocess.run([os.path.join(self.folder, LAUNCHER)], check=True, timeout=PATIENCE)
        return self.wait_for_process()

    def start_bare(self, *arguments):
        """The program itself, with these words on its command line."""
        self._bare = subprocess.Popen([os.path.join(self.folder, PROGRAM), *arguments])
        self.pid = self._bare.pid
        return self._bare

    def wait_for_process(self, other_than=None):
        """Until the program has announced itself: what starts a process is for a moment two of it."""
        def started():
            return next((pid for pid in self.running()
                         if pid != other_than and self._application(pid)), None)
        self.pid = wait("start of the program", started)
        return self

    def running(self):
        """Identifiers of the processes that run this folder's program."""
        program = os.path.join(self.folder, PROGRAM)
        found = []
        for entry in os.listdir("/proc"):
            try:
                if entry.isdigit() and os.readlink(f"/proc/{entry}/exe") == program:
                    found.append(int(entry))
            except OSError:
                pass
        return found

    def has_open(self, path):
        """Whether the process holds this file open."""
        wanted = os.path.realpath(path)
        folder = f"/proc/{self.pid}/fd"
        return any(os.path.realpath(os.path.join(folder, fd)) == wanted for fd in os.listdir(folder))

    @staticmethod
    def _application(pid):
        """The root of the process in the accessible tree, once it has one."""
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(index)
            if application is not None and application.get_process_id() == pid:
                return application
        return None

    def windows(self):
        application = self._application(self.pid)
        if application is None:
            return []
        # Without our own event loop a cache would never hear of a change.
        application.set_cache_mask(Atspi.Cache.NONE)
        application.clear_cache()
        return [window for window in Node(application).children() if window.showing]

    def window(self, title):
        return next((window for window in self.windows() if window.name == title), None)

    def box(self):
        """The text of the message box that stands open."""
        return next((window.name for window in self.windows() if window.role == "dialog"), None)

    def find(self, role=None, name=None):
        for window in self.windows():
            node = window.find(role, name)
            if node is not None:
                return node
        return None

    def await_node(self, role, name):
        return wait(f'"{name}" ({role})', lambda: self.find(role, name))

    # --- hands

    def move(self, x, y):
        x, y = self.screen.design_to_screen(x, y)
        xdotool("mousemove", x, y)

    def click(self, x, y, times=1):
        """At design pixels."""
        self.move(x, y)
        time.sleep(0.05)
        xdotool("click", "--repeat", times, "--delay", 60, 1)

    def move_on(self, node):
        """To the middle of this element, wherever its window stands."""
        place = node.place()
        scale = self.screen.scale
        xdotool("mousemove", round((place.x + place.width / 2) * scale),
                round((place.y + place.height / 2) * scale))

    def click_on(self, node):
        self.move_on(node)
        time.sleep(0.05)
        xdotool("click", 1)

    def look_of(self, node):
        """A text that is the same for the same picture of this element."""
        place = node.place()
        left, top, width, height = (round(value * self.screen.scale) for value in
                                    (place.x, place.y, place.width, place.height))
        return output_of("import", "-window", "root", "-crop", f"{width}x{height}+{left}+{top}",
                         "-format", "%#", "info:-")

    def colours(self, left, top, width, height):
        """How many different colours this part of the picture shows, design pixels."""
        x, y = self.screen.design_to_screen(left, top)
        right, bottom = self.screen.design_to_screen(left + width, top + height)
        return int(output_of("import", "-window", "root", "-crop",
                             f"{right - x}x{bottom - y}+{x}+{y}", "-format", "%k", "info:-"))

    def type(self, text):
        xdotool("type", "--delay", 30, text)

    def press(self, key, times=1):
        xdotool("key", "--delay", 20, *[key] * times)

    def choose(self, place, combo, text):
        """Drops the list down at this place and picks the row with this text."""
        rows = next(self.await_node("combo box", combo).children())
        index = [row.name for row in rows.children()].index(text)
        self.click(*place)
        wait(f'the list of "{combo}"', lambda: rows.showing)
        self.press("Home")
        self.press("Down", index)
        self.press("Return")
        # A click that comes while it still stands would only close it.
        wait(f'the end of the list of "{combo}"', lambda: not rows.showing)

    def window_ids(self):
        """Of the windows that the window manager knows, the oldest first, minimised ones too."""
        ids = [text.strip() for text in xprop("-root", "_NET_CLIENT_LIST").split("#")[-1].split(",")]
        return [i for i in ids if xprop("-id", i, "_NET_WM_PID").endswith(f"= {self.pid}\n")]

    def is_minimised(self):
        return "_NET_WM_STATE_HIDDEN" in xprop("-id", self.window_ids()[0], "_NET_WM_STATE")

    def restore(self):
        """To the front: a click may come before the window manager has answered."""
        xdotool("windowactivate", self.window_ids()[0])
        wait("the window in front", lambda: active_window() in map(window_number, self.window_ids()))

    def answer_box(self, ended):
        """Answers the box that shows, until what ends with it has ended: a window may be told of before
        it takes keys, and one that comes too early is lost."""
        def answered():
            if not ended():
                self.press("Return")
            return ended()
        wait("the end behind the box", answered)

    def ended(self):
        return self.pid not in self.running()


def output_of(*command):
    return subprocess.run([str(word) for word in command], capture_output=True, text=True,
                          check=False, timeout=PATIENCE).stdout


def xdotool(*arguments):
    return output_of("xdotool", *arguments)


def xprop(*arguments):
    return output_of("xprop", *arguments)


def window_number(window):
    """Of an identifier, however many zeros it is written with."""
    return int(window, 16)


def active_window():
    """The number of the window that has the keyboard; 0 while none has."""
    words = xprop("-root", "_NET_ACTIVE_WINDOW").split()
    return window_number(words[-1]) if words and words[-1].startswith("0x") else 0


def photograph(path):
    """The whole display as a picture."""
    time.sleep(0.2)  # what the tree already tells is painted a moment later
    subprocess.run(["import", "-window", "root", path], check=True, timeout=PATIENCE)
