"""Runs scripts/demo with the programs of this build."""

import os
import signal
import subprocess
import time
import uuid

from programs import BIN, LONGEST, PLANT, ROOT, EndToEnd


class Demo(EndToEnd):
    def setUp(self):
        super().setUp()
        # Every process that the script starts inherits this mark, and every temporary file is in the test's folder.
        self.mark = f"DORVEL_TEST_MARK={uuid.uuid4()}"
        name, value = self.mark.split("=")
        self.environment = dict(os.environ, DORVEL_BIN=BIN, TMPDIR=self.folder, **{name: value})

    def start(self, *options):
        return subprocess.Popen([os.path.join(ROOT, "scripts", "demo"), *options], env=self.environment,
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                                start_new_session=True)

    def processes(self):
        """The command lines of the processes with the mark."""
        found = []
        for entry in os.listdir("/proc"):
            try:
                with open(f"/proc/{entry}/environ", "rb") as environ, open(f"/proc/{entry}/cmdline", "rb") as command:
                    if entry.isdigit() and self.mark.encode() in environ.read():
                        found.append(command.read().replace(b"\0", b" ").decode())
            except OSError:
                continue
        return found

    def assert_nothing_is_left(self):
        self.assertEqual(self.processes(), [])
        self.assertEqual(os.listdir(self.folder), [])

    def wait_for_a_value(self, demo):
        """Reads the output up to the first line of the run of the example plant."""
        runs = False
        for line in demo.stdout:
            if runs and line.strip():
                return line
            runs = runs or line.startswith("demo: the plant as ")
        self.fail(demo.stderr.read())

    def test_shows_ten_cycles_and_a_summary_and_leaves_nothing(self):
        demo = self.start()
        output, errors = demo.communicate(timeout=LONGEST)
        self.assertEqual(demo.returncode, 0, output + errors)
        for device in PLANT.values():
            self.assertIn(device, output)
        for line in (r"\n +2001\b.*\bChiller\b|\n2001\t.*\tChiller\t", r"Chilled water supply", r"/plant.lua: no mistake "):
            self.assertRegex(output, line)
        for word in ("objects", "answers", "faults", "median", "maximum"):
            self.assertIn(word, output)
        self.assertRegex(output, "\nAHU.Supply air setpoint = 22 °C written\n")
        self.assertRegex(output, "\nAHU.Setpoint programme = 06000000,.* written\n")
        self.assertRegex(output, "\nAHU.Setpoint exceptions = 0,524122027,.* written\n")
        self.assertRegex(output, "\nAHU.Heating valve = 150 % refused .*ValueOutOfRange")
        self.assertRegex(output, r"\n107 points in 4 blocks: .*; no findings\n$")
        self.assert_nothing_is_left()

    def test_watching_runs_until_an_interrupt_and_then_ends_with_the_summary(self):
        demo = self.start("--watch")
        self.wait_for_a_value(demo)
        time.sleep(1)
        self.assertIsNone(demo.poll())
        os.killpg(demo.pid, signal.SIGINT)
        output, errors = demo.communicate(timeout=LONGEST)
        self.assertEqual(demo.returncode, 0, output + errors)
        self.assertIn("median", output)
        self.assert_nothing_is_left()

    def test_an_interrupt_leaves_nothing(self):
        demo = self.start()
        self.wait_for_a_value(demo)
        os.killpg(demo.pid, signal.SIGINT)
        demo.communicate(timeout=LONGEST)
        self.assertEqual(demo.returncode, 130)
        self.assert_nothing_is_left()

    def test_a_termination_leaves_nothing(self):
        demo = self.start("--watch")
        self.wait_for_a_value(demo)
        demo.terminate()
        demo.communicate(timeout=LONGEST)
        self.assertEqual(demo.returncode, 143)
        self.assert_nothing_is_left()

    def test_an_unknown_option_prints_the_usage(self):
        demo = subprocess.run([os.path.join(ROOT, "scripts", "demo"), "--nonsense"], env=self.environment,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=False)
        self.assertEqual(demo.returncode, 2)
        self.assertIn("Usage: scripts/demo", demo.stderr)
