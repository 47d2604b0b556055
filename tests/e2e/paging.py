"""A run with its page, and the requests of its tests, which are as raw as an attack is."""

import http.client
import json
import re
import select
import signal
import socket
import subprocess
import time
import unittest
from urllib.parse import urlsplit

from programs import LONGEST, PLANT_PROJECT, WORKBENCH, ExamplePlant


class PageAccess:
    """The page of a run, by the link that it printed."""

    def __init__(self, link):
        self.link = link
        parts = urlsplit(self.link)
        self.host, self.port = parts.hostname, parts.port
        self.token = re.fullmatch(r"token=([0-9a-f]{32})", parts.query)[1]
        self.cookie = ""

    def request(self, path, headers=None, method="GET", body=None):
        """The answer to a request of this page's own script, with other headers if they are given; None removes one."""
        all_headers = {"Cookie": self.cookie} | (headers or {})
        connection = http.client.HTTPConnection(self.host, self.port, timeout=LONGEST)
        try:
            connection.putrequest(method, path, skip_host="Host" in all_headers, skip_accept_encoding=True)
            for name, value in all_headers.items():
                if value is not None:
                    connection.putheader(name, value)
            if body is not None:
                connection.putheader("Content-Length", str(len(body)))
            connection.endheaders(body)
            response = connection.getresponse()
            response.text = response.read().decode()
            return response
        finally:
            connection.close()

    def sign_in(self):
        response = self.request(f"/?token={self.token}", {"Cookie": None})
        self.cookie = response.getheader("Set-Cookie").split(";")[0]
        self.session_token = json.loads(self.request("/api/session").text)["token"]

    def post(self, path, value, headers=None):
        return self.request(
            path, {"X-Page-Token": self.session_token, "Content-Type": "application/json"} | (headers or {}), "POST",
            json.dumps(value).encode())

    def stream(self):
        """An open event stream and its first line."""
        connection = http.client.HTTPConnection(self.host, self.port, timeout=LONGEST)
        connection.request("GET", "/api/stream", headers={"Cookie": self.cookie})
        return connection.getresponse()

    def connect(self):
        return socket.create_connection((self.host, self.port), timeout=LONGEST)

    def raw(self, octets):
        """What comes back for these octets until the end of the connection."""
        with self.connect() as connection:
            try:
                connection.sendall(octets)
            except OSError:
                pass
            return received(connection)


class PageRun(PageAccess):
    """dorvel-workbench run --page, until the end of its scope."""

    def __init__(self, *options, project=PLANT_PROJECT):
        self._process = subprocess.Popen(
            [WORKBENCH, "run", project, *options, "--page"], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.PIPE, text=True)
        self.lines = []
        for line in self._process.stderr:
            self.lines.append(line.strip())
            if line.startswith("page: "):
                break
        else:
            raise AssertionError(f"the program has printed no link: {self.lines}")
        super().__init__(self.lines[-1].split()[1])

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.stop()

    def stop(self):
        """Ends it as Ctrl-C does; returns its exit code and how many seconds that took."""
        begin = time.monotonic()
        if self._process.poll() is None:
            self._process.send_signal(signal.SIGINT)
        code = self._process.wait(timeout=LONGEST)
        self._process.stderr.close()
        return code, time.monotonic() - begin


def received(connection):
    octets = b""
    try:
        while part := connection.recv(65536):
            octets += part
    except ConnectionResetError:
        pass
    return octets


def status(octets):
    return int(octets.split(b" ", 2)[1]) if octets.startswith(b"HTTP/1.1 ") else None


def is_closed(connection):
    """Whether the other side has ended the connection."""
    readable, _, _ = select.select([connection], [], [], 0)
    return bool(readable) and not connection.recv(1, socket.MSG_PEEK)


class PageTestCase(unittest.TestCase):
    """The example plant with its page; a browser is signed in."""

    OPTIONS = ["--page-writes"]

    def setUp(self):
        self.plant = self.enterContext(ExamplePlant())
        self.page = self.enterContext(PageRun(*self.plant.defines, *self.OPTIONS))
        self.page.sign_in()

    def id_of(self, name):
        """Of a variable of the plant that can be set."""
        for block in json.loads(self.page.request("/api/plant").text)["blocks"]:
            for variable in block["variables"]:
                if variable["name"] == name:
                    return variable["id"]
        raise AssertionError(f"the plant lacks {name}")
