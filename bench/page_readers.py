#!/usr/bin/env python3
"""Reads the event stream of a page with many connections at once, for scripts/bench.

Usage: page_readers.py PORT COOKIE COUNT

Prints "reading" once every connection has its first event, and reads until standard input is closed. Then it prints
what came as one JSON object: octets, events, updates that were lost, connections that the server has ended.
"""

import json
import selectors
import socket
import sys


class Reader:
    def __init__(self, port, cookie):
        self.socket = socket.create_connection(("127.0.0.1", port))
        self.socket.sendall(f"GET /api/stream HTTP/1.1\r\nHost: 127.0.0.1:{port}\r\nCookie: {cookie}\r\n"
                            "Accept: text/event-stream\r\n\r\n".encode())
        self.socket.setblocking(False)
        self.octets = self.events = self.lost = 0
        self.tail = b""

    def read(self):
        """Takes what has come. False when the connection has ended."""
        data = self.socket.recv(1 << 18)
        self.octets += len(data)
        text = self.tail + data
        self.events += text.count(b"\nevent: ")
        self.lost += text.count(b"\nevent: lost")
        # The end may have the first octets of an event.
        self.tail = text[text.rfind(b"\n", max(0, len(text) - 12)):] if b"\n" in text[-12:] else b""
        return bool(data)


def main():
    port, cookie, count = int(sys.argv[1]), sys.argv[2], int(sys.argv[3])
    selector = selectors.DefaultSelector()
    selector.register(sys.stdin, selectors.EVENT_READ)
    readers = [Reader(port, cookie) for _ in range(count)]
    for reader in readers:
        selector.register(reader.socket, selectors.EVENT_READ, reader)
    ended = 0
    is_reading = False
    while True:
        for key, _ in selector.select():
            if key.data is None:
                print(json.dumps({"octets": sum(reader.octets for reader in readers),
                                  "events": sum(reader.events for reader in readers),
                                  "lost": sum(reader.lost for reader in readers), "ended": ended}), flush=True)
                return 0
            if not key.data.read():
                selector.unregister(key.fileobj)
                ended += 1
        if not is_reading and all(reader.events for reader in readers):
            is_reading = True
            print("reading", flush=True)


if __name__ == "__main__":
    sys.exit(main())
