"""The workbench says why a block is in its state: each fault of the simulator by its cause, within two cycles.

The tables in docs/reliability.md between the marks are those that these tests print with DORVEL_PRINT_TABLE=1."""

import json
import os
import re
import subprocess
import tempfile
import threading
import time
from concurrent.futures import ThreadPoolExecutor

from bacnet import FakeDevice, Request, real_answer
from programs import LONGEST, ROOT, SIMULATOR, WORKBENCH, EndToEnd, Server, block, variable

GOOD = "nothing: the driver reads the answer"

# By fault: the cause in JSON, and whether the answer must be segmented. None: the driver is not disturbed.
CAUSES = {
    "silence": "silent", "delay seconds=1.5": "late", "loss": "silent", "duplicate": "duplicate",
    "other_invoke_id": "other-invoke-id", "previous_answer": "earlier-answer", "other_address": "other-station",
    "truncate": "bad-answer", "bvlc_function": "bad-frame", "bvlc_type": "bad-frame", "bvlc_length": "bad-frame",
    "network_message": "network-message", "error": "error", "reject": "reject", "abort": "abort",
    "wrong_object": "other-object", "unasked_property": "unasked-property", "odd_list": "bad-answer",
    "garbage": "bad-frame", "headers_only": "bad-answer",
    "other_instance": None, "wrong_station": None, "changing_object_list": None,
}
SEGMENTED = {
    "lost_segment": "missing-segment", "segments_out_of_order": "missing-segment",
    "repeated_segment": "repeated-segment", "segments_at_once": None, "endless_segments count=300": "endless-segments",
    "oversized_segments": "long-answer",
}
WRITES = {"error": "refused", "reject": "refused", "abort": "refused", "silence": "refused"}

DEVICE = """device{name = "Room 1", instance = 1, objects = {
  analog_input{instance = 1, present_value = 21.5},
  analog_value{instance = 1, present_value = 21.5, description = "%s"},
  integer_value{instance = 1, present_value = 3}}}""" % ("x" * 2500)
SHORT = [variable("air", "analog-input", 1)]
LONG = [variable("words", "analog-value", 1, declared="String", prop="description")]
WRITTEN = [variable("count", "integer-value", 1, declared="Int32", write=True)]
# The period leaves time for an answer that comes late by half a second.
PERIOD = 'Task{ Name = "main", Period = 1000 }\n'


def general(text):
    """The text without what changes from run to run."""
    text = re.sub(r"\d\d:\d\d:\d\d", "12:00:00", text)
    text = re.sub(r"(127\.0\.0\.\d):\d+", r"\1:47808", text)
    return re.sub(r"1\.[0-4]\d s to [1-9]\.\d\d s", "1.00 s to 2.00 s", text)


def table_in(document, mark):
    with open(os.path.join(ROOT, document), encoding="utf-8") as stream:
        return re.search(f"<!-- {mark}: begin -->\n\n(.*?)\n\n<!-- {mark}: end -->", stream.read(), re.S).group(1)


class RunExplains(EndToEnd):
    def run_with(self, fault, variables, *options, cycles=2, fields="CountRepeat = 1,"):
        """The states of a block whose device has this fault from the start, and the log."""
        folder = tempfile.mkdtemp(dir=self.folder)
        kind, *fields_of_fault = fault.split()
        parameters = "".join(f", {field}" if "=" in field and field.split("=")[1].replace(".", "").isdigit() else
                             ', %s = "%s"' % tuple(field.split("=")) for field in fields_of_fault)
        device_file = os.path.join(folder, "device.lua")
        with open(device_file, "w", encoding="utf-8") as stream:
            stream.write(DEVICE.replace("objects", f'faults = {{fault{{"{kind}"{parameters}}}}}, objects', 1))
        project = os.path.join(folder, "project.lua")
        with Server(SIMULATOR, device_file, "--port", "0", "--bind", "127.0.0.1", "--exit-with-stdin") as device:
            with open(project, "w", encoding="utf-8") as stream:
                stream.write(PERIOD + block("room", device.address, variables, fields))
            run = subprocess.run([WORKBENCH, "run", project, "--cycles", str(cycles), "--format", "json", *options],
                                 stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=LONGEST, check=False)
        self.assertEqual(run.returncode, 0, run.stderr)
        return [json.loads(line) for line in run.stdout.splitlines() if '"block"' in line], run.stderr

    def explain(self, fault, cause, variables):
        """The text with which a block names the cause in one of two cycles."""
        states, _ = self.run_with(fault, variables)
        self.assertEqual(len(states), 2)
        if cause is None:
            self.assertEqual([state["causes"] for state in states], [[], []])
            self.assertFalse(states[-1]["fault"])
            return GOOD
        for state in states:
            for found in state["causes"]:
                if found["cause"] == cause:
                    return general(found["text"])
        self.fail(f"{fault}: {[state['causes'] for state in states]}")

    def explain_all(self, expected, variables):
        with ThreadPoolExecutor(6) as pool:
            return dict(zip(expected, pool.map(lambda row: self.explain(*row, variables), expected.items())))

    def assert_in_document(self, mark, rows):
        table = "\n".join(rows)
        if os.environ.get("DORVEL_PRINT_TABLE"):
            print(f"<!-- {mark}: begin -->\n\n{table}\n\n<!-- {mark}: end -->")
        self.assertEqual(table_in("docs/reliability.md", mark), table)

    def test_every_fault_is_named_within_two_cycles_as_the_document_says(self):
        rows = ["| Fault | The state of the block says |", "|---|---|"]
        for expected, variables in ((CAUSES, SHORT), (SEGMENTED, LONG)):
            for fault, text in self.explain_all(expected, variables).items():
                rows.append(f"| `{fault}` | {text} |")
        self.assert_in_document("cause table", rows)

    def test_the_table_has_every_fault_of_the_simulator(self):
        with open(os.path.join(ROOT, "simulator/objects/Fault.h"), encoding="utf-8") as stream:
            kinds = set(re.findall(r'\{FaultKind::\w+, "(\w+)"', stream.read()))
        self.assertEqual({fault.split()[0] for fault in {**CAUSES, **SEGMENTED}}, kinds)

    def explain_write(self, fault):
        states, _ = self.run_with(fault + " on=write", WRITTEN, "--set", "room.count=5", cycles=3)
        write = states[-1]["variables"][0]["write"]
        self.assertEqual(write["state"], WRITES[fault], write)
        return write["reason"]

    def test_every_failed_write_is_named_as_the_document_says(self):
        rows = ["| Fault of a write | The state of the write |", "|---|---|"]
        with ThreadPoolExecutor(4) as pool:
            for fault, reason in zip(WRITES, pool.map(self.explain_write, WRITES)):
                rows.append(f"| `{fault}` | {WRITES[fault]} ({reason}) |")
        self.assert_in_document("write table", rows)

    def test_a_value_that_comes_from_an_error_is_suspect(self):
        device = self.device(DEVICE)
        rows = [variable("air", "analog-input", 1), variable("missing", "analog-input", 99),
                variable("odd", "analog-input", 1, declared="String", prop="description", data_value=False)]
        run = self.workbench(PERIOD + block("room", device.address, rows), "--summary", "--fail-on", "suspect")
        self.assertEqual(run.code, 1, run.errors)
        variables = run.of("room")[0]["variables"]
        self.assertNotIn("suspect", variables["air"])
        self.assertEqual(variables["missing"]["suspect"], "device: unknown-object")
        self.assertEqual(variables["missing"]["quality"], "Good")
        self.assertIn("room.missing: suspect, device: unknown-object\n", run.errors)

    def test_a_signed_value_that_the_driver_sends_as_another_one_differs(self):
        device = self.device(DEVICE)
        run = self.workbench(PERIOD + block("room", device.address, WRITTEN, "Priority = 8,"), "--set", "room.count=200",
                             "--summary", "--fail-on", "differs", cycles=4)
        self.assertEqual(run.code, 1, run.errors)
        state = run.of("room")[-1]["variables"]["count"]
        self.assertEqual(state["value"], 200)
        self.assertEqual(state["write"], {"state": "differs", "value": 200, "device": "-56",
                                          "reason": "the driver sent -56, the device holds it"})
        self.assertIn("room.count = 200 differs (the driver sent -56, the device holds it)\n", run.errors)
        self.assertIn("  room.count: integer-value 1 present-value = -56 at priority 8\n"
                      "    release: WriteProperty integer-value 1 present-value, value Null, priority 8\n", run.errors)

    def test_a_late_device_is_measured_while_the_block_waits_for_its_next_answer(self):
        states, _ = self.run_with("delay seconds=1.5", SHORT, cycles=1, fields="CountRepeat = 3,")
        [cause] = states[0]["causes"]
        self.assertEqual(cause["cause"], "late")
        delay = float(re.search(r"answers come (\d\.\d\d) s after the request, later than 1.00 s; dropped: 2",
                                cause["text"]).group(1))
        self.assertAlmostEqual(delay, 1.5, delta=0.4)

    def test_segments_without_end_are_logged_while_the_cycle_lasts(self):
        _, log = self.run_with("endless_segments count=300", LONG, cycles=1)
        self.assertIn("[room, analog-value 1, words] The device sends segments without end", log)

    def test_the_log_names_block_object_and_variable(self):
        _, log = self.run_with("error", SHORT, "--log-format", "json", cycles=1)
        lines = [json.loads(line) for line in log.splitlines()]
        [line] = [line for line in lines if line["text"] == "0-1 std::bad_cast"]
        self.assertEqual((line["block"], line["object"], line["variable"]), ("room", "analog-input 1", "air"))
        self.assertRegex(line["time"], r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}[+-]\d\d:\d\d$")


class Standby(EndToEnd):
    def test_a_block_of_the_standby_sends_nothing_until_the_standby_is_off(self):
        with FakeDevice(lambda datagram: [real_answer(Request(datagram), 21.5)]) as device:
            project = self.file("project.lua", 'Task{ Name = "fast", Period = 20 }\n' + block(
                "room", device.address, [variable("air", "analog-input", 1)]))
            workbench = subprocess.Popen([WORKBENCH, "run", project, "--format", "json", "--standby"], text=True,
                                         stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
            timer = threading.Timer(LONGEST, workbench.kill)
            timer.start()
            try:
                for _ in range(5):
                    self.assertTrue(json.loads(workbench.stdout.readline())["standby"])
                self.assertEqual(device.received, [])
                workbench.stdin.write("standby off\n")
                workbench.stdin.flush()
                end = time.monotonic() + LONGEST
                state = {}
                while state.get("standby", True) is not False or "block" not in state:
                    self.assertLess(time.monotonic(), end)
                    state = json.loads(workbench.stdout.readline())
                self.assertEqual(state["variables"][0]["value"], 21.5)
                self.assertGreater(len(device.received), 0)
            finally:
                timer.cancel()
                workbench.terminate()
                workbench.communicate(timeout=LONGEST)
