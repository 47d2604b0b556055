"""The screen of a run in a pseudo-terminal, as a person sees it."""

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

from bacnet import FakeDevice
from programs import LONGEST, TASK, WORKBENCH, EndToEnd, block, simulator, variable
from screen import ScreenReader
from test_terminal import settable

def device(count):
    """The file of a device with that many analog values, each with its number as the value."""
    return (f'local objects = {{}}\nfor i = 1, {count} do\n'
            '  table.insert(objects, analog_value{ instance = i, name = "V" .. i, present_value = i })\nend\n'
            'device{ instance = 1, name = "D", objects = objects }\n')


def two_blocks(address):
    """Forty variables in two blocks; the first one of each can be set."""
    variables = [variable(f"point {number}", "analog-value", number, write=number in (1, 21)) for number in range(1, 41)]
    return TASK + block("one", address, variables[:20]) + block("two", address, variables[20:])


class ScreenBase(EndToEnd):
    def plant(self):
        return simulator(self.file("device.lua", device(40)))

    def project(self, address):
        return two_blocks(address)

    def open(self, columns=80, rows=24, *options, **variables):
        """Starts the run. Its screen is self.screen."""
        device = self.plant()
        device.__enter__()
        self.addCleanup(device.__exit__, None, None, None)
        path = self.file("project.lua", self.project(device.address))
        self.terminal, self.inside = pty.openpty()
        self.addCleanup(os.close, self.terminal)
        self.addCleanup(os.close, self.inside)
        self.before = termios.tcgetattr(self.inside)
        self.screen = ScreenReader(columns, rows)
        self.raw = b""
        self.set_size(columns, rows)
        environment = {name: value for name, value in os.environ.items() if name != "NO_COLOR"}
        self.process = subprocess.Popen(
            [WORKBENCH, "run", path, *options], stdin=self.inside, stdout=self.inside, stderr=self.inside,
            start_new_session=True, preexec_fn=lambda: fcntl.ioctl(0, termios.TIOCSCTTY, 0),
            env=dict(environment, TERM="xterm-256color", **variables) if "TERM" not in variables else dict(environment, **variables))
        self.addCleanup(self.process.wait)
        self.addCleanup(lambda: self.process.poll() is None and self.process.kill())

    def set_size(self, columns, rows):
        fcntl.ioctl(self.inside, termios.TIOCSWINSZ, struct.pack("HHHH", rows, columns, 0, 0))

    def resize(self, columns, rows):
        self.pump(0)
        self.screen.resize(columns, rows)
        self.set_size(columns, rows)
        os.kill(self.process.pid, signal.SIGWINCH)

    def pump(self, seconds):
        if select.select([self.terminal], [], [], seconds)[0]:
            try:
                octets = os.read(self.terminal, 65536)
            except OSError:  # the other side is closed
                return False
            self.raw += octets
            self.screen.feed(octets)
            return bool(octets)
        return False

    def wait_for(self, condition):
        """Reads until the screen meets the condition, or has the text."""
        meets = condition if callable(condition) else lambda screen: condition in screen.text
        deadline = time.monotonic() + LONGEST
        while not meets(self.screen):
            self.assertGreater(deadline, time.monotonic(), self.screen.text)
            self.pump(0.1)

    def type(self, keys, condition):
        os.write(self.terminal, keys.encode())
        self.wait_for(condition)

    def selected(self):
        """The name in the selected row."""
        rows = (re.match("> *[\u25be\u25b8!?~]? *(.*?)(  |$)", line) for line in self.screen.lines)
        return next((row.group(1) for row in rows if row), None)

    def select(self, keys, name):
        self.type(keys, lambda _: self.selected() == name)

    def stop(self, number=signal.SIGINT):
        self.process.send_signal(number)
        deadline = time.monotonic() + LONGEST
        while self.process.poll() is None:
            self.assertGreater(deadline, time.monotonic())
            self.pump(0.1)
        while self.pump(0.1):
            pass
        return self.process.returncode

    def assert_restored(self):
        self.assertEqual(termios.tcgetattr(self.inside), self.before)
        self.assertEqual(self.screen.modes & {1000, 1006, 1049}, set())
        self.assertGreater(self.raw.rfind(b"\x1b[?25h"), self.raw.rfind(b"\x1b[?25l"))


class ScreenKeys(ScreenBase):
    def test_every_key_that_moves(self):
        self.open()
        self.wait_for("point 18")
        self.select("\x1b[B\x1b[Bj", "point 3")
        self.select("\x1b[Ak", "point 1")
        self.select("\x1b[6~", "two")
        self.select("\x1b[5~", "point 1")
        self.select(" ", "two")
        self.select("\x1b[F", "point 40")
        self.select("g", "one")
        self.select("G", "point 40")
        self.select("\x1b[H", "one")
        self.select("\x1b[<65;1;1M", "point 3")
        self.select("\x1b[<64;1;1M", "one")
        self.select("\x1b[<0;9;7M", "point 5")
        self.type("\x1b[<0;9;7M", "one.point 5")

    def test_a_sequence_that_comes_in_two_parts(self):
        self.open()
        self.wait_for("point 18")
        os.write(self.terminal, b"j\x1b")
        os.write(self.terminal, b"[B")
        self.wait_for(lambda _: self.selected() == "point 2")

    def test_the_filter_the_toggles_and_the_folds(self):
        self.open()
        self.wait_for("point 18")
        self.type("/two. 3", "11 of 40 variables")
        self.type("\x7f39\r", "1 of 40 variables  filter \"two. 39\"")
        self.type("\x1b", "\n40 variables")
        self.type("b", "only bad")
        self.type("b", "\n40 variables")
        self.type("w", "2 of 40 variables  only writable")
        self.type("c", "only changed, only writable")
        self.type("a", "\n40 variables")
        self.type("f", "20 variables")
        self.type("\x1b[C", "point 3")
        self.type("\x1b[D", lambda screen: "point" not in screen.text)
        self.type("f", "point 3")

    def test_the_details_the_log_and_the_keys(self):
        self.open(80, 40)
        self.wait_for("point 18")
        self.type("jj\r", "The object as its device describes it")
        self.wait_for("event-state")
        self.wait_for("Trend")
        self.type("q", "40 variables")
        self.type("l", lambda screen: re.search("Log, (no )?lines", screen.text))
        self.type("?", "These keys")
        self.type("\x1b", "40 variables")
        self.type("\x0c", "40 variables")

    def test_a_value_is_set_and_its_state_stays_visible(self):
        self.open(40, 10)
        self.wait_for("point 1 ")
        self.type("j", lambda _: self.selected() == "point 1")
        self.type("s", "value: one.point 1 =")
        self.type("77\r", "written")
        self.wait_for(lambda screen: re.search(r"point 1 +77 .*written", screen.lines[2]))
        self.type("sone.point 1 = x\r", "one.point 1 = x")

    def test_tab_shows_the_candidates(self):
        self.open()
        self.wait_for("point 18")
        self.type("s\t", "  one.point 1   two.point 21")
        self.type("t\t", "value: two.point 21")
        self.type("\x1b", "40 variables")


class ScreenSizes(ScreenBase):
    def test_every_size_is_used_and_no_line_is_too_long(self):
        for columns, rows in ((80, 24), (132, 43), (240, 70), (40, 8)):
            with self.subTest(columns=columns, rows=rows):
                self.open(columns, rows)
                self.wait_for("40 variables")
                self.wait_for(lambda screen: sum("point" in line for line in screen.lines) >= min(rows - 6, 40))
                self.assertEqual("present-value" in self.screen.text, columns >= 80)
                self.assertEqual(self.stop(), 0)

    def test_resizing_while_one_scrolls(self):
        self.open()
        self.wait_for("point 18")
        self.select("\x1b[F", "point 40")
        for columns, rows in ((240, 70), (60, 12), (100, 30), (40, 8), (80, 24)):
            self.resize(columns, rows)
            os.write(self.terminal, b"k")
            self.wait_for("40 variables")
            self.select("G", "point 40")
        self.assertIn("two  OK", self.screen.lines[1])

    def test_a_window_that_is_made_too_small_says_so(self):
        self.open()
        self.wait_for("point 18")
        self.resize(60, 5)
        self.wait_for("the table needs 40x8")
        self.resize(80, 24)
        self.wait_for("point 18")
        self.assertEqual(self.stop(), 0)
        self.assert_restored()

    def test_a_plain_or_small_terminal_gets_lines(self):
        for columns, rows, kind in ((80, 24, "dumb"), (30, 5, "xterm"), (39, 24, "xterm"), (80, 7, "xterm")):
            with self.subTest(columns=columns, rows=rows, kind=kind):
                self.open(columns, rows, "--cycles", "2", TERM=kind)
                self.screen = ScreenReader(1000, 1000)
                while self.process.poll() is None:
                    self.pump(0.1)
                while self.pump(0.1):
                    pass
                self.assertNotIn(b"\x1b", self.raw)
                self.assertIn(b"one\t1\tOK\tpoint 1\tanalog-value 1\tpresent-value\t1\t", self.raw)

    def test_no_color_means_no_colours(self):
        self.open(NO_COLOR="1")
        self.wait_for("point 18")
        self.select("jj", "point 2")
        self.assertNotRegex(self.raw, rb"\x1b\[[0-9;]+m")


class ScreenEnd(ScreenBase):
    def test_the_last_state_stays_visible(self):
        self.open()
        self.wait_for(lambda screen: re.search(r"point 18 +18  Good", screen.text))
        self.assertEqual(self.stop(), 0)
        self.assert_restored()
        self.assertIn(b"point 18", self.raw[self.raw.rfind(b"\x1b[?1049l"):])

    def test_control_c_and_termination_restore_the_terminal(self):
        for number in (signal.SIGTERM, signal.SIGHUP):
            with self.subTest(number):
                self.open()
                self.wait_for("point 18")
                self.assertEqual(self.stop(number), 0)
                self.assert_restored()
        self.open()
        self.wait_for("point 18")
        os.write(self.terminal, b"\x03")
        self.process.wait(LONGEST)
        self.pump(0.1)
        self.assert_restored()

    def test_a_crash_restores_the_terminal(self):
        for number in (signal.SIGABRT, signal.SIGQUIT):
            with self.subTest(number):
                self.open()
                self.wait_for("point 18")
                self.assertEqual(self.stop(number), -number)
                self.assert_restored()

    def test_the_second_control_c_restores_the_terminal_at_once(self):
        self.plant = lambda: FakeDevice()  # it does not answer, so that the run cannot end at once
        self.open()
        self.wait_for("40 variables")
        deadline = time.monotonic() + LONGEST
        while self.process.poll() is None:
            self.assertGreater(deadline, time.monotonic())
            os.write(self.terminal, b"\x03")
            self.pump(0.1)
        self.assertIn(self.process.returncode, (0, 130))
        self.pump(0.1)
        self.assert_restored()

    def test_a_terminal_that_is_not_read_keeps_nobody_waiting(self):
        capture = self.file("run.pcap", "")
        self.open(240, 70, "--pcap", capture)
        self.wait_for("point 18")
        # Pictures of changing sizes fill the terminal, whose other side is not read from here on.
        deadline = time.monotonic() + LONGEST
        for index in range(20):
            self.set_size(240 - index % 2, 70)
            os.kill(self.process.pid, signal.SIGWINCH)
            octets = os.path.getsize(capture)
            while os.path.getsize(capture) == octets:  # the cycles go on
                self.assertGreater(deadline, time.monotonic())
                select.select([], [], [], 0.02)
        self.process.send_signal(signal.SIGINT)
        self.assertEqual(self.process.wait(LONGEST), 0)
        self.assertEqual(termios.tcgetattr(self.inside), self.before)

    def test_a_suspended_run_leaves_the_terminal_and_comes_back(self):
        self.open()
        self.wait_for("point 18")
        os.kill(self.process.pid, signal.SIGTSTP)
        self.wait_for(lambda screen: 1049 not in screen.modes and termios.tcgetattr(self.inside) == self.before)
        os.kill(self.process.pid, signal.SIGCONT)
        self.wait_for("point 18")
        self.assertIn(1049, self.screen.modes)
        self.assertEqual(self.stop(), 0)


class ScreenOfALargePlant(ScreenBase):
    """5,000 variables in 50 blocks."""

    def plant(self):
        return simulator(self.file("device.lua", device(500)))

    def project(self, address):
        return 'Task{ Name = "slow", Period = 1000 }\n' + "".join(
            block(f"block {number}", address, [variable(f"point {number}-{i}", "analog-value", i, write=i == 1)
                                               for i in range(1, 101)])
            for number in range(1, 51))

    def test_it_is_scrolled_filtered_and_shown_to_the_end(self):
        self.open(120, 40)
        self.wait_for("5000 variables")
        self.select("G", "point 50-100")
        self.wait_for(lambda screen: re.search(r"point 50-100 +100  Good", screen.text))
        self.type("/50-77", "1 of 5000 variables")
        self.type("\x1b", "5000 variables")
        for _ in range(160):
            os.write(self.terminal, b"\x1b[5~")
        self.wait_for(lambda _: self.selected() == "block 1")
        self.assertEqual(self.stop(), 0)
        self.assert_restored()
