#!/usr/bin/python3
"""The installer's life under wine: installs without questions and with them, upgrades, refuses while the
catalogue is open, goes again and leaves the data.

    installer.py [INSTALLER]
"""

import filecmp
import glob
import os
import subprocess
import sys
import tempfile
import time

import wine

sys.path.insert(0, os.path.join(wine.ROOT, "demo", "demonstration"))
from driver import photograph, xdotool  # noqa: E402
from screen import Screen  # noqa: E402

FOLDER = os.path.join(wine.BUILD, "Catalogo")
DRIVE = os.path.join(wine.PREFIX, "drive_c")
PLACE = os.path.join(DRIVE, "Catalogo")
KEY = r"HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\TarvoCatalogo"
DATA = "\\\\servidor\\reposição"
PICTURES = os.path.join(wine.ROOT, "build", "demonstration-windows")
OPEN = 2  # exit code while the catalogue is open
PATIENCE = 120  # seconds


def check(holds, what):
    if not holds:
        raise AssertionError(what)
    print(f"  {what}", flush=True)


def run(program, *arguments):
    return wine.wine(program, *arguments, env=wine.environment(), timeout=PATIENCE, stdout=subprocess.DEVNULL,
                     stderr=subprocess.DEVNULL).returncode


def files(folder):
    return {os.path.relpath(os.path.join(where, name), folder) for where, _, names in os.walk(folder) for name in names}


def pointer():
    with open(os.path.join(PLACE, "Caminho.txt"), "rb") as file:
        return file.read()


def links():
    menu = os.path.join(DRIVE, "ProgramData", "Microsoft", "Windows", "Start Menu", "Programs")
    return glob.glob(os.path.join(menu, "Tarvo Linden", "*.lnk"))


def registered():
    return run("reg", "query", KEY) == 0


def uninstall():
    """Waits for its end, which it otherwise reaches elsewhere, as a copy of itself."""
    return run(os.path.join(PLACE, "desinstalar.exe"), "/S", r"_?=C:\Catalogo")


def wait(what, condition):
    end = time.monotonic() + PATIENCE
    while not condition():
        if time.monotonic() > end:
            raise AssertionError(what)
        time.sleep(0.5)


def ask(installer):
    """Page after page as they come, each kept as a picture."""
    place = os.path.join(DRIVE, "Program Files", "Tarvo Linden", "Catalogo")
    pages = subprocess.Popen([wine.WINE, installer], env=wine.environment(), stdin=subprocess.DEVNULL,
                             stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    wait("the first page", lambda: xdotool("search", "--onlyvisible", "--name", "TARVO-LINDEN").strip())
    os.makedirs(PICTURES, exist_ok=True)
    for page in ("welcome", "programs", "data"):
        time.sleep(2)
        photograph(os.path.join(PICTURES, f"installer-{page}.png"))
        xdotool("key", "Return")
    wait("the installed files", lambda: os.path.exists(os.path.join(place, "Caminho.txt")) and registered())
    time.sleep(3)
    photograph(os.path.join(PICTURES, "installer-done.png"))
    check(pages.poll() is None, "asks, and installs")
    xdotool("key", "space", "Return")  # without opening the catalogue
    wait("the installer's end", lambda: pages.poll() is not None)
    with open(os.path.join(place, "Caminho.txt"), "rb") as file:
        check(file.read() == b"C:\\ProgramData\\Tarvo Linden\\Dados", "proposes a folder for all who use the computer")
    check(os.path.isdir(os.path.join(DRIVE, "ProgramData", "Tarvo Linden", "Dados")), "which it makes")
    run(os.path.join(place, "desinstalar.exe"), "/S")
    wait("the programs go, to the last file", lambda: not os.path.exists(os.path.dirname(place)))
    print("  goes again, to the last file")


def live(installer):
    check(run(installer, "/S", "/DADOS=" + DATA, r"/D=C:\Catalogo") == 0, "installs")
    check(files(PLACE) == files(FOLDER) | {"Caminho.txt", "desinstalar.exe"}, "brings the folder and what is its own")
    check(all(filecmp.cmp(os.path.join(FOLDER, name), os.path.join(PLACE, name), False) for name in files(FOLDER)),
          "every file is the folder's")
    check(pointer() == DATA.encode(), "Caminho.txt is the path in UTF-8 and nothing else")
    check(len(links()) == 1 and registered(), "stands in the start menu and in the list of programs")

    os.remove(os.path.join(PLACE, "LEIAME.txt"))
    # Without the word that the launcher gives it, the catalogue shows a box and stays.
    catalogue = subprocess.Popen([wine.WINE, os.path.join(PLACE, "CatalogoTarvo.exe")], env=wine.environment(),
                                 stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    time.sleep(8)
    check(catalogue.poll() is None, "the catalogue is open")
    check(run(installer, "/S") == OPEN, "refuses to upgrade an open catalogue")
    check(not os.path.exists(os.path.join(PLACE, "LEIAME.txt")), "and has changed nothing")
    before = files(PLACE)
    check(uninstall() == OPEN and files(PLACE) == before, "refuses to go while it is open")
    catalogue.kill()
    catalogue.wait()
    wine.stop()

    with open(os.path.join(PLACE, "Caminho.txt"), "wb") as file:
        file.write("C:\\Catalogo\\dados é".encode("cp1252"))
    check(run(installer, "/S") == 0, "upgrades where it was installed, without being told")
    check(os.path.exists(os.path.join(PLACE, "LEIAME.txt")), "and brings what was missing")
    check(pointer() == "C:\\Catalogo\\dados é".encode(), "the pointer still names the folder")
    data = os.path.join(PLACE, "dados é", "Tarvo.mdb")
    check(os.path.isdir(os.path.dirname(data)), "which was made")
    with open(data, "w", encoding="ascii") as file:
        file.write("data")

    check(uninstall() == 0, "uninstalls")
    left = files(PLACE) - {"desinstalar.exe"}  # which cannot delete itself where it runs
    check(left == {os.path.relpath(data, PLACE)}, "leaves the data, and nothing else")
    check(not links() and not registered(), "has gone from menu and list")


def main():
    installer = sys.argv[1] if len(sys.argv) > 1 else glob.glob(os.path.join(wine.BUILD, "Catalogo-*.exe"))[0]
    with tempfile.TemporaryDirectory(prefix="tarvo-windows-") as share, Screen(800, 600):
        wine.prepare(share)
        subprocess.run(["rm", "-rf", PLACE], check=True)
        try:
            live(installer)
            ask(installer)
        except AssertionError as problem:
            print(f"FAILED: installer: {problem}")
            return 1
        finally:
            wine.stop()
    return 0


if __name__ == "__main__":
    sys.exit(main())
