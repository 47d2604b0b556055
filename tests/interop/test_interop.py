"""The driver reads and writes a device with an independent implementation of BACnet, an npm package."""

import json
import os
import shutil
import subprocess
import tempfile
import unittest

from namespaces import PlantNetwork, device_address
from programs import TASK, WORKBENCH, EndToEnd, Server, block, variable
from reading import TYPES, read_device

FOLDER = os.path.dirname(os.path.abspath(__file__))


def why_not():
    """The reason why the device cannot run here; empty when it can."""
    node = shutil.which("node")
    if not node:
        return "Node.js 18 or newer is missing"
    version = subprocess.run([node, "--version"], stdout=subprocess.PIPE, text=True, check=False).stdout.strip()
    if not version.startswith("v") or int(version[1:].split(".")[0]) < 18:
        return f"Node.js 18 or newer is missing (found {version})"
    if not os.path.isdir(os.path.join(FOLDER, "node_modules", "@bacnet-js", "client")):
        return "the npm packages of tests/interop are missing (scripts/setup test installs them)"
    return ""


REASON = why_not()

# Name of the variable, object type and number, element type, property, expected value.
VALUES = [
    ("analog input", "analog-input", 1, "Float", "present-value", 21.5),
    ("its description", "analog-input", 1, "String", "description", "Supply air"),
    ("its units", "analog-input", 1, "UInt32", "units", 62),
    ("its out-of-service", "analog-input", 1, "Boolean", "out-of-service", False),
    ("its reliability", "analog-input", 1, "UInt32", "reliability", 0),
    ("its event state", "analog-input", 1, "UInt32", "event-state", 0),
    ("its status flags", "analog-input", 1, "UInt64", "status-flags", 0),
    ("analog output", "analog-output", 1, "Float", "present-value", 100),
    ("largest number", "analog-value", 4194302, "Double", "present-value", 3.4028234663852886e38),
    ("binary input", "binary-input", 1, "Boolean", "present-value", True),
    ("its polarity", "binary-input", 1, "UInt32", "polarity", 1),
    ("binary output", "binary-output", 7, "Boolean", "present-value", False),
    ("binary value", "binary-value", 300, "Boolean", "present-value", True),
    ("loop", "loop", 1, "Float", "present-value", 47.75),
    ("its setpoint", "loop", 1, "Float", "setpoint", 22),
    ("its proportional constant", "loop", 1, "Float", "proportional-constant", 2.5),
    ("its integral constant", "loop", 1, "Float", "integral-constant", 120),
    ("its derivative constant", "loop", 1, "Float", "derivative-constant", 0),
    ("multi-state input", "multi-state-input", 1, "UInt32", "present-value", 3),
    ("multi-state output", "multi-state-output", 1, "UInt32", "present-value", 255),
    ("multi-state value", "multi-state-value", 1, "UInt32", "present-value", 256),
    ("minimum", "averaging", 1, "Float", "minimum-value", 18.5),
    ("average", "averaging", 1, "Float", "average-value", 20.25),
    ("maximum", "averaging", 1, "Float", "maximum-value", 22),
    ("window interval", "averaging", 1, "UInt32", "window-interval", 3600),
    ("window samples", "averaging", 1, "UInt32", "window-samples", 60),
    ("accumulator", "accumulator", 1, "UInt32", "present-value", 4000000000),
    ("pulse converter", "pulse-converter", 1, "Float", "present-value", 12.5),
    ("its scale factor", "pulse-converter", 1, "Float", "scale-factor", 0.25),
    ("its adjust value", "pulse-converter", 1, "Float", "adjust-value", -1),
    ("bit string", "bitstring-value", 1, "String", "present-value", "101000000001"),
    ("integer", "integer-value", 1, "Int32", "present-value", 2147483647),
    ("large analog", "large-analog-value", 1, "Double", "present-value", 1234567890.125),
    ("octet string", "octetstring-value", 1, "String", "present-value", "007f80ff"),
    ("positive integer", "positive-integer-value", 1, "UInt32", "present-value", 65536),
    # 13:30:15.50. The driver reads the hundredths as tenths.
    ("time", "time-value", 1, "UInt32", "present-value", 48620000),
]


@unittest.skipIf(REASON, REASON)
class Interop(EndToEnd):
    def setUp(self):
        super().setUp()
        self.other = Server("node", "device.js", cwd=FOLDER)
        self.addCleanup(self.other.stop)

    def read(self, variables, *options, cycles=1, fields=""):
        run = self.workbench(TASK + block("other", self.other.address, variables, fields), *options, cycles=cycles)
        self.assertEqual(run.code, 0, run.errors)
        return run.of("other")

    def test_every_value_is_read_as_in_the_device(self):
        rows = [variable(name, kind, number, declared, prop) for name, kind, number, declared, prop, _ in VALUES]
        state, = self.read(rows)
        self.assertFalse(state["fault"], state["error"])
        for name, _, _, _, _, value in VALUES:
            with self.subTest(name):
                self.assert_good(state, name, value)

    def test_dates_are_local_midnight_and_date_times_are_not_converted(self):
        rows = [variable("date", "date-value", 1, "DateTime"), variable("moment", "datetime-value", 1, "DateTime")]
        os.environ["TZ"] = "UTC"
        self.addCleanup(os.environ.pop, "TZ")
        state, = self.read(rows)
        self.assert_good(state, "date")
        self.assertTrue(state["variables"]["date"]["value"].startswith("2024-03-15T00:00:00"), state)
        self.assertTrue(state["variables"]["moment"]["value"].startswith("2024-03-15T13:30:15.5"), state)

    def test_an_object_in_alarm_and_fault_is_a_sensor_failure(self):
        rows = [variable("value", "analog-input", 2), variable("flags", "analog-input", 2, "UInt64", "status-flags")]
        state, = self.read(rows)
        self.assertFalse(state["fault"], state["error"])
        self.assertEqual(state["variables"]["value"]["status"], "0x808C0000")
        self.assertEqual(state["variables"]["value"]["value"], -40.25)
        self.assert_good(state, "flags", 12)

    def test_an_object_that_the_device_lacks_is_a_fault(self):
        state, = self.read([variable("value", "analog-input", 99)], fields="CountRepeat = 1,")
        self.assertTrue(state["fault"])
        self.assertEqual(state["error"], "No connection")

    def test_a_write_is_acknowledged_and_decoded_as_configured(self):
        writes = [
            ("analog-output", 1, "Float", "-12.75", -12.75, [{"type": 4, "value": -12.75}]),
            ("binary-output", 7, "Boolean", "true", True, [{"type": 9, "value": 1}]),
            ("multi-state-output", 1, "UInt32", "300", 300, [{"type": 2, "value": 300}]),
            ("large-analog-value", 1, "Double", "0.5", 0.5, [{"type": 5, "value": 0.5}]),
        ]
        rows = [variable(kind, kind, number, declared, write=True) for kind, number, declared, *_ in writes]
        sets = [word for kind, _, _, text, *_ in writes for word in ("--set", f"other.{kind}={text}")]
        last = self.read(rows, *sets, cycles=4, fields="Priority = 8,")[-1]
        self.other.stop()
        wrote = [json.loads(line[6:]) for line in self.other.output.splitlines() if line.startswith("wrote ")]
        self.assertEqual(len(wrote), len(writes), wrote)
        self.assertFalse(last["fault"], last)
        for kind, number, _, _, value, decoded in writes:
            with self.subTest(kind):
                self.assertEqual(last["variables"][kind]["write"]["state"], "written", last)
                self.assert_good(last, kind, value)
                written, = [entry for entry in wrote if entry["object"][1] == number and entry["values"] == decoded]
                self.assertEqual((written["property"], written["priority"]), (85, 8))

    def test_300_cycles_in_a_row_are_answered(self):
        states = self.read([variable("value", "analog-input", 1)], cycles=300, fields="CountRepeat = 1,")
        self.assertEqual(len(states), 300)
        for state in states:
            self.assertFalse(state["fault"], state)
            self.assert_good(state, "value", 21.5)


PROPERTIES = {
    "present-value": 85, "description": 28, "units": 117, "out-of-service": 81, "reliability": 103, "event-state": 36,
    "status-flags": 111, "polarity": 84, "setpoint": 108, "proportional-constant": 93, "integral-constant": 49,
    "derivative-constant": 26, "minimum-value": 136, "average-value": 125, "maximum-value": 135, "window-interval": 147,
    "window-samples": 148, "scale-factor": 188, "adjust-value": 176,
}

# What the client by the standard prints, where it is not the value as a number.
TEXTS = {
    "its description": "Supply air", "its units": "degrees-celsius", "its reliability": "no-fault-detected",
    "its event state": "normal", "its status flags": "none", "its polarity": "reverse", "binary input": "active",
    "binary output": "inactive", "binary value": "active", "largest number": "3.4028235e+38", "time": "13:30:15.50",
    "its out-of-service": "false",
}


@unittest.skipIf(REASON, REASON)
class InteropOfTheClient(EndToEnd):
    """The client by the standard reads the same device."""

    def setUp(self):
        super().setUp()
        self.other = Server("node", "device.js", cwd=FOLDER)
        self.addCleanup(self.other.stop)

    def assert_values(self, *options):
        reads = [f"{TYPES[kind][0]},{number},{PROPERTIES[prop]}" for _, kind, number, _, prop, _ in VALUES]
        rows, _ = read_device(self.other.address, *options, *reads)
        self.assertEqual(len(rows), len(VALUES))
        for (name, kind, number, _, prop, value), (reference, _, text) in zip(VALUES, rows):
            with self.subTest(name):
                self.assertEqual(reference, f"{kind} {number} {prop}")
                self.assertEqual(text, TEXTS.get(name, f"{value:.15g}" if isinstance(value, float) else str(value)))

    def test_every_value_is_read_in_lists(self):
        self.assert_values()

    def test_every_value_is_read_singly(self):
        self.assert_values("--singly")

    def test_dates_are_those_of_the_device(self):
        rows, _ = read_device(self.other.address, "42,1,85", "44,1,85", "0,2,111")
        self.assertEqual([row[1:] for row in rows], [
            ["date", "2024-03-15"], ["date time", "2024-03-15 13:30:15.50"], ["bits", "in-alarm, fault"]])

    def test_errors_are_kept_apart_from_values(self):
        for options in ([], ["--singly"]):
            rows, _ = read_device(self.other.address, *options, "0,1,85", "0,1,65", "0,99,85")
            self.assertEqual([row[1:] for row in rows], [
                ["real", "21.5"], ["failure", "property: unknown-property"], ["failure", "object: unknown-object"]])


@unittest.skipIf(REASON, REASON)
class InteropOfTheWay(PlantNetwork):
    """From the network to a project, with a device that hears broadcasts."""

    def setUp(self):
        super().setUp()
        self.folder = tempfile.mkdtemp(prefix="dorvel-e2e-")
        self.addCleanup(shutil.rmtree, self.folder)
        self.other = Server("ip", "netns", "exec", self.plant, "node", "device.js", "--bind", "0.0.0.0", "--port", "47808",
                            cwd=FOLDER)
        self.addCleanup(self.other.stop)

    def succeed(self, *words):
        run = self.workbench(*words, cwd=self.folder)
        self.assertEqual(run.code, 0, f"{words}: {run.output}{run.errors}")
        return run

    def test_it_is_discovered_and_browsed_and_its_project_runs(self):
        device, *_ = (json.loads(line) for line in self.succeed("discover", "--format", "json").output.splitlines())
        self.assertEqual((device["instance"], device["name"], device["segmentation"], device["marks"]),
                         (9001, "device 9001", "no-segmentation", []))
        self.assertEqual(device["address"], device_address(0) + ":47808")

        whole, *found = (json.loads(line) for line in
                         self.succeed("browse", device["address"], "--format", "json").output.splitlines())
        self.assertTrue(whole["complete"], whole)
        self.assertLessEqual({f"{kind} {number}" for _, kind, number, *_ in VALUES}, {entry["object"] for entry in found})

        self.succeed("new", "other.lua", "--from", "discover")
        self.succeed("check", "--strict", "other.lua")
        run = self.succeed("run", "other.lua", "--cycles", "3", "--format", "json", "--fail-on", "fault,suspect")
        state = run.of("device 9001")[-1]
        self.assertEqual(state["variables"]["analog input 1"]["value"], 21.5)
        self.assertEqual(state["variables"]["analog input 1"]["unit"], "degrees-celsius")
        self.succeed("verify", "other.lua")


@unittest.skipIf(REASON, REASON)
class InteropOfARelease(EndToEnd):
    def test_a_released_command_is_a_null_at_its_priority(self):
        other = Server("node", "device.js", cwd=FOLDER)
        self.addCleanup(other.stop)
        process = subprocess.run(
            [WORKBENCH, "release", other.address, "analog-output", "1", "--priority", "16", "--yes"],
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, timeout=60, check=False)
        self.assertEqual(process.returncode, 0, process.stdout + process.stderr)
        rows, _ = read_device(other.address, "1,1,85", "1,1,87")
        self.assertEqual(rows[0][1:], ["real", "0"])
        self.assertEqual(set(rows[1][2].split(", ")), {"null"})
        other.stop()
        wrote, = [json.loads(line[6:]) for line in other.output.splitlines() if line.startswith("wrote ")]
        self.assertEqual((wrote["object"], wrote["property"], wrote["priority"]), ([1, 1], 85, 16))
        self.assertEqual(wrote["values"], [{"type": 0, "value": None}])
