"""A real broker, mosquitto, on a free port of loopback, until the end of its scope.

    with Broker(folder) as broker: ...                                        everybody may connect
    with Broker(folder, login=("plant", "secret")) as broker: ...             only with this user and password
    with Broker(folder, tls=Tls(authority, *authority.issue("broker"))) ...   certificates.Authority(folder) makes them

What lies between a program and its broker is proxy.Proxy.
"""

import os
import pathlib
import random
import shutil
import signal
import socket
import subprocess
import time

LONGEST = 20  # seconds until it must be there
PATH = os.environ.get("PATH", "") + ":/usr/sbin:/usr/local/sbin"
# Below the ports that the system gives to whoever asks for any, so that nobody takes the port of a broker that is away.
PORTS = range(20000, 32000)


def broker_is_missing():
    """The reason why no broker can be started here; empty when one can."""
    return "" if shutil.which("mosquitto", path=PATH) else "mosquitto is missing (scripts/setup test installs it)"


def free_port():
    while True:
        port = random.choice(PORTS)
        with socket.socket() as probe:
            probe.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
            try:
                probe.bind(("127.0.0.1", port))
                return port
            except OSError:
                continue


class Tls:
    """What a broker presents, and whether its clients must have a certificate of the same authority."""

    def __init__(self, authority, certificate, key, needs_client_certificate=False):
        self.lines = [f"cafile {authority.certificate}", f"certfile {certificate}", f"keyfile {key}",
                      f"require_certificate {str(needs_client_certificate).lower()}"]


class Broker:
    """`folder` is the test's; `settings` are further lines of mosquitto.conf, such as those of a bridge."""

    def __init__(self, folder, *settings, login=None, tls=None, persistence=False, name="broker"):
        self.folder = os.path.join(folder, name)
        os.mkdir(self.folder)
        # By default it keeps 1000 messages for a client and drops what comes then, such as the values of a large plant.
        self._lines = ["max_queued_messages 0", "sys_interval 1", "log_type all", "log_dest stderr", "set_tcp_nodelay true"]
        if os.geteuid() == 0:  # it would be another user then, who cannot read the folder
            self._lines.append("user root")
        if login:
            self._lines.append(f"password_file {self._passwords(*login)}")
        self._lines.append(f"allow_anonymous {str(not login).lower()}")
        if persistence:
            self._lines += ["persistence true", f"persistence_location {self.folder}/", "autosave_interval 1",
                            "autosave_on_changes true"]
        self._tls, self._settings = tls.lines if tls else [], settings
        self._process = None
        self.port = free_port()
        self.host = "127.0.0.1"
        self.scheme = "mqtts" if tls else "mqtt"

    @property
    def url(self):
        return f"{self.scheme}://{self.host}:{self.port}"

    def log(self):
        with open(os.path.join(self.folder, "log"), encoding="utf-8", errors="replace") as stream:
            return stream.read()

    def start(self):
        """Starts it, again on the same port after kill(), and returns when it accepts connections."""
        deadline = time.monotonic() + LONGEST
        while not self._starts():
            if time.monotonic() > deadline:
                raise AssertionError(f"mosquitto does not start: {self.log()}")
            time.sleep(0.1)
        return self

    def wait_until_saved(self, octets):
        """Returns when the file that survives it has these octets."""
        path, deadline = pathlib.Path(self.folder, "mosquitto.db"), time.monotonic() + LONGEST
        while not path.exists() or octets not in path.read_bytes():
            if time.monotonic() > deadline:
                raise AssertionError(f"{path} has no {octets}")
            time.sleep(0.05)

    def kill(self):
        """It has no time to close a connection or to save anything."""
        self._end(signal.SIGKILL)

    def stop(self):
        self._end(signal.SIGTERM)

    def freeze(self):
        """It keeps its connections and its port, and answers nothing until thaw()."""
        self._process.send_signal(signal.SIGSTOP)

    def thaw(self):
        self._process.send_signal(signal.SIGCONT)

    def __enter__(self):
        return self.start()

    def __exit__(self, *_):
        self.kill()

    def _starts(self):
        path = os.path.join(self.folder, "mosquitto.conf")
        with open(path, "w", encoding="utf-8") as stream:
            stream.write("\n".join([*self._lines, f"listener {self.port} {self.host}", *self._tls, *self._settings]) + "\n")
        with open(os.path.join(self.folder, "log"), "ab") as log:
            self._process = subprocess.Popen(
                [shutil.which("mosquitto", path=PATH), "-c", path], stdin=subprocess.DEVNULL, stdout=log, stderr=log)
        while self._process.poll() is None:
            try:
                socket.create_connection((self.host, self.port), timeout=1).close()
                return self._process.poll() is None
            except OSError:
                time.sleep(0.02)
        return False

    def _end(self, number):
        if self._process and self._process.poll() is None:
            self._process.send_signal(signal.SIGCONT)
            self._process.send_signal(number)
            self._process.wait()

    def _passwords(self, user, password):
        path = os.path.join(self.folder, "passwords")
        with open(path, "w", encoding="utf-8") as stream:
            stream.write(f"{user}:{password}\n")
        subprocess.run([shutil.which("mosquitto_passwd", path=PATH), "-U", path], check=True)
        return path
