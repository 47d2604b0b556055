"""Records runs, kills them, and reads the recordings with the program sqlite3."""

import csv
import datetime
import io
import json
import os
import random
import re
import shutil
import signal
import subprocess
import time

from programs import LONGEST, ROOT, TASK, WORKBENCH, EndToEnd, block, variable

KILLS = int(os.environ.get("DORVEL_RECORD_KILLS", "10"))
# A transaction a second, and what a busy machine adds.
MISSING_AT_MOST = 1.5

DEVICE = """device{name = "AHU-1", instance = 1001, objects = {
  analog_input{instance = 1, name = "Supply air", present_value = ramp{from = 18, to = 22, period = 10}},
  analog_input{instance = 2, name = "Return air", present_value = 21.5, description = "Return; \\"quoted\\""},
  multi_state_value{instance = 1, name = "Mode", present_value = 1, number_of_states = 3}}}"""


def milliseconds(text):
    """An ISO time as milliseconds since 1970."""
    return round(datetime.datetime.fromisoformat(text).timestamp() * 1000)


class Record(EndToEnd):
    def setUp(self):
        super().setUp()
        if not shutil.which("sqlite3"):
            self.skipTest("the program sqlite3 is missing")
        address = self.device(DEVICE).address
        self.project = self.file("plant.lua", TASK + block("AHU", address, [
            variable("Supply air", "analog-input", 1), variable("Return air", "analog-input", 2),
            variable("Note", "analog-input", 2, declared="String", prop="description"),
            variable("Mode", "multi-state-value", 1, declared="UInt32")], "CountRepeat = 1,"))
        self.recording = self.file("plant.sqlite")

    def command(self, *words, recording=None):
        return [WORKBENCH, "run", self.project, "--format", "json", "--no-summary",
                "--record", recording or self.recording, *words]

    def begin(self, *words, **settings):
        """A run in the background, which writes its cycles into a file."""
        with open(self.file("cycles.json"), "w", encoding="utf-8") as cycles:
            process = subprocess.Popen(self.command(*words, **settings), stdin=subprocess.DEVNULL, stdout=cycles,
                                       stderr=subprocess.PIPE, text=True)
        self.addCleanup(process.stderr.close)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        self.wait_for(self.cycles)
        return process

    def cycles(self):
        """The whole lines that the run has printed of its blocks."""
        with open(self.file("cycles.json"), encoding="utf-8") as stream:
            lines = stream.read().split("\n")[:-1]
        return [cycle for cycle in map(json.loads, lines) if "block" in cycle]

    def wait_for(self, condition):
        end = time.monotonic() + LONGEST
        while not condition():
            self.assertLess(time.monotonic(), end)
            time.sleep(0.02)

    def query(self, statement, recording=None):
        process = subprocess.run(["sqlite3", "-batch", "-json", recording or self.recording, statement],
                                 stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, timeout=LONGEST, check=False)
        self.assertEqual((process.returncode, process.stderr), (0, ""), statement)
        return json.loads(process.stdout or "[]")

    def export(self, *words, code=0, recording=None):
        process = subprocess.run([WORKBENCH, "export", recording or self.recording, *words], stdin=subprocess.DEVNULL,
                                 stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, timeout=LONGEST,
                                 env=dict(os.environ, TZ="UTC0"), check=False)
        self.assertEqual(process.returncode, code, process.stdout + process.stderr)
        return process.stdout if code == 0 else process.stderr

    def assert_recorded(self, cycles, until):
        """Each change of the ramp up to that time is in the recording, with its time, and nothing else."""
        expected, latest = [], None
        for cycle in cycles:
            value = cycle["variables"][0]["value"]
            if milliseconds(cycle["time"]) <= until and value != latest:
                expected.append((milliseconds(cycle["time"]), value))
                latest = value
        found = self.query("SELECT time, value FROM samples WHERE variable = 'Supply air' AND time >= %d ORDER BY time" %
                           expected[0][0])
        self.assertEqual([(row["time"], row["value"]) for row in found], expected)

    def test_a_killed_run_leaves_a_whole_recording_that_misses_at_most_the_last_second(self):
        chance = random.Random(20261123)
        worst = 0
        for kill in range(KILLS):
            process = self.begin()
            time.sleep(chance.uniform(0, 1.8))
            process.kill()
            process.wait()
            cycles = self.cycles()
            self.assertEqual(self.query("PRAGMA integrity_check"), [{"integrity_check": "ok"}])
            spans = self.query("SELECT until FROM polled WHERE since >= %d" % milliseconds(cycles[0]["time"]))
            until = spans[-1]["until"] if spans else milliseconds(cycles[0]["time"]) - 1
            missing = (milliseconds(cycles[-1]["time"]) - until) / 1000
            worst = max(worst, missing)
            self.assertLess(missing, MISSING_AT_MOST, f"kill {kill}")
            if spans:
                self.assert_recorded(cycles, until)
        self.assertEqual(len(self.query("SELECT id FROM run WHERE ended IS NULL")), KILLS)
        print(f"record: {KILLS} kills, at most {worst:.2f} s are missing")

    def test_another_reader_and_the_export_agree_while_a_run_records(self):
        process = self.begin()
        self.wait_for(lambda: os.path.exists(self.recording) and
                      self.query("SELECT count(*) AS n FROM samples WHERE variable = 'Supply air'")[0]["n"] > 30)
        self.assertIn("another program records into this file",
                      subprocess.run(self.command("--cycles", "1"), stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                     stderr=subprocess.PIPE, text=True, timeout=LONGEST, check=False).stderr)
        self.assertIn("time,block,variable,value", self.export())
        process.send_signal(signal.SIGINT)
        self.assertEqual(process.wait(timeout=LONGEST), 0)
        self.assertEqual(os.path.exists(self.recording + "-wal"), False)
        cycles = self.cycles()
        self.assert_recorded(cycles, milliseconds(cycles[-1]["time"]))

        found = self.query("SELECT time, value, quality FROM samples WHERE variable = 'Supply air' ORDER BY time")
        rows = list(csv.DictReader(io.StringIO(self.export("--variable", "AHU.S*"))))
        self.assertEqual([(milliseconds(row["time"]), float(row["value"]), row["quality"]) for row in rows[:len(found)]],
                         [(row["time"], row["value"], row["quality"]) for row in found])
        self.assertEqual(milliseconds(rows[-1]["time"]), milliseconds(cycles[-1]["time"]))
        lines = [json.loads(line) for line in self.export("--format", "json", "--variable", "*.Note").splitlines()]
        self.assertEqual(lines[0]["value"], 'Return; "quoted"')

        path = self.file("out.csv")
        self.assertIn("rows: ", self.export("-o", path, "--from", "-1h"))
        self.assertIn("--force", self.export("-o", path, code=2))
        self.assertIn("this is the recording", self.export("-o", self.recording, "--force", code=2))
        self.assertEqual(len(self.export("--list").splitlines()), 5)
        self.assertIn('"AHU.x" is not recorded', self.export("--variable", "AHU.x", code=2))
        self.assertIn("not a database", self.export(recording=self.project, code=4))
        self.assertIn("does not exist", self.export(recording=self.project + "x", code=4))

    def test_the_queries_of_the_document_run(self):
        subprocess.run(self.command("--cycles", "3"), stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, timeout=LONGEST, check=True)
        with open(os.path.join(ROOT, "docs", "record.md"), encoding="utf-8") as stream:
            queries = re.findall(r'^    sqlite3 (?:-csv )?plant.sqlite "(SELECT .*)"$', stream.read(), re.MULTILINE)
        self.assertEqual(len(queries), 4)
        results = [self.query(query) for query in queries]
        self.assertEqual({row["variable"] for row in results[0]}, {"Supply air", "Return air", "Note", "Mode"})
        self.assertEqual([len(result) for result in results[1:]], [1, 0, 1])

    def test_a_full_disk_is_reported_and_the_recording_goes_on_when_there_is_space(self):
        if os.geteuid() != 0 or subprocess.run(["unshare", "-m", "true"], stderr=subprocess.DEVNULL, check=False).returncode:
            self.skipTest("a small disk needs root and a mount namespace")
        disk = self.file("disk")
        os.mkdir(disk)
        recording = os.path.join(disk, "plant.sqlite")
        with open(self.file("cycles.json"), "w", encoding="utf-8") as cycles, \
                open(self.file("log"), "w", encoding="utf-8") as log:
            process = subprocess.Popen(
                ["unshare", "-m", "sh", "-c", 'mount -t tmpfs -o size=2m tmpfs "$0" && exec "$@"', disk,
                 *self.command(recording=recording)],
                stdin=subprocess.DEVNULL, stdout=cycles, stderr=log)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        self.wait_for(self.cycles)
        seen_from_here = f"/proc/{process.pid}/root"
        filler = seen_from_here + os.path.join(disk, "filler")

        def logged(text):
            with open(self.file("log"), encoding="utf-8") as stream:
                return text in stream.read()

        self.wait_for(lambda: os.path.exists(seen_from_here + recording + "-wal"))
        try:
            with open(filler, "wb") as stream:
                while True:
                    stream.write(bytes(4096))
                    stream.flush()
        except OSError:
            pass
        self.wait_for(lambda: logged("the disk is full"))
        count = len(self.cycles())
        self.wait_for(lambda: len(self.cycles()) > count + 50)
        os.remove(filler)
        self.wait_for(lambda: logged("the disk is full") and self.last_line("log").endswith("records into " + recording))
        # The disk goes away with the last process of its namespace.
        subprocess.run(["nsenter", "-t", str(process.pid), "-m", "-r", "sqlite3", recording, f".backup {self.recording}"],
                       timeout=LONGEST, check=True)
        process.send_signal(signal.SIGINT)
        self.assertEqual(process.wait(timeout=LONGEST), 0)
        self.assertEqual(self.query("PRAGMA integrity_check"), [{"integrity_check": "ok"}])
        self.assert_recorded(self.cycles(), self.query("SELECT max(until) AS until FROM polled")[0]["until"])

    def last_line(self, name):
        with open(self.file(name), encoding="utf-8") as stream:
            return (stream.read().splitlines() or [""])[-1]
