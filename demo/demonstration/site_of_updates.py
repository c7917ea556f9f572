"""The update site of the demonstration while the catalogue is being shown.

The program reaches it as the system's proxy, since it speaks to port 80 only and that port belongs
to others. Until publish() the newest version is the one that the catalogue has.
"""

import os
import re
import shutil
import subprocess
import tempfile

SERVER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "update-server")
VERSION = "Versao.txt"
DOWNLOAD_SECONDS = 6  # long enough to be seen


class UpdateSite:
    """While it is open, the environment names it as the proxy."""

    def __init__(self, root):
        """`root` holds the site under the path that the catalogue asks for."""
        self._root = root

    def __enter__(self):
        self._folder = tempfile.TemporaryDirectory(prefix="tarvo-updates-")
        shutil.copytree(self._root, self._folder.name, dirs_exist_ok=True)
        paths = [os.path.join(folder, name)
                 for folder, _, names in os.walk(self._folder.name) for name in names]
        self._version, = (path for path in paths if os.path.basename(path) == VERSION)
        with open(self._version, encoding="ascii") as file:
            self._newest = file.read()
        self._write("1")
        pace = sum(map(os.path.getsize, paths)) // DOWNLOAD_SECONDS
        self._server = subprocess.Popen([SERVER, self._folder.name, "--pace", str(pace)],
                                        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        port = int(self._server.stdout.readline())
        self._before = dict(os.environ)
        os.environ["http_proxy"] = f"http://127.0.0.1:{port}"
        for name in ("no_proxy", "NO_PROXY"):
            os.environ.pop(name, None)
        return self

    def __exit__(self, *_):
        os.environ.clear()
        os.environ.update(self._before)
        self._server.terminate()
        self._server.communicate()
        self._folder.cleanup()

    def publish(self):
        self._write(self._newest)

    def new_part(self):
        """Number and description of the part that the site brings."""
        site = os.path.dirname(self._version)
        for folder, _, names in os.walk(site):
            for name in names:
                if not name.endswith(".sdb"):
                    continue
                with open(os.path.join(folder, name), encoding="utf-8") as file:
                    part = re.search(r"^E:INSERT INTO PECA .*? VALUES \(\d+, '(\w+)', '([^']+)'",
                                     file.read(), re.MULTILINE)
                if part:
                    return part.groups()
        raise LookupError(f"no script in {site} brings a part")

    def _write(self, version):
        with open(self._version, "w", encoding="ascii") as file:
            file.write(version)
