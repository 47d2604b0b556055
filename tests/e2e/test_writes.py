"""Values are written to simulated devices with their priority and read back; errors are reported in words."""

import subprocess
import unittest

from bacnet import FakeDevice, Request, frame, real_answer
from capture import frames, only, requests_to, tshark, tshark_is_missing
from programs import LONGEST, PLANT_PROJECT, TASK, WORKBENCH, EndToEnd, ExamplePlant, block, variable

REASON = tshark_is_missing()

WEEK = ";".join(["08000000,4,9,21.500000,17300000,4,9,18.000000"] * 5 + ["", ""]) + ";"
EXCEPTIONS = "0,315032028,16,08000000,4,9,16.000000;"

COMMANDED = """device{ name = "D", instance = 7, objects = {
  analog_value{ instance = 1, name = "setpoint", present_value = 20.5, relinquish_default = 20,
                min_pres_value = 10, max_pres_value = 35 },
  analog_input{ instance = 1, name = "sensor", present_value = 5 },
} }
"""

SETPOINT = variable("setpoint", "analog-value", 1, write=True)
SENSOR = variable("sensor", "analog-input", 1, write=True)


class Writes(EndToEnd):
    def write(self, rows, *options, cycles=4, fields="Priority = 8,"):
        device = self.device(COMMANDED)
        run = self.workbench(TASK + block("D", device.address, rows, fields), *options, cycles=cycles)
        self.assertEqual(run.code, 0, run.errors)
        return run

    def last(self, run, name="D"):
        """The last state of a block, without the lines that answer a set."""
        run.output = "\n".join(line for line in run.output.splitlines() if not line.startswith('{"set"'))
        return run.of(name)[-1]

    def assert_write(self, state, name, stage, reason=""):
        write = state["variables"][name]["write"]
        self.assertEqual(write["state"], stage, write)
        self.assertIn(reason, write.get("reason", ""))

    def test_a_setpoint_is_written_and_read_back(self):
        state = self.last(self.write([SETPOINT], "--set", "D.setpoint=22.25"))
        self.assertFalse(state["fault"])
        self.assert_good(state, "setpoint", 22.25)
        self.assert_write(state, "setpoint", "written")

    def test_a_value_out_of_range_is_refused_with_its_reason(self):
        state = self.last(self.write([SETPOINT], "--set", "D.setpoint=40"))
        self.assertFalse(state["fault"])
        self.assert_good(state, "setpoint", 20.5)
        self.assert_write(state, "setpoint", "refused", "Class: Property Code: ValueOutOfRange")

    def test_a_sensor_cannot_be_written_and_the_poll_goes_on(self):
        state = self.last(self.write([SETPOINT, SENSOR], "--set", "D.sensor=6", "--set", "D.setpoint=21"))
        self.assertFalse(state["fault"])
        self.assert_good(state, "sensor", 5)
        self.assert_write(state, "sensor", "refused", "WriteAccessDenied")
        self.assert_write(state, "setpoint", "written")

    def test_lines_on_standard_input_set_values_and_typos_are_reported(self):
        device = self.device(COMMANDED)
        path = self.file("project.lua", TASK + block("D", device.address, [SETPOINT], "Priority = 8,"))
        run = subprocess.run(
            [WORKBENCH, "run", path, "--cycles", "6", "--format", "json"], text=True, timeout=LONGEST, check=False,
            input="set D.setpoint = 23\nset D.setpiont = 23\nset D.setpoint = warm\n",
            stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertIn('"state":"written","value":23', run.stdout)
        self.assertIn("D.setpoint", [line for line in run.stdout.splitlines() if "setpiont" in line][0])
        self.assertTrue([line for line in run.stdout.splitlines() if '"invalid"' in line and "warm" in line])

    def test_schedules_are_written_and_read_back(self):
        with ExamplePlant() as plant:
            run = self.workbench(
                PLANT_PROJECT, *plant.defines, "--set", f"AHU.Setpoint programme={WEEK}",
                "--set", f"AHU.Setpoint exceptions={EXCEPTIONS}", cycles=4)
        self.assertEqual(run.code, 0, run.errors)
        state = self.last(run, "AHU")
        self.assert_good(state, "Setpoint programme", WEEK)
        self.assert_good(state, "Setpoint exceptions", EXCEPTIONS)
        self.assert_write(state, "Setpoint programme", "written")
        self.assert_write(state, "Setpoint exceptions", "written")

    def test_a_text_that_is_not_a_schedule_is_refused_and_not_sent(self):
        with ExamplePlant() as plant:
            capture = self.file("run.pcap")
            run = self.workbench(PLANT_PROJECT, *plant.defines, "--pcap", capture,
                                 "--set", "AHU.Setpoint programme=06000000,4,9,21.500000;;;;;", cycles=4)
        self.assert_write(self.last(run, "AHU"), "Setpoint programme", "refused", "Number days != 7")
        with open(capture, "rb") as stream:
            self.assertNotIn(bytes.fromhex("0004010f"), stream.read())

    def test_a_failed_write_disturbs_neither_the_poll_nor_its_invoke_ids(self):
        def silent_to_writes(datagram):
            request = Request(datagram)
            return [] if request.apdu[3] == 15 else [real_answer(request, 1.0)]

        with FakeDevice(silent_to_writes) as device:
            run = self.workbench(
                TASK + block("D", device.address, [SETPOINT], "CountRepeat = 1,"), "--set", "D.setpoint=2", cycles=4)
        self.assertEqual([state["fault"] for state in run.of("D")], [False] * 4)
        reads = [Request(datagram) for datagram in device.received if datagram[9] == 14]
        writes = [Request(datagram) for datagram in device.received if datagram[9] == 15]
        self.assertEqual([request.invoke_id for request in reads], [1, 2, 3, 4])
        self.assertEqual([request.invoke_id for request in writes], [1])

    def test_a_rejected_write_reports_the_reason(self):
        def rejecting(datagram):
            request = Request(datagram)
            if request.apdu[3] == 15:
                return [frame(bytes([0x60, request.invoke_id, 9]))]
            return [real_answer(request, 1.0)]

        with FakeDevice(rejecting) as device:
            run = self.workbench(TASK + block("D", device.address, [SETPOINT]), "--set", "D.setpoint=2", cycles=4)
        self.assert_write(run.of("D")[-1], "setpoint", "refused", "Reason: UnrecognizedService")

    @unittest.skipIf(REASON, REASON)
    def test_an_analyser_dissects_a_write_as_configured(self):
        device = self.device(COMMANDED)
        capture = self.file("run.pcap")
        run = self.workbench(TASK + block("D", device.address, [SETPOINT], "Priority = 8,"), "--pcap", capture,
                             "--set", "D.setpoint=22.25", cycles=4)
        self.assertEqual(run.code, 0, run.errors)
        port = int(device.address.split(":")[1])
        writes = [sent for sent in requests_to(frames(capture, {port}), port)
                  if sent.get("bacapp.confirmed_service") == ["15"]]
        self.assertEqual(len(writes), 1)
        expected = {"bacapp.type": "0", "bacapp.invoke_id": "1", "bacapp.objectType": "2", "bacapp.instance_number": "1",
                 "bacapp.property_identifier": "85", "bacapp.max_adpu_size": "4", "bacapp.response_segments": "0",
                 "bacapp.SA": "0", "bacapp.present_value.real": "22.25"}
        self.assertEqual({field: only(writes[0], field) for field in expected}, expected)
        self.assertNotIn("_ws.malformed", writes[0])
        dissection = tshark(capture, {port}, "-O", "bacapp", "-Y", "bacapp.confirmed_service==15 && bacapp.type==0")
        self.assertIn("Priority: (Unsigned) 8", dissection)
