#!/usr/bin/env python3
"""A web server that can do everything wrong. It also stands in for a proxy: the host of a request
does not matter to it.

    server.py FOLDER LOG [CERTIFICATE KEY]    serves the files of FOLDER, and each name of BEHAVIOURS
                                              in its own way; with a certificate over TLS

Prints its port, writes each request's head to LOG, ends with its standard input.
"""

import os
import socket
import ssl
import struct
import sys
import threading
import time
import urllib.parse

OK = b"HTTP/1.1 200 OK\r\n"


def answer(connection, body, status=b"200 OK", *headers, length=None):
    lines = [b"HTTP/1.1 " + status, b"Content-Length: %d" % (len(body) if length is None else length)]
    connection.sendall(b"\r\n".join([*lines, *headers, b"", b""]) + body)


def reset(connection):
    """The connection ends by a reset instead of an end."""
    connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
    connection.close()


def for_ever(connection, head, piece):
    connection.sendall(head)
    while True:
        connection.sendall(piece)


def drip(connection):
    connection.sendall(OK + b"Content-Length: 5\r\n\r\n")
    for letter in b"abcde":
        time.sleep(0.4)
        connection.sendall(bytes([letter]))


def reset_in_the_body(connection):
    answer(connection, b"x" * 5000, length=100000)
    time.sleep(0.2)  # what is still under way would be lost with the reset
    reset(connection)


def late(connection):
    time.sleep(1)
    answer(connection, b"tarde")


def silent_body(connection):
    answer(connection, b"x" * 10, length=100)
    time.sleep(60)


def has_password(head):
    """Of the user "maria", whose password is "s3nha"."""
    return b"Proxy-Authorization: Basic bWFyaWE6czNuaGE=\r\n" in head


def wants_password(connection, head):
    if has_password(head):
        answer(connection, b"dentro")
    else:
        answer(connection, b"fora", b"407 Proxy Authentication Required",
               b'Proxy-Authenticate: Basic realm="Oficina"', b"Connection: close")


BEHAVIOURS = {
    "ok": lambda c, _: answer(c, b"conte\xc3\xbado"),
    "empty": lambda c, _: answer(c, b""),
    "echo": lambda c, head: answer(c, head),
    "401": lambda c, _: answer(c, b"", b"401 Unauthorized"),
    "403": lambda c, _: answer(c, b"", b"403 Forbidden"),
    "404": lambda c, _: answer(c, b"nada", b"404 Not Found"),
    "500": lambda c, _: answer(c, b"falha", b"500 Internal Server Error"),
    "302": lambda c, _: answer(c, b"", b"302 Found", b"Location: /ok"),
    "short": lambda c, _: answer(c, b"x" * 40, length=100),
    "long": lambda c, _: answer(c, b"0123456789mais", length=10),
    "unannounced": lambda c, _: c.sendall(OK + b"\r\n" + b"y" * 10000),
    "reset": lambda c, _: reset(c),
    "reset-body": lambda c, _: reset_in_the_body(c),
    "close": lambda c, _: None,
    "garbage": lambda c, _: c.sendall(b"NADA DISSO\r\n\r\n"),
    "endless": lambda c, _: for_ever(c, OK + b"\r\n", b"z" * 65536),
    "endless-head": lambda c, _: for_ever(c, OK, b"X-Mais: e mais\r\n"),
    "endless-line": lambda c, _: for_ever(c, OK + b"X-Mais: ", b"e mais" * 1000),
    "encoded": lambda c, _: answer(c, b"abc", b"200 OK", b"Content-Encoding: gzip"),
    "identity": lambda c, _: answer(c, b"abc", b"200 OK", b"Content-Encoding:identity"),
    "two-lengths": lambda c, _: answer(c, b"abcdef", b"200 OK", b"Content-Length: 3"),
    "same-length": lambda c, _: answer(c, b"abc", b"200 OK", b"Content-Length: 3"),
    "list-of-lengths": lambda c, _: c.sendall(OK + b"Content-Length: 3, 6\r\n\r\nabcdef"),
    "silent": lambda c, _: time.sleep(60),
    "silent-body": lambda c, _: silent_body(c),
    "drip": lambda c, _: drip(c),
    "late": lambda c, _: late(c),
    "password": wants_password,
}


class Server:
    def __init__(self, folder, log, *certified):
        self.folder = folder
        self.log = log
        self.tls = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER) if certified else None
        if certified:
            self.tls.load_cert_chain(*certified)
        self.lock = threading.Lock()

    def run(self):
        listener = socket.create_server(("127.0.0.1", 0), backlog=16)
        print(listener.getsockname()[1], flush=True)
        while True:
            threading.Thread(target=self.serve, args=[listener.accept()[0]], daemon=True).start()

    def serve(self, connection):
        try:
            if self.tls:
                connection = self.tls.wrap_socket(connection, server_side=True)
            with connection:
                head = b""
                while not head.endswith(b"\r\n\r\n"):
                    piece = connection.recv(65536)
                    if not piece:
                        return
                    head += piece
                with self.lock, open(self.log, "ab") as log:
                    log.write(head)
                self.handle(connection, head)
        except OSError:
            pass  # the other side has had enough

    def handle(self, connection, head):
        path = urllib.parse.unquote(urllib.parse.urlsplit(head.split()[1].decode()).path)[1:]
        # A folder of files behind a proxy that asks.
        if path.startswith("guarded/") and not has_password(head):
            wants_password(connection, head)
            return
        # A whole folder may misbehave: what asks for a certain name finds every behaviour there.
        behaviour = BEHAVIOURS.get(os.path.basename(path), BEHAVIOURS.get(path.split("/")[0]))
        if behaviour:
            behaviour(connection, head)
            return
        try:
            with open(os.path.join(self.folder, path), "rb") as file:
                answer(connection, file.read(), b"200 OK", b"Connection: close")
        except OSError:
            answer(connection, b"", b"404 Not Found", b"Connection: close")


if __name__ == "__main__":
    threading.Thread(target=Server(*sys.argv[1:]).run, daemon=True).start()
    sys.stdin.read()
