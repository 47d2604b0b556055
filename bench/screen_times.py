"""How long a key and a value take to the screen of a run, in a pseudo-terminal, for scripts/bench."""

import fcntl
import os
import pty
import re
import select
import struct
import subprocess
import sys
import tempfile
import termios
import time

import measure

COLUMNS, ROWS = 120, 50
BLOCK = 100  # variables of each block of the large part of the plant
LONGEST = 60


def device_of(folder):
    """The device file of the large part, whose blocks all read the same objects."""
    device = os.path.join(folder, "device.lua")
    with open(device, "w") as file:
        file.write("local objects = {}\nfor i = 1, %d do table.insert(objects, analog_value{ instance = i, name = 'V' .. i, "
                   "present_value = curve{ mean = i, amplitude = 1, period = 10 } }) end\n"
                   "device{ instance = 1, name = 'D', objects = objects }\n" % BLOCK)
    return device


def project(folder, variables, address, counter):
    """The counter alone in a task of its own, then the blocks of the large part."""
    from programs import block, variable

    text = 'Task{ Name = "fast", Period = 20 }\nTask{ Name = "slow", Period = 1000 }\n'
    text += block("measured", counter, [variable("counter", "analog-value", 1)], 'Task = "fast",')
    for number in range(variables // BLOCK):
        text += block(f"block {number}", address, [variable(f"point {number}-{i}", "analog-value", i)
                                                   for i in range(1, BLOCK + 1)], 'Task = "slow",')
    path = os.path.join(folder, "project.lua")
    with open(path, "w") as file:
        file.write(text)
    return path


class Counter:
    """The answers of a device whose one value rises with each request, and when each was sent."""

    def __init__(self):
        self.sent = {}
        self.value = 0

    def __call__(self, datagram):
        from bacnet import Request, real_answer

        self.value += 1
        self.sent[self.value] = time.monotonic()
        return [real_answer(Request(datagram), float(self.value))]


class Screen:
    """A run on a pseudo-terminal."""

    def __init__(self, path):
        self.terminal, self.inside = pty.openpty()
        fcntl.ioctl(self.inside, termios.TIOCSWINSZ, struct.pack("HHHH", ROWS, COLUMNS, 0, 0))
        self.process = subprocess.Popen(
            [os.path.join(os.environ["DORVEL_BIN"], "dorvel-workbench"), "run", path, "--no-summary"], stdin=self.inside,
            stdout=self.inside, stderr=self.inside, env=dict(os.environ, TERM="xterm", NO_COLOR="1"), start_new_session=True,
            preexec_fn=lambda: fcntl.ioctl(0, termios.TIOCSCTTY, 0))

    def read(self, seconds):
        return os.read(self.terminal, 65536) if select.select([self.terminal], [], [], seconds)[0] else b""

    def read_for(self, seconds):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            self.read(0.01)

    def wait_for(self, pattern):
        """The match, and when it was read."""
        seen, deadline = b"", time.monotonic() + LONGEST
        while time.monotonic() < deadline:
            seen = (seen + self.read(1))[-200000:]
            match = re.search(pattern, seen)
            if match:
                return match, time.monotonic()
        raise measure.Failure(f"the screen does not show {pattern!r}: {seen[-2000:]!r}")

    def close(self):
        self.process.terminate()
        while self.process.poll() is None:
            self.read(0.1)
        os.close(self.terminal)
        os.close(self.inside)


def key_times(screen, count):
    """Milliseconds from a key to the picture with the row that it selects."""
    times = []
    for index in range(count):
        # The counter is the first variable below the headline; the next block's headline and its points follow.
        key, shown = ((b"G", rb">   point"), (b"g", rb">\xe2\x96\xbe measured"))[index % 2]
        begin = time.monotonic()
        os.write(screen.terminal, key)
        times.append((screen.wait_for(shown)[1] - begin) * 1000)
    return times


def value_times(screen, counter, count):
    """Milliseconds from the answer with a value to the picture that shows it."""
    times = []
    while len(times) < count:
        match, shown = screen.wait_for(rb"counter +(\d+)  ")
        times.append((shown - counter.sent[int(match.group(1))]) * 1000)
    return times


def times(variables, count):
    """Both lists, for a plant of so many variables."""
    sys.path.insert(0, os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "tests/e2e"))
    from bacnet import FakeDevice
    from programs import simulator

    counter = Counter()
    with tempfile.TemporaryDirectory() as folder, FakeDevice(counter) as fast, simulator(device_of(folder)) as large:
        screen = Screen(project(folder, variables, large.address, fast.address))
        try:
            screen.wait_for(rb"%d variables" % (variables + 1))
            screen.wait_for(rb"OK")
            screen.read_for(3)  # the first cycles of all blocks
            values = value_times(screen, counter, count)
            return key_times(screen, count), values
        finally:
            screen.close()


def at_most(samples, share):
    """The time that this share of the samples does not exceed."""
    return sorted(samples)[min(int(len(samples) * share), len(samples) - 1)]
