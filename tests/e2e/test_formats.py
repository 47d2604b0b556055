"""The formats of a run for programs: CSV, and only what changes."""

import csv
import io
import json
import os
import re
import subprocess

from programs import LONGEST, ROOT, TASK, WORKBENCH, EndToEnd, block, variable

PLANT = """
device{
    instance = 5, name = "AHU",
    objects = {
        analog_input{instance = 1, name = "Supply", present_value = 21.5},
        analog_value{instance = 1, name = "Setpoint", present_value = 20},
    },
}
"""


class Formats(EndToEnd):
    def setUp(self):
        super().setUp()
        self.simulated = self.device(PLANT)
        self.project = self.file("project.lua", TASK + block("AHU", self.simulated.address, [
            variable("Supply", "analog-input", 1), variable("Setpoint", "analog-value", 1, write=True),
            variable("Missing", "analog-input", 9)]))

    def run_format(self, form, *options, cycles=6):
        process = subprocess.run(
            [WORKBENCH, "run", self.project, "--format", form, "--cycles", str(cycles), *options],
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=LONGEST, check=False)
        self.assertEqual(process.returncode, 0, process.stderr)
        return process.stdout.decode()

    def rows(self, *options, **more):
        return list(csv.DictReader(io.StringIO(self.run_format("csv", *options, **more), newline=""), strict=True))

    def test_csv_has_a_row_for_each_variable_and_cycle(self):
        text = self.run_format("csv", "--summary", cycles=2)
        lines = text.split("\r\n")
        self.assertEqual(len(lines), 1 + 2 * 3 + 1)
        self.assertEqual(lines[-1], "")
        self.assertNotIn("\n", "".join(lines))
        rows = self.rows(cycles=2)
        self.assertEqual([(row["cycle"], row["variable"]) for row in rows],
                         [(cycle, name) for cycle in "12" for name in ("Supply", "Setpoint", "Missing")])
        self.assertEqual(float(rows[0]["value"]), 21.5)
        self.assertEqual((rows[0]["state"], rows[0]["quality"], rows[0]["object"]), ("ok", "Good", "analog-input 1"))
        self.assertTrue(rows[2]["suspect"], rows[2])

    def test_the_manual_has_the_columns_in_their_order(self):
        with open(os.path.join(ROOT, "docs/workbench.md"), encoding="utf-8") as stream:
            table = stream.read().split("\n### CSV\n")[1].split("\n\n")[2]
        named = [name for row in table.splitlines()[2:] for name in re.findall(r"`(\w+)`", row.split("|")[1])]
        self.assertEqual(self.run_format("csv", cycles=1).splitlines()[0].split(","), named)

    def test_changes_only_shows_the_first_cycle_whole_and_then_what_a_write_changes(self):
        rows = self.rows("--changes-only", "--set", "AHU.Setpoint=22")
        self.assertEqual([row["variable"] for row in rows if row["cycle"] == "1"], ["Supply", "Setpoint", "Missing"])
        later = [row for row in rows if row["cycle"] != "1"]
        self.assertEqual({row["variable"] for row in later}, {"Setpoint"})
        self.assertEqual((later[-1]["value"], later[-1]["write"], later[-1]["write_value"]), ("22", "written", "22"))
        self.assertLess(len(later), 4)

    def test_a_dead_band_hides_small_changes_in_every_format(self):
        wide = ("--dead-band", "5", "--set", "AHU.Setpoint=22")
        for form in ("csv", "lines"):
            text = self.run_format(form, *wide)
            self.assertEqual(len([line for line in text.splitlines() if "Supply" in line]), 1, text)
        cycles = [json.loads(line) for line in self.run_format("json", *wide).splitlines()]
        self.assertEqual([len(cycle["variables"]) for cycle in cycles][0], 3)
        self.assertTrue(all([v["name"] for v in cycle["variables"]] in ([], ["Setpoint"]) for cycle in cycles[1:]), cycles)

    def test_a_lost_device_is_shown_once_and_not_in_every_cycle(self):
        self.simulated.stop()
        cycles = [json.loads(line) for line in self.run_format("json", "--changes-only", cycles=3).splitlines()]
        self.assertEqual(len(cycles), 1, cycles)
        self.assertTrue(cycles[0]["fault"])

    def test_the_table_takes_no_changes_only(self):
        process = subprocess.run([WORKBENCH, "run", self.project, "--format", "table", "--changes-only"],
                                 stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                                 timeout=LONGEST, check=False)
        self.assertEqual(process.returncode, 2)
        self.assertIn("--format lines, json or csv", process.stderr)
