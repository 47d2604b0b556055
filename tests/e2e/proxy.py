"""The way between a program and its broker, which can be cut, slow or blocked."""

import socket
import struct
import threading
import time

PART = 16384


class Proxy:
    """Passes connections to 127.0.0.1:PORT on to another port, until the end of its scope.

    cut()      resets the connections that there are; new ones are accepted
    close()    resets them and closes new ones at once, until open()
    block()    passes nothing of the clients on and soon reads nothing more, until unblock(): their octets pile up
    delay      seconds for which each part is kept, in both directions
    """

    def __init__(self, target, host="127.0.0.1"):
        self._target = (host, target)
        self._listener = socket.socket()
        # Small, so that a client notices soon that nobody reads.
        self._listener.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, PART)
        self._listener.bind((host, 0))
        self._listener.listen()
        self.port = self._listener.getsockname()[1]
        self.delay = 0
        self.passed = 0  # octets from the clients
        self.accepted = 0  # connections
        self._is_open, self._is_ended = True, False
        self._may_read = threading.Event()
        self._may_read.set()
        self._mutex, self._sockets = threading.Lock(), []
        self._thread = threading.Thread(target=self._accept, daemon=True)

    def cut(self):
        with self._mutex:
            sockets, self._sockets = self._sockets, []
        for end in sockets:
            # No orderly end: a reset, as of a device on the way that has lost its table.
            end.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
            try:
                end.shutdown(socket.SHUT_RDWR)
            except OSError:
                pass
            end.close()

    def close(self):
        self._is_open = False
        self.cut()

    def open(self):
        self._is_open = True

    def block(self):
        self._may_read.clear()

    def unblock(self):
        self._may_read.set()

    def __enter__(self):
        self._thread.start()
        return self

    def __exit__(self, *_):
        self._is_ended = True
        self._may_read.set()
        self._listener.shutdown(socket.SHUT_RDWR)
        self._thread.join()
        self._listener.close()
        self.cut()

    def _accept(self):
        while not self._is_ended:
            try:
                client, _ = self._listener.accept()
            except OSError:
                return
            self.accepted += 1
            try:
                server = socket.create_connection(self._target, timeout=5)
            except OSError:
                server = None
            with self._mutex:
                self._sockets += [client] + ([server] if server else [])
            if not server or not self._is_open:
                self.cut()
                continue
            server.settimeout(None)
            for ends in ((client, server, True), (server, client, False)):
                threading.Thread(target=self._pass, args=ends, daemon=True).start()

    def _pass(self, source, destination, is_of_the_client):
        try:
            while True:
                part = source.recv(PART)
                if is_of_the_client:
                    self._may_read.wait()
                if not part:
                    break
                if self.delay:
                    time.sleep(self.delay)
                destination.sendall(part)
                self.passed += len(part) if is_of_the_client else 0
            destination.shutdown(socket.SHUT_WR)
        except OSError:
            pass
