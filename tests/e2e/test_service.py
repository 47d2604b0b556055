"""A run reports itself to a service manager: readiness, its state, that it is alive, and its end."""

import os
import signal
import socket
import subprocess
import time
import unittest

from programs import LONGEST, WORKBENCH, EndToEnd, block, variable

TASK = 'Task{ Name = "fast", Period = 100 }\n'
WATCHDOG = 0.6  # seconds


class Manager:
    """The socket of a service manager, on which a program reports."""

    def __init__(self, path):
        self._socket = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
        self._socket.bind(path)
        self.environment = {**os.environ, "NOTIFY_SOCKET": path, "WATCHDOG_USEC": str(int(WATCHDOG * 1e6))}
        self.environment.pop("WATCHDOG_PID", None)
        self.reports = []

    def next(self, seconds):
        """The next report; None if there is none within that time."""
        self._socket.settimeout(max(seconds, 0.001))
        try:
            self.reports.append(self._socket.recv(4096).decode())
        except socket.timeout:
            return None
        return self.reports[-1]

    def until(self, wanted):
        """Takes reports until one begins with that text, and returns it."""
        end = time.monotonic() + LONGEST
        while time.monotonic() < end:
            report = self.next(end - time.monotonic())
            if report and report.startswith(wanted):
                return report
        raise AssertionError(f"no report {wanted}; there were {self.reports}")

    def close(self):
        self._socket.close()


class Service(EndToEnd):
    def setUp(self):
        super().setUp()
        self.manager = Manager(self.file("notify"))
        self.addCleanup(self.manager.close)

    def start(self, address, *options, stdout=subprocess.DEVNULL):
        project = self.file("project.lua", TASK + block("AHU", address, [variable("V", "analog-input", 1)]))
        run = subprocess.Popen([WORKBENCH, "run", project, *options], env=self.manager.environment,
                               stdin=subprocess.DEVNULL, stdout=stdout, stderr=subprocess.PIPE, text=True)
        self.addCleanup(run.wait)
        self.addCleanup(run.kill)
        self.addCleanup(run.stderr.close)
        return run

    def silent(self):
        """The address of a device that never answers: each cycle takes seconds."""
        device = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        device.bind(("127.0.0.1", 0))
        self.addCleanup(device.close)
        return "127.0.0.1:%d" % device.getsockname()[1]

    def test_a_run_reports_readiness_state_life_and_end(self):
        device = self.device('device{name = "D", instance = 1, objects = {analog_input{instance = 1, name = "I", '
                             'present_value = 21.5, units = "degrees-celsius"}}}')
        run = self.start(device.address, "--format", "none", stdout=subprocess.PIPE)
        self.addCleanup(run.stdout.close)
        self.assertEqual(self.manager.next(LONGEST), "READY=1")
        self.assertEqual(self.manager.until("STATUS=1 block").split(",")[0], "STATUS=1 block")
        self.manager.until("WATCHDOG=1")
        self.manager.until("WATCHDOG=1")
        device.stop()
        self.assertEqual(self.manager.until("STATUS=1 block, 1 in fault"),
                         "STATUS=1 block, 1 in fault: AHU (No connection)")
        run.send_signal(signal.SIGTERM)
        self.manager.until("STOPPING=1")
        self.assertEqual(run.wait(timeout=LONGEST), 0)
        self.assertIsNone(self.manager.next(0))
        self.assertEqual(run.stdout.read(), "")
        self.assertRegex(run.stderr.read(), r"(?m)^\S+ \[AHU\] fault: No connection")

    def test_a_cycle_that_hangs_does_not_stop_the_reports(self):
        self.start(self.silent(), "--format", "none")
        self.manager.until("READY=1")
        end = time.monotonic() + 3
        longest, last = 0, time.monotonic()
        while time.monotonic() < end:
            self.manager.until("WATCHDOG=1")
            longest, last = max(longest, time.monotonic() - last), time.monotonic()
        self.assertLess(longest, WATCHDOG)

    def test_a_main_thread_that_hangs_ends_the_reports(self):
        device = self.device('device{name = "D", instance = 1, objects = {analog_input{instance = 1, name = "I"}}}')
        # Nobody reads the JSON lines: when the pipe is full, the main thread waits for the thread that writes.
        ends = os.pipe()
        self.addCleanup(os.close, ends[0])
        run = self.start(device.address, "--format", "json", stdout=ends[1])
        self.manager.until("WATCHDOG=1")
        full = os.open(f"/proc/self/fd/{ends[1]}", os.O_WRONLY | os.O_NONBLOCK)
        os.close(ends[1])
        self.addCleanup(os.close, full)
        try:
            while True:
                os.write(full, b"x" * 4096)
        except BlockingIOError:
            pass
        while self.manager.next(4 * WATCHDOG):
            self.assertLess(len(self.manager.reports), 200)
        self.assertIsNone(run.poll())
        self.assertNotIn("STOPPING=1", self.manager.reports)


if __name__ == "__main__":
    unittest.main()
