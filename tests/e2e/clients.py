"""A client of a broker that others wrote: the npm package mqtt, and sparkplug-payload for what it reads (tests/publish)."""

import json
import os
import subprocess
import threading
import time

from browser import node_is_missing
from programs import LONGEST, ROOT

FOLDER = os.path.join(ROOT, "tests", "publish")


def client_is_missing():
    """The reason why no client can be started here; empty when one can."""
    if not all(os.path.isdir(os.path.join(FOLDER, "node_modules", name)) for name in ("mqtt", "sparkplug-payload")):
        return "the npm packages of tests/publish are missing (scripts/setup test installs them)"
    return node_is_missing()


class Client:
    """Subscribed to topics until the end of its scope. `messages` has all that came, `newest` the last one of each topic.

    With keeps_all=False `messages` stays empty, for tests of many messages. `count` is how many came."""

    def __init__(self, url, *topics, keeps_all=True, **options):
        self._process = subprocess.Popen(
            ["node", os.path.join(FOLDER, "client.mjs"), url, json.dumps(options)], stdin=subprocess.PIPE,
            stdout=subprocess.PIPE, text=True)
        self.messages, self.newest, self.events, self.count = [], {}, [], 0
        self._keeps_all = keeps_all
        self._changed = threading.Condition()
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()
        try:
            self._wait_for_event("connected", or_error=True)
            if topics:
                self.send(subscribe=topics)
                self._wait_for_event("subscribed")
        except BaseException:
            self.stop()
            raise

    def publish(self, topic, text=None, **fields):
        """Returns when the broker has it. Fields are retain, qos, and sparkplug for a payload that is not text."""
        before = self._count("published")
        self.send(publish=topic, text=text, **fields)
        self._wait_for_event("published", before + 1)

    def send(self, **command):
        self._process.stdin.write(json.dumps(command) + "\n")
        self._process.stdin.flush()

    def wait_for(self, condition, what="", longest=LONGEST):
        """Waits until condition(self) is true, and returns what it returned."""
        deadline = time.monotonic() + longest
        with self._changed:
            while not (result := condition(self)):
                if not self._changed.wait(deadline - time.monotonic()) or time.monotonic() > deadline:
                    last = "\n".join(str(message)[:300] for message in self.messages[-10:])
                    raise AssertionError(f"{what or 'what was expected'} has not come within {longest} s; the last messages:\n{last}")
            return result

    def value(self, topic):
        """The newest JSON of a topic; None if there is none."""
        message = self.newest.get(topic)
        return json.loads(message["text"]) if message and message["text"] else None

    def wait_for_value(self, topic, condition, what="", longest=LONGEST):
        """Waits until the newest JSON of a topic meets a condition, and returns it."""
        def check(_):
            value = self.value(topic)
            return value if value is not None and condition(value) else None
        return self.wait_for(check, f"{topic}: {what}", longest)

    def of(self, topic):
        """All that came for a topic, oldest first."""
        with self._changed:
            return [message for message in self.messages if message["topic"] == topic]

    def stop(self):
        if not self._process.stdin.closed:
            self._process.stdin.close()
            try:
                self._process.wait(timeout=5)
            except subprocess.TimeoutExpired:
                self._process.kill()
                self._process.wait()
            self._reader.join()
            self._process.stdout.close()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.stop()

    def _read(self):
        for line in self._process.stdout:
            if not line.endswith("\n"):
                return  # it was killed while it wrote
            event = json.loads(line)
            with self._changed:
                if event["event"] == "message":
                    self.count += 1
                    if self._keeps_all:
                        self.messages.append(event)
                    self.newest[event["topic"]] = event
                else:
                    self.events.append(event)
                self._changed.notify_all()

    def _count(self, name):
        return sum(event["event"] == name for event in self.events)

    def _wait_for_event(self, name, count=1, or_error=False):
        def has_come(_):
            return self._count(name) >= count or or_error and self._count("error")
        self.wait_for(has_come, name)
        if self._count(name) < count:
            raise AssertionError(f"{name} has not come: {self.events}")
