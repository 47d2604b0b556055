"""The command verify: every verdict, with simulated devices; it never writes and always ends."""

import json
import os
import re
import signal
import socket
import subprocess
import threading
import time

from bacnet import FakeDevice, Request
from programs import LONGEST, PLANT_PROJECT, ROOT, TASK, WORKBENCH, EndToEnd, ExamplePlant, block, variable

DEVICE = """
device{
    name = "D", instance = 7, max_apdu_length_accepted = 206,
    objects = {
        analog_input{instance = 1, name = "Supply", present_value = 21.5, units = "degrees-celsius",
                     description = "%s"},
        analog_input{instance = 2, name = "Return", present_value = 20},
    },
    faults = {%s},
}
""" % ("x" * 400, "%s")


# scripts/test-long asks for more of them.
ROUNDS = int(os.environ.get("DORVEL_VERIFY_ROUNDS", "20"))


class Verified:
    """The result of a run: exit code, both outputs, and the lines of the format json."""

    def __init__(self, process):
        self.code, self.output, self.errors = process.returncode, process.stdout, process.stderr
        lines = [json.loads(line) for line in self.output.splitlines()] if self.output.startswith("{") else []
        self.points = {line["name"]: line for line in lines if line["kind"] == "variable"}
        self.blocks = {line["block"]: line for line in lines if line["kind"] == "block"}
        self.summary = next((line for line in lines if line["kind"] == "summary"), None)

    def verdict(self, name):
        return self.points[name]["verdict"]


class Verify(EndToEnd):
    def verify(self, project, *options, style="json", longest=LONGEST):
        path = project if project.startswith("/") else self.file("project.lua", project)
        return Verified(subprocess.run(
            [WORKBENCH, "verify", path, "--format", style, *options], stdin=subprocess.DEVNULL, capture_output=True,
            text=True, timeout=longest, check=False))

    def one_block(self, device_text, *variables, options=("--timeout", "300"), fields=""):
        device = self.device(device_text)
        return self.verify(TASK + block("B", device.address, variables, fields), *options)

    def faulty(self, fault, timeout=200):
        """A device with that fault, the time that verify takes, and its result."""
        begin = time.monotonic()
        result = self.one_block(DEVICE % fault, variable("T", "analog-input", 1),
                                variable("Text", "analog-input", 1, "String", "description"),
                                variable("R", "analog-input", 2), options=("--timeout", str(timeout)))
        result.seconds = time.monotonic() - begin
        return result

    def test_the_example_plant_has_no_findings_in_twenty_rounds(self):
        with ExamplePlant() as plant:
            result = self.verify(PLANT_PROJECT, *plant.defines, "--rounds", str(ROUNDS), longest=LONGEST + 5 * ROUNDS)
        self.assertEqual((result.code, result.summary["findings"]), (0, 0),
                         [point for point in result.points.values() if point["finding"]])
        self.assertEqual((result.summary["rounds"], result.summary["points"]), (ROUNDS, 107))
        self.assertIn("moving", {point["verdict"] for point in result.points.values()})
        self.assertEqual(result.blocks["Chiller"]["device"]["instance"], 2001)
        self.assertIn("network 5, address 0A14", result.blocks["Chiller"]["reachedAt"])

    def test_every_point_has_what_the_device_says_of_it(self):
        with ExamplePlant() as plant:
            result = self.verify(PLANT_PROJECT, *plant.defines)
        point = result.points["Supply air temperature"]
        self.assertEqual((point["objectName"], point["description"], point["units"]),
                         ("Supply air temperature", "Behind the heating coil", "degrees-celsius"))
        self.assertEqual(result.points["State"]["stateText"], "off")
        self.assertEqual(result.points["Filter alarm"]["stateText"], "clean")
        self.assertEqual(result.points["Frost sensor reliability"]["remarks"], ["fault"])
        self.assertEqual(result.points["Alarm state"]["remarks"], ["in alarm"])

    def test_what_a_device_does_not_have_is_named(self):
        result = self.one_block(DEVICE % "", variable("T", "analog-input", 1), variable("X", "analog-input", 9),
                                variable("P", "analog-value", 4, "Double"))
        self.assertEqual(result.code, 1)
        self.assertEqual(result.verdict("T"), "agrees")
        self.assertEqual(result.verdict("X"), "no such object")
        self.assertIn("the driver shows 1e-45 with quality Good, which is not a value of the device",
                      result.points["X"]["explanation"])
        self.assertEqual(result.verdict("P"), "no such object")

    def test_a_missing_property_that_stops_the_whole_block_is_named(self):
        result = self.one_block(
            """device{name = "D", instance = 7, objects = {
                analog_input{instance = 1, name = "A", present_value = 1}, averaging{instance = 2, name = "B"}}}""",
            variable("T", "analog-input", 1), variable("O", "averaging", 2, "Boolean", "out-of-service"))
        self.assertEqual(result.verdict("O"), "no such property")
        self.assertIn("the driver's poll of the whole block fails on it", result.points["O"]["explanation"])
        self.assertEqual(result.verdict("T"), "no value")
        self.assertIn("the poll of the block ended at averaging 2", result.points["T"]["explanation"])

    def test_what_the_driver_loses_is_named(self):
        result = self.one_block(
            """device{name = "D", instance = 7, objects = {
                integer_value{instance = 1, name = "I", present_value = -5},
                large_analog_value{instance = 1, name = "L", present_value = 123456.789},
                multi_state_value{instance = 1, name = "M", present_value = 3, number_of_states = 4},
                analog_input{instance = 1, name = "A", present_value = 21.5},
                schedule{instance = 1, name = "S", present_value = unsigned(2), schedule_default = unsigned(2),
                         weekly_schedule = {monday = {{"08:00", real(1)}, {"09:00", null()}}}},
                date_value{instance = 1, name = "V", present_value = "*-12-25"},
            }}""",
            variable("Sign", "integer-value", 1, "Int32"), variable("Digits", "large-analog-value", 1),
            variable("State", "multi-state-value", 1, "Boolean"), variable("Fraction", "analog-input", 1, "Int32"),
            variable("Schedule", "schedule", 1), variable("Week", "schedule", 1, "String", "weekly-schedule"),
            variable("Date", "date-value", 1, "DateTime"))
        self.assertEqual({name: point["verdict"] for name, point in result.points.items()},
                         dict.fromkeys(result.points, "loses information"))
        for name, loss in (("Sign", "the driver has 251, the device -5: the sign is lost"),
                           ("Digits", "Float has fewer digits"), ("State", "every number other than 0 is true"),
                           ("Fraction", "as Int32 it is 22"), ("Schedule", "the device holds Unsigned"),
                           ("Week", "entries with Null are left out"), ("Date", "unspecified parts")):
            self.assertIn(loss, result.points[name]["explanation"])

    def test_schedules_of_every_datatype_are_compared(self):
        """The texts agree with the driver's; only what the text cannot hold is lost."""
        device = os.path.join(ROOT, "examples", "devices", "air-handling-unit.lua")
        with open(device, encoding="utf-8") as stream:
            result = self.one_block(stream.read(), variable("Week", "schedule", 2, "String", "weekly-schedule"),
                                    variable("Days", "schedule", 2, "String", "exception-schedule"))
        self.assertEqual([result.verdict("Week"), result.verdict("Days")], ["loses information"] * 2)
        self.assertEqual(result.points["Week"]["explanation"],
                         "the sign of a Signed is lost; entries with Null are left out")
        self.assertEqual(result.points["Days"]["explanation"],
                         "the sign of a Signed is lost; unspecified parts of a date become digits")

    def test_what_the_driver_cannot_decode_takes_its_object_along(self):
        result = self.one_block(
            """device{name = "D", instance = 7, objects = {
                analog_input{instance = 1, name = "A", present_value = 1, resolution = 0.1},
                lighting_output{instance = 1, name = "L", present_value = 40, blink_warn_enable = true,
                                egress_time = 1, default_fade_time = 500},
            }}""",
            variable("Resolution", "analog-input", 1, prop="resolution"), variable("Value", "analog-input", 1),
            variable("Light", "lighting-output", 1),
            variable("Blink", "lighting-output", 1, "Boolean", "blink-warn-enable"))
        self.assertEqual(set(point["verdict"] for point in result.points.values()), {"not decoded by the driver"})
        self.assertIn("resolution of analog-input", result.points["Value"]["explanation"])
        self.assertIn("the driver requests units in place of blink-warn-enable", result.points["Blink"]["explanation"])

    def test_a_second_variable_on_a_property_and_impossible_conversions_have_no_value(self):
        result = self.one_block(DEVICE % "", variable("One", "analog-input", 1), variable("Two", "analog-input", 1),
                                variable("Date", "analog-input", 2, "DateTime"))
        self.assertEqual([result.verdict(name) for name in ("One", "Two", "Date")], ["agrees", "no value", "no value"])
        self.assertIn('"One" reads the same property', result.points["Two"]["explanation"])
        self.assertIn("does not convert to DateTime", result.points["Date"]["explanation"])

    def test_status_flags_are_remarks_and_no_findings(self):
        result = self.one_block(
            """device{name = "D", instance = 7, objects = {
                analog_input{instance = 1, name = "A", present_value = 1, status_flags = {overridden = true}},
                analog_input{instance = 2, name = "B", present_value = 1, out_of_service = true},
                analog_input{instance = 3, name = "C", present_value = 1, reliability = "no-sensor"},
            }}""",
            *(variable(f"V{number}", "analog-input", number) for number in (1, 2, 3)))
        self.assertEqual(result.code, 0, result.output)
        self.assertEqual([point["remarks"] for point in result.points.values()],
                         [["overridden"], ["not in service"], ["fault"]])
        self.assertEqual(result.points["V3"]["reliability"], "no-sensor (1)")

    def test_a_value_that_changes_all_the_time_is_moving(self):
        result = self.one_block(
            """device{name = "D", instance = 7, objects = {
                analog_input{instance = 1, name = "A", present_value = ramp{from = 0, to = 1000000, period = 60}},
            }}""",
            variable("Ramp", "analog-input", 1))
        # Two reads within a millisecond can give the same value.
        self.assertEqual((result.code, result.verdict("Ramp") in ("moving", "agrees")), (0, True))

    FAULTS = {
        "duplicate": {"agrees"}, "silence": {"device silent"}, "delay": {"late"}, "error": {"no such object"},
        "reject": {"device rejects"}, "abort": {"device aborts"}, "other_invoke_id": {"device silent"},
        "other_address": {"device silent"}, "truncate": {"device silent"}, "bvlc_function": {"device silent"},
        "bvlc_type": {"device silent"}, "bvlc_length": {"device silent"}, "network_message": {"device silent"},
        "wrong_object": {"unreadable answer"}, "unasked_property": {"unreadable answer"},
        "endless_segments": {"unreadable answer"}, "garbage": {"device silent"}, "headers_only": {"device silent"},
        "oversized_segments": {"agrees"}, "repeated_segment": {"agrees"}, "segments_at_once": {"agrees"},
        "odd_list": {"no value"}, "lost_segment": {"no value", "unreadable answer"},
        "segments_out_of_order": None, "previous_answer": None, "loss": None,
        "other_instance": {"agrees"}, "wrong_station": {"agrees"}, "changing_object_list": {"agrees"},
    }

    def check_faults(self, names):
        for name in names:
            with self.subTest(fault=name):
                result = self.faulty('fault{"%s"}' % name)
                self.assertLess(result.seconds, 25)
                verdicts = {point["verdict"] for point in result.points.values()}
                self.assertEqual(len(result.points), 3, result.errors)
                if self.FAULTS[name]:
                    self.assertEqual(verdicts, self.FAULTS[name], result.output)

    def test_the_table_has_every_fault_of_the_simulator(self):
        with open(os.path.join(ROOT, "docs", "simulator.md"), encoding="utf-8") as stream:
            table = stream.read().split("| Kind | What the device does")[1]
        self.assertEqual(set(re.findall(r"^\| `([a-z_]+)` \|", table, re.M)), set(self.FAULTS))

    def test_faults_of_answers_end_within_a_bounded_time(self):
        self.check_faults(list(self.FAULTS)[:8])

    def test_faults_of_datagrams_end_within_a_bounded_time(self):
        self.check_faults(list(self.FAULTS)[8:19])

    def test_faults_of_segments_end_within_a_bounded_time(self):
        self.check_faults(list(self.FAULTS)[19:])

    def test_another_error_is_stated_with_class_and_code(self):
        result = self.faulty('fault{"error", class = 2, code = 27}')
        self.assertEqual(result.verdict("T"), "device error")
        self.assertIn("property: read-access-denied", result.points["T"]["explanation"])

    def test_an_answer_that_comes_too_late_for_the_driver_is_late_with_its_time(self):
        result = self.faulty('fault{"delay", seconds = 1.3, object = {"analog_input", 2}}', timeout=3000)
        self.assertEqual(result.verdict("R"), "late")
        self.assertRegex(result.points["R"]["explanation"], r"answers after 1\.[34]\d s; the driver waits 1\.00 s")

    def test_a_silent_device_is_not_asked_for_each_of_a_thousand_points(self):
        begin = time.monotonic()
        result = self.one_block("device{name = 'D', instance = 7, objects = {}, faults = {fault{'silence'}}}",
                                *(variable(f"V{number}", "analog-input", number) for number in range(1000)))
        self.assertLess(time.monotonic() - begin, 15)
        self.assertEqual({point["verdict"] for point in result.points.values()}, {"device silent"})
        self.assertIn("what was left was not requested", result.blocks["B"]["notes"][0]["text"])

    def test_another_station_that_answers_is_a_finding_of_the_block(self):
        result = self.faulty('fault{"other_address"}')
        self.assertIn("another station answers", result.blocks["B"]["notes"][0]["text"])
        self.assertTrue(result.blocks["B"]["notes"][0]["finding"])

    def test_two_blocks_on_one_device_are_remarked(self):
        device = self.device(DEVICE % "")
        result = self.verify(TASK + block("A", device.address, [variable("T", "analog-input", 1)]) +
                             block("B", device.address, [variable("R", "analog-input", 2)]))
        self.assertEqual(result.code, 0)
        self.assertEqual(result.blocks["B"]["notes"],
                         [{"finding": False, "text": 'reaches the same device as block "A"'}])

    def relay(self, device):
        """A station that passes every datagram on to a device, and its answer back."""
        inner = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self.addCleanup(inner.close)
        inner.settimeout(5)

        def answer(datagram):
            inner.sendto(datagram, ("127.0.0.1", device.port))
            return [inner.recv(2048)]

        return FakeDevice(answer)

    @staticmethod
    def services(station):
        return [Request(datagram).apdu[3] for datagram in station.received if Request(datagram).apdu[0] >> 4 == 0]

    def test_nothing_is_ever_written(self):
        write_property = 15
        device = self.device("""device{name = "D", instance = 7, objects = {
            analog_value{instance = 1, name = "S", present_value = 20}}}""")
        with self.relay(device) as station:
            project = TASK + block("B", station.address, [variable("S", "analog-value", 1, write=True)],
                                   'WriteCondition = "Always", Priority = 8,')
            project += 'Set("B.S", 25)\nAfter(0, function() Set("B.S", 26) end)\n'
            result = self.verify(project, "--rounds", "5")
            self.assertEqual((result.code, result.verdict("S"), result.points["S"]["driver"]), (0, "agrees", 20))
            self.assertGreaterEqual(len(self.services(station)), 15)
            self.assertEqual(self.services(station).count(write_property), 0)
            # The same project does write when it is run.
            self.workbench(project, cycles=4)
            self.assertGreater(self.services(station).count(write_property), 0)

    def test_an_interrupt_prints_what_was_done(self):
        asked = threading.Event()

        def answer(_):
            asked.set()
            return []

        with FakeDevice(answer) as silent:
            project = "".join(block(name, address, [variable("T" + name, "analog-input", 1),
                                                    variable("R" + name, "analog-input", 2)])
                              for name, address in (("A", self.device(DEVICE % "").address), ("B", silent.address)))
            process = subprocess.Popen(
                [WORKBENCH, "verify", self.file("project.lua", TASK + project), "--format", "json", "--timeout", "60000"],
                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
            self.assertTrue(asked.wait(LONGEST))
            process.send_signal(signal.SIGINT)
            output = process.communicate(timeout=LONGEST)
        result = Verified(subprocess.CompletedProcess([], process.returncode, *output))
        self.assertEqual((result.code, result.summary["interrupted"], result.summary["rounds"]), (1, True, 0))
        self.assertEqual([result.verdict(name) for name in ("TA", "RA", "TB", "RB")],
                         ["agrees", "agrees", "not verified", "not verified"])

    def test_the_page_is_written_although_standard_output_cannot_be(self):
        device = self.device(DEVICE % "")
        project = self.file("project.lua", TASK + block("B", device.address, [variable("T", "analog-input", 1)]))
        for name, redirection in (("full", ">/dev/full"), ("closed", ">&-"), ("both", ">&- <&-")):
            with self.subTest(output=name):
                page = self.file(name + ".html")
                result = subprocess.run(["sh", "-c", '"$0" verify "$1" --report "$2" ' + redirection, WORKBENCH, project,
                                         page], stderr=subprocess.PIPE, text=True, timeout=LONGEST, check=False)
                self.assertEqual((result.returncode, result.stderr), (4, "standard output cannot be written\n"))
                with open(page, encoding="utf-8") as stream:
                    self.assertIn("</html>", stream.read())

    def test_a_page_that_cannot_be_written_leaves_files_and_the_text_of_the_result(self):
        device = self.device(DEVICE % "")
        text = TASK + block("B", device.address, [variable("T", "analog-input", 1)])
        result = self.verify(text, "--report", self.file("project.lua", text))
        self.assertEqual((result.code, result.output), (4, ""))
        self.assertIn("this is the project itself", result.errors)
        with open(self.file("project.lua"), encoding="utf-8") as stream:
            self.assertEqual(stream.read(), text)
        result = self.verify(text, "--report", "/dev/full")
        self.assertEqual((result.code, result.verdict("T")), (4, "agrees"))
        self.assertIn("--report /dev/full: the page cannot be written: No space left", result.errors)

    def test_the_report_is_one_page_and_texts_of_devices_have_no_effect_in_it(self):
        device = self.device("""device{name = "<script>alert(1)</script>", instance = 7, objects = {
            analog_input{instance = 1, name = "<img src=x>", present_value = 20, description = "a & \\"b\\""}}}""")
        page = self.file("report.html")
        result = self.verify(TASK + block("B <b>", device.address, [variable("T <i>", "analog-input", 1),
                                                                    variable("X", "analog-input", 9)]),
                             "--report", page, "--title", "North wing")
        self.assertEqual(result.code, 1)
        with open(page, encoding="utf-8") as stream:
            text = stream.read()
        for forbidden in ("<script", "http", "<img", "<b>B", "B <b>", "T <i>"):
            self.assertNotIn(forbidden, text)
        for expected in ("North wing", "&lt;script&gt;alert(1)", "&lt;img src=x&gt;", "no such object"):
            self.assertIn(expected, text)

    def test_mistakes_have_the_exit_codes_of_the_workbench(self):
        self.assertEqual(self.verify("BACnet.new{}").code, 2)
        self.assertEqual(self.verify(TASK, "--rounds", "0").code, 2)
        good = TASK + block("B", "127.0.0.1:9", [variable("T", "analog-input", 1)])
        self.assertEqual(self.verify(good, "--addin", "/nowhere.so").code, 3)
        self.assertEqual(self.verify(good, "--report", "/nowhere/report.html").code, 4)

    def test_the_text_has_a_line_for_each_variable_and_the_cause_of_each_finding(self):
        device = self.device(DEVICE % "")
        result = self.verify(TASK + block("B", device.address, [variable("T", "analog-input", 1),
                                                                variable("X", "analog-input", 9)]), style="text")
        self.assertRegex(result.output, r"B  127\.0\.0\.1:\d+  device 7 \"D\"")
        self.assertRegex(result.output, r"T +analog-input 1 +Supply +x+… +21\.5 +21\.5 degrees-celsius +agrees\n")
        self.assertRegex(result.output, r"X +analog-input 9 +1e-45 +- +no such object\n +object: unknown-object; the driver")
        self.assertIn("2 points in 1 block: 1 agrees, 1 no such object; 1 finding\n", result.output)
        self.assertEqual(result.errors, "")
        self.assertNotIn("\x1b", result.output)
