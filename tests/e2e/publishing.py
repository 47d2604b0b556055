"""A run that publishes, and the bases of its tests."""

import datetime
import json
import os
import re
import signal
import statistics
import subprocess
import threading
import time

from broker import Broker, broker_is_missing
from clients import Client, client_is_missing
from paging import PageAccess
from programs import LONGEST, WORKBENCH, EndToEnd, block, variable

# Ends a run that a test, killed by its time-out, could not end.
MOST_CYCLES = 3000
PERIOD = 100  # milliseconds
TASK = f'Task{{ Name = "fast", Period = {PERIOD} }}\n'


class Lines:
    """The lines of a stream, read by a thread as they come."""

    def __init__(self, stream):
        self.all = []
        self._changed = threading.Condition()
        self._thread = threading.Thread(target=self._read, args=(stream,), daemon=True)
        self._thread.start()

    def _read(self, stream):
        for line in stream:
            with self._changed:
                self.all.append(line.rstrip("\n"))
                self._changed.notify_all()

    def wait_for(self, pattern, after=0, longest=LONGEST):
        """The first line from that index on that has the pattern."""
        deadline = time.monotonic() + longest
        with self._changed:
            while True:
                found = next((line for line in self.all[after:] if re.search(pattern, line)), None)
                if found is not None:
                    return found
                if not self._changed.wait(deadline - time.monotonic()) or time.monotonic() > deadline:
                    raise AssertionError(f"no line has \"{pattern}\" after {longest} s:\n" + "\n".join(self.all[after:][-30:]))

    def join(self):
        self._thread.join()


class PublishingRun(PageAccess):
    """dorvel-workbench run with its cycles as JSON, its log, and with the option --page its page, until the end of its scope."""

    def __init__(self, project, *options, most_cycles=MOST_CYCLES):
        self.process = subprocess.Popen(
            [WORKBENCH, "run", project, "--format", "json", "--no-summary", "--cycles", str(most_cycles), *options],
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        self.output, self.log = Lines(self.process.stdout), Lines(self.process.stderr)
        if "--page" in options:
            super().__init__(self.log.wait_for("^page: http").split()[1])
            self.sign_in()

    @property
    def cycles(self):
        """The states of the blocks, oldest first."""
        return [state for line in self.output.all[:] if "block" in (state := json.loads(line))]

    def memory(self):
        """Resident, in MiB."""
        with open(f"/proc/{self.process.pid}/status", encoding="utf-8") as stream:
            return int(re.search(r"VmRSS:\s+(\d+) kB", stream.read())[1]) / 1024

    def outlet(self, name="mqtt"):
        """The state of an outlet as the page shows it."""
        outlets = json.loads(self.request("/api/values").text)["outlets"]
        return next(outlet for outlet in outlets if outlet["outlet"] == name)

    def wait_for_outlet(self, condition, name="mqtt", longest=LONGEST):
        deadline = time.monotonic() + longest
        while not condition(outlet := self.outlet(name)):
            if time.monotonic() > deadline:
                raise AssertionError(f"the page shows: {outlet}; the log: " + "\n".join(self.log.all[-20:]))
            time.sleep(0.05)
        return outlet

    def wait_for_cycles(self, count):
        """Returns when so many more lines of cycles are there."""
        wanted = len(self.output.all) + count
        deadline = time.monotonic() + LONGEST
        while len(self.output.all) < wanted:
            if self.process.poll() is not None or time.monotonic() > deadline:
                raise AssertionError(f"no more cycles: {self.log.all[-20:]}")
            time.sleep(0.01)

    def kill(self):
        self._end(signal.SIGKILL)

    def stop(self):
        """Ends it as Ctrl-C does; returns its exit code."""
        return self._end(signal.SIGINT)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.stop()

    def _end(self, number):
        if self.process.poll() is None:
            self.process.send_signal(number)
            self.process.wait(timeout=LONGEST)
        self.output.join()
        self.log.join()
        self.process.stdout.close()
        self.process.stderr.close()
        return self.process.returncode


def escaped(name):
    """A level of a topic: what topics give a meaning, and what is not a text, as %XX."""
    octets = name.encode() if isinstance(name, str) else name
    text = octets.decode(errors="surrogateescape")
    begin = "$" if text.startswith("$") else ""
    rest = "".join(f"%{character.encode(errors='surrogateescape')[0]:02X}"
                   if character in "/+#%~\x7f" or character < " " or "\udc80" <= character <= "\udcff" else character
                   for character in text[len(begin):])
    return ("%24" if begin else "") + rest or "%"


class BrokerTestCase(EndToEnd):
    """A test with a real broker and a client that others wrote."""

    def setUp(self):
        super().setUp()
        reason = broker_is_missing() or client_is_missing()
        if reason:
            self.skipTest(reason)

    def broker(self, *settings, **options):
        return self.enterContext(Broker(self.folder, *settings, **options))

    def client(self, url, *topics, **options):
        return self.enterContext(Client(url, *topics, **options))

    def run_of(self, project, *options):
        path = project if project.startswith("/") else self.file("project.lua", project)
        return self.enterContext(PublishingRun(path, *options))

    def assert_no_cycle_was_disturbed(self, run, block_name, period=PERIOD):
        """Its cycles went on in their period, whatever the broker did. A busy machine may be late, but not by what they wait for."""
        states = [state for state in run.cycles if state["block"] == block_name]
        times = [datetime.datetime.fromisoformat(state["time"]).timestamp() for state in states]
        pauses = [later - earlier for earlier, later in zip(times, times[1:])]
        self.assertGreater(len(pauses), 5)
        self.assertLess(statistics.median(pauses), period / 1000 * 1.5)
        self.assertLess(max(pauses), period / 1000 + 2.5)
        self.assertEqual([state["error"] for state in states if state["fault"]], [])


# A small plant whose values tests change: "Point 1" to "Point N", each with its number as the value.
def points_device(count):
    return (f'local objects = {{}}\nfor i = 1, {count} do\n'
            '  table.insert(objects, analog_value{ instance = i, name = "V" .. i, present_value = i })\nend\n'
            'device{ instance = 1, name = "D", objects = objects }\n')


def points_project(address, count, name="AHU", period=PERIOD):
    return TASK.replace(str(PERIOD), str(period)) + block(name, address, [variable(f"Point {i}", "analog-value", i, write=True) for i in range(1, count + 1)])
