"""A small update site on the loopback: versions 2 and 3 of the catalogue that is being shown.

The program reaches it as the system's proxy, since it speaks to port 80 only and that port belongs
to others. Until publish() the newest version is the one that the catalogue has.
"""

import http.server
import os
import threading
import time
import urllib.parse

PART_NUMBER = "X93301"
PART_DESCRIPTION = "Válvula de proteção de três circuitos"
SLOW = "Figuras\\novidades.txt"  # long enough under way to be seen

VERSION_2 = [
    "B:UPDATE PECA SET DescricaoPeca = '1?' WHERE CodigoPeca = 2?",
    "Válvula revista<<;>>1",
]
VERSION_3 = [
    "B:INSERT INTO PECA (CodigoPeca, NumeroTarvoPeca, DescricaoPeca, ArquivoFotoPeca) "
    "VALUES (1?, '2?', '3?', '4?')",
    f"999001<<;>>{PART_NUMBER}<<;>>{PART_DESCRIPTION}<<;>>x93301.png",
    "R:",
]


class Handler(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        pieces = urllib.parse.unquote(urllib.parse.urlsplit(self.path).path).split("/")
        # Whatever base address the catalogue has, the site begins right under it.
        for begin in range(len(pieces)):
            content = self.server.files.get("\\".join(pieces[begin:]))
            if content is not None:
                if pieces[-1] == SLOW.split("\\")[-1]:
                    time.sleep(4)
                self.send_response(200)
                self.send_header("Content-Length", str(len(content)))
                self.end_headers()
                self.wfile.write(content)
                return
        self.send_error(404)

    def log_message(self, *_):
        pass


class UpdateSite:
    """While it is open, the environment names it as the proxy."""

    def __init__(self, photo):
        self.files = {"Versao.txt": b"1"}
        self._photo = photo

    def __enter__(self):
        self._server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self._server.files = self.files
        self._thread = threading.Thread(target=self._server.serve_forever, daemon=True)
        self._thread.start()
        self._before = dict(os.environ)
        os.environ["http_proxy"] = f"http://127.0.0.1:{self._server.server_port}"
        for name in ("no_proxy", "NO_PROXY"):
            os.environ.pop(name, None)
        return self

    def __exit__(self, *_):
        os.environ.clear()
        os.environ.update(self._before)
        self._server.shutdown()
        self._server.server_close()
        self._thread.join()

    def publish(self):
        with open(self._photo, "rb") as file:
            self._add("FotoPeca\\x93301.png", file.read())
        self._add(SLOW, b"novidades")
        self._add("scripts\\versao2.txt", lines(VERSION_2))
        self._add("scripts\\versao3.txt", lines(VERSION_3))
        self._add_list(2, ("SDB", "scripts\\versao2.txt"), ("FOTO", "FotoPeca\\x93301.png"))
        self._add_list(3, ("FOTO", SLOW), ("SDB", "scripts\\versao3.txt"))
        self._add("Versao.txt", b"3")

    def _add(self, name, content):
        self.files[name] = content

    def _add_list(self, version, *entries):
        self._add(f"ListVersao{version}.txt",
                  lines(f"{kind};{name};{len(self.files[name])}" for kind, name in entries))


def lines(texts):
    return "\r\n".join(texts).encode()
