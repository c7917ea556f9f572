"""A Windows of its own: a wine prefix and a virtual screen. Nothing outside build/windows is touched."""

import glob
import os
import shutil
import subprocess

ROOT = os.path.realpath(os.path.join(os.path.dirname(__file__), "..", ".."))
BUILD = os.path.join(ROOT, "build", "windows")
PREFIX = os.path.join(BUILD, "wine")
LIBRARIES = os.path.join(BUILD, "prefix")
WINE = "/usr/lib/wine/wine64"
SERVER = "servidor"  # of the one share that the prefix knows


def windows_path(path):
    """As the programs in there call a path of this machine."""
    return "Z:" + os.path.realpath(path).replace("/", "\\")


def here(path):
    """The other way round: where a path of the programs in there lies on this machine."""
    drive, rest = path[:2].upper(), path[2:].replace("\\", "/")
    return {"Z:": "", "C:": os.path.join(PREFIX, "drive_c")}.get(drive, drive) + rest


def environment(**more):
    compiler = subprocess.run(["x86_64-w64-mingw32-g++-posix", "-print-file-name=libstdc++-6.dll"],
                              capture_output=True, text=True, check=True).stdout.strip()
    folders = [os.path.join(LIBRARIES, "bin"), os.path.dirname(compiler), "/usr/x86_64-w64-mingw32/lib"]
    kept = {name: os.environ[name] for name in ("PATH", "HOME", "DISPLAY", "XDG_RUNTIME_DIR") if name in os.environ}
    return {**kept, "WINEPREFIX": PREFIX, "WINEDEBUG": "-all", "WINEDLLOVERRIDES": "mscoree,mshtml=",
            "WINEPATH": ";".join(map(windows_path, folders)), "LC_ALL": "C.UTF-8", **more}


def wine(*arguments, **options):
    return subprocess.run([WINE, *arguments], stdin=subprocess.DEVNULL, **options)


def keep_own_folders():
    """A user's desktop and documents, which wine makes links to those of this machine's: a home that may be
    gone by the next run, and a file dialog without a desktop ends its program."""
    for folder in glob.glob(os.path.join(PREFIX, "drive_c", "users", "*", "*")):
        if os.path.islink(folder):
            os.unlink(folder)
            os.mkdir(folder)


def prepare(share):
    """The prefix, made once; `share` is the folder behind \\\\servidor\\dados."""
    if not os.path.exists(os.path.join(PREFIX, "system.reg")):
        os.makedirs(PREFIX, exist_ok=True)
        wine("wineboot", "-i", env=environment(), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
        # What it gives itself out for otherwise is too old for the programs.
        wine("reg", "add", r"HKCU\Software\Wine", "/v", "Version", "/d", "win10", "/f", env=environment(),
             stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
    keep_own_folders()
    server = os.path.join(PREFIX, "dosdevices", "unc", SERVER)
    os.makedirs(server, exist_ok=True)
    link = os.path.join(server, "dados")
    if os.path.islink(link):
        os.unlink(link)
    os.symlink(os.path.realpath(share), link)


def stop():
    """Ends what runs in the prefix, and nothing else."""
    server = shutil.which("wineserver") or "/usr/lib/wine/wineserver64"
    subprocess.run([server, "-k"], env=environment(), check=False, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)
