"""The workbench with and without a terminal."""

import fcntl
import os
import pty
import re
import select
import signal
import struct
import subprocess
import termios
import time

from bacnet import FakeDevice, Request, frame, real_answer
from programs import LONGEST, TASK, WORKBENCH, EndToEnd, block, variable


def settable():
    """The answer function of a device with one Real, which is 21.5 until another value is written."""
    held = [21.5]

    def answers(datagram):
        request = Request(datagram)
        if request.apdu[3] == 15:
            held[0], = struct.unpack(">f", request.apdu[13:17])
            return [frame(bytes([0x20, request.invoke_id, 15]))]
        return [real_answer(request, held[0])]

    return answers


class TerminalBase(EndToEnd):
    """Runs the workbench in a terminal."""

    columns = 140
    shown = b"21.5"  # when the screen has a value

    def plant(self):
        """What answers during the run, as a context with an address."""
        return FakeDevice(settable())

    def project(self, address):
        return TASK + block("ahu", address, [variable("supply", "analog-value", 1, write=True)])

    def start(self, device, *options, **streams):
        path = self.file("project.lua", self.project(device.address))
        process = subprocess.Popen([WORKBENCH, "run", path, *options], **streams)
        self.addCleanup(lambda: process.poll() is None and process.kill())
        return process

    def read_until(self, terminal, text, screen=b""):
        deadline = time.monotonic() + LONGEST
        while text not in screen:
            self.assertGreater(deadline, time.monotonic(), screen)
            if select.select([terminal], [], [], 1)[0]:
                screen += self.read_some(terminal)
        return screen

    @staticmethod
    def read_some(terminal):
        try:
            return os.read(terminal, 65536)
        except OSError:  # the other end is closed
            return b""

    def run_in_a_terminal(self, end):
        """Runs until a value is on the screen and calls end. Returns exit code, screen, and the modes before and after."""
        terminal, inside = pty.openpty()
        self.addCleanup(os.close, terminal)
        fcntl.ioctl(inside, termios.TIOCSWINSZ, struct.pack("HHHH", 30, self.columns, 0, 0))
        before = termios.tcgetattr(inside)
        with self.plant() as device:
            process = self.start(device, stdin=inside, stdout=inside, stderr=inside, start_new_session=True,
                                 preexec_fn=lambda: fcntl.ioctl(0, termios.TIOCSCTTY, 0),
                                 env=dict(os.environ, TERM="xterm-256color"))
            screen = self.read_until(terminal, self.shown)
            end(process, terminal)
            while process.poll() is None:
                if select.select([terminal], [], [], 0.1)[0]:
                    screen += self.read_some(terminal)
        while select.select([terminal], [], [], 0.1)[0]:
            some = self.read_some(terminal)
            if not some:
                break
            screen += some
        after = termios.tcgetattr(inside)
        os.close(inside)
        return process.returncode, screen, before, after

    def assert_restored(self, screen, before, after):
        self.assertEqual(after, before)
        for on, off in ((b"\x1b[?25l", b"\x1b[?25h"), (b"\x1b[?1049h", b"\x1b[?1049l")):
            self.assertGreaterEqual(screen.rfind(off), screen.rfind(on))


class Terminal(TerminalBase):
    def test_control_c_ends_cleanly_and_restores_the_terminal(self):
        code, screen, before, after = self.run_in_a_terminal(lambda _, terminal: os.write(terminal, b"\x03"))
        self.assertEqual(code, 0, screen)
        self.assert_restored(screen, before, after)

    def test_a_termination_restores_the_terminal(self):
        code, screen, before, after = self.run_in_a_terminal(lambda process, _: process.send_signal(signal.SIGTERM))
        self.assertEqual(code, 0, screen)
        self.assert_restored(screen, before, after)

    def test_the_screen_shows_value_and_quality(self):
        _, screen, _, _ = self.run_in_a_terminal(lambda process, _: process.send_signal(signal.SIGINT))
        plain = re.sub(rb"\x1b\[[0-9;?]*[A-Za-z]", b"", screen)
        for word in (b"ahu", b"supply", b"analog-value 1", b"21.5", b"Good"):
            self.assertIn(word, plain)

    def test_a_typed_value_is_pending_and_then_written(self):
        def type_a_value(process, terminal):
            os.write(terminal, b"s")
            os.write(terminal, b"ahu.supply = 23.25\r")
            seen = self.read_until(terminal, b"23.25 pending")
            self.read_until(terminal, b"23.25 written", seen)
            process.send_signal(signal.SIGINT)

        code, screen, before, after = self.run_in_a_terminal(type_a_value)
        self.assertEqual(code, 0, screen)
        self.assert_restored(screen, before, after)

    def test_a_typing_error_is_reported_at_once(self):
        def type_a_value(process, terminal):
            os.write(terminal, b"sahu.suply = 23.25\r")
            self.read_until(terminal, b"did you mean")
            process.send_signal(signal.SIGINT)

        code, screen, _, _ = self.run_in_a_terminal(type_a_value)
        self.assertEqual(code, 0, screen)

    def test_an_interrupt_without_a_terminal_ends_after_a_whole_line(self):
        with FakeDevice(settable()) as device:
            process = self.start(device, "--format", "json", stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                 stderr=subprocess.PIPE, text=True)
            process.stdout.readline()
            process.send_signal(signal.SIGINT)
            rest, errors = process.communicate(timeout=LONGEST)
        self.assertEqual(process.returncode, 0, errors)
        self.assertTrue(rest == "" or rest.endswith("}\n"))

    def test_an_interrupt_while_a_device_is_silent_ends_within_the_attempts(self):
        with FakeDevice() as device:
            process = self.start(device, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
            deadline = time.monotonic() + LONGEST
            while not device.received and time.monotonic() < deadline:
                time.sleep(0.01)
            begin = time.monotonic()
            process.send_signal(signal.SIGINT)
            _, errors = process.communicate(timeout=LONGEST)
        self.assertEqual(process.returncode, 0, errors)
        self.assertLess(time.monotonic() - begin, 5)  # three attempts of a second each, and no more

    def test_without_a_terminal_the_output_is_plain_lines(self):
        with FakeDevice(settable()) as device:
            process = self.start(device, "--cycles", "2", stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                 stderr=subprocess.PIPE)
            output, errors = process.communicate(timeout=LONGEST)
        self.assertEqual(process.returncode, 0, errors)
        self.assertNotIn(b"\x1b", output)
        self.assertNotIn(b"\r", output)
        self.assertIn(b"21.5", output)
