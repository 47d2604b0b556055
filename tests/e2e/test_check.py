"""The command check, and its findings compared with what the driver does."""

import json
import os
import pty
import re
import socket
import subprocess
import time

from programs import LONGEST, ROOT, TASK, WORKBENCH, EndToEnd, block, variable

GOOD = block("B", "192.0.2.1:47808", [variable("V", "analog-input", 1)])


def names(heading):
    """The names that the workbench lists below a heading."""
    output = subprocess.run([WORKBENCH, "names"], stdout=subprocess.PIPE, text=True, timeout=LONGEST, check=True).stdout
    part = re.split(r"^(\S+)$", output, flags=re.MULTILINE)
    return re.findall(r"^ +\d+ +\d+ +(\S+)", part[part.index(heading) + 1], re.MULTILINE)


class Check(EndToEnd):
    def check(self, *arguments, code=None, environment=None):
        result = subprocess.run([WORKBENCH, "check", *arguments], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                                timeout=LONGEST, check=False, env={**os.environ, **(environment or {})}, cwd=self.folder)
        if code is not None:
            self.assertEqual((result.returncode, result.stderr), (code, ""), result.stdout)
        return result.stdout

    def findings(self, *arguments):
        return [json.loads(line) for line in self.check(*arguments, "--format", "json").splitlines()]

    def good(self, name="good.lua"):
        return self.file(name, GOOD)

    def test_a_clean_project_has_no_mistake(self):
        project = self.good()
        self.assertEqual(self.check(project, code=0), f"{project}: no mistake (blocks: 1, variables: 1, tasks: 1)\n")
        self.assertEqual(self.check(project, "--strict", code=0).count("no mistake"), 1)
        self.assertEqual(self.check(project, "--format", "json", code=0), "")

    def test_errors_have_exit_code_2_and_warnings_only_with_strict(self):
        warning = self.file("warning.lua", block("B", "192.0.2.1:47808", [variable("V", "analog-input", 1)], "Timeout = 5,"))
        self.assertIn(f"{warning}:1: warning: ", self.check(warning, code=0))
        self.check(warning, "--strict", code=2)
        error = self.file("error.lua", block("B", "192.0.2.1:47808", [variable("V", "analog-input", 1, prop="bias")]))
        self.assertIn(f"{error}: 1 error, 0 warnings", self.check(error, code=2))

    def test_several_projects_are_checked_in_one_run(self):
        error = self.file("error.lua", "BACnet.new{}")
        output = self.check(error, self.good(), self.file("missing.lua"), code=2)
        self.assertRegex(output, r"error\.lua:1: error: .*\n(.*\n)*.*good\.lua: no mistake .*\n.*missing\.lua: error: cannot be read")
        self.assertTrue(output.endswith("3 projects: 4 errors, 0 warnings\n"), output)

    def test_json_has_exactly_the_fields_of_the_manual(self):
        project = self.file("p.lua", "Set('X.Y', 1)\n" + block("Block", "192.0.2.1:47808", [variable("V\\n", "loop", 1, prop="bias")]).replace("Block", "Bl\u00f6ck"))
        first, second = self.findings(project)
        for finding in (first, second):
            self.assertEqual(list(finding), ["severity", "code", "file", "line", "block", "variable", "field", "message", "advice"])
        self.assertEqual((first["code"], first["line"], first["block"], first["field"]), ("bad-set", 1, None, None))
        self.assertEqual((second["severity"], second["code"], second["file"], second["line"], second["block"], second["variable"]),
                         ("error", "not-decoded", project, 4, "Bl\u00f6ck", "V\n"))

    def test_a_required_file_is_found_from_any_directory(self):
        self.file("rooms.lua", "return {\n" + variable("V", "loop", 1, prop="bias") + "}")
        project = self.file("main.lua", 'BACnet.new{ Name = "B", Address = "192.0.2.1:47808", Vars = require "rooms" }')
        for name in (project, "main.lua", "./main.lua"):
            finding, = self.findings(name)
            self.assertEqual((os.path.basename(finding["file"]), finding["line"]), ("rooms.lua", 2))
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir("/")
        self.assertEqual(len(self.findings(project)), 1)

    def test_a_define_that_no_project_uses_is_a_warning(self):
        project = self.file("p.lua", "local x = Param.used\n" + GOOD)
        self.assertEqual(self.findings(project, "-D", "used=1"), [])
        self.assertEqual(self.findings(self.good(), project, "-D", "used=1"), [])
        self.assertEqual([finding["code"] for finding in self.findings(project, "-D", "usd=1")], ["unused-define"])

    def test_colours_are_for_terminals_without_no_color(self):
        project = self.file("p.lua", "BACnet.new{}")
        for environment, coloured in (({"TERM": "xterm", "NO_COLOR": ""}, True), ({"TERM": "xterm", "NO_COLOR": "1"}, False),
                                      ({"TERM": "dumb", "NO_COLOR": ""}, False)):
            master, slave = pty.openpty()
            subprocess.run([WORKBENCH, "check", project], stdout=slave, timeout=LONGEST, check=False,
                           env={**os.environ, **environment})
            os.close(slave)
            output = os.read(master, 65536).decode()
            os.close(master)
            self.assertEqual("\x1b[31merror" in output, coloured, environment)
        self.assertNotIn("\x1b", self.check(project))

    def test_a_closed_output_is_a_failure(self):
        with open("/dev/full", "w", encoding="utf-8") as full:
            code = subprocess.run([WORKBENCH, "check", self.good()], stdout=full, stderr=subprocess.DEVNULL, timeout=LONGEST,
                                  check=False).returncode
        self.assertEqual(code, 4)

    def test_the_examples_have_only_warnings(self):
        for name in ("first-steps", "plant"):
            findings = self.findings(os.path.join(ROOT, "examples", name + ".lua"))
            self.assertEqual({finding["severity"] for finding in findings}, {"warning"})

    # The findings and the driver.

    def never_read(self, project, blocks):
        """The variables of a run that have no value after two cycles without a fault, and the faulty blocks."""
        run = self.workbench(TASK + project, cycles=2)
        last = {state["block"]: state for state in run.states}
        self.assertEqual(set(last), set(blocks), run.errors)
        empty = {(name, entry["name"]) for name, state in last.items() if not state["fault"]
                 for entry in state["variables"] if entry["value"] is None}
        return empty, {name for name, state in last.items() if state["fault"]}

    def reported(self, project, *codes):
        return {(finding["block"], finding["variable"]) for finding in self.findings(self.file("checked.lua", project))
                if finding["code"] in codes}

    def test_of_all_pairs_those_are_reported_that_the_driver_never_reads(self):
        types, properties = names("ObjectType"), names("ObjectProperties")
        with open(os.path.join(ROOT, "docs", "simulator.md"), encoding="utf-8") as manual:
            simulated = re.search(r"^The object types are (.*)\.$", manual.read(), re.MULTILINE).group(1)
        objects = "".join(f"{name}{{instance = 1}}, " for name in re.findall(r"`(\w+)`", simulated))
        device = self.device(f'device{{ name = "D", instance = 1, objects = {{ {objects} }} }}')
        never = ("not-decoded", "lighting-output", "averaging-present-value", "sent-as-other-property")
        count = 0
        for first in range(0, len(types), 6):
            pairs = [(name, prop) for name in types[first:first + 6] for prop in properties]
            blocks = {f"{name} {prop}": (name, prop) for name, prop in pairs}
            project = "".join(block(title, device.address, [variable("V", name, 1, "String", prop)], "CountRepeat = 1,")
                              for title, (name, prop) in blocks.items())
            empty, faulty = self.never_read(project, blocks)
            reported = {pair for pair in self.reported(project, *never) if pair[0] not in faulty}
            self.assertEqual(reported, empty)
            count += len(empty)
        self.assertGreater(count, 500)

    def test_what_is_taken_along_gets_no_value_either(self):
        device = self.device('device{ name = "D", instance = 1, objects = { analog_input{instance = 1}, analog_input{instance = 2}, '
                             'analog_input{instance = 3}, analog_value{instance = 1} } }')
        pairs = [variable("Good", "analog-input", 1), variable("Limit", "analog-input", 1, prop="low-limit"),
                 variable("Units", "analog-input", 2, "UInt32", prop="units"),
                 variable("Blink", "analog-input", 2, prop="blink-warn-enable"),
                 variable("Other", "analog-input", 3), variable("Power", "analog-input", 3, prop="power"),
                 variable("First", "analog-value", 1), variable("Second", "analog-value", 1, "Double")]
        project = block("B", device.address, pairs)
        empty, faulty = self.never_read(project, ["B"])
        self.assertEqual(faulty, set())
        self.assertEqual({name for _, name in empty}, {"Good", "Limit", "Blink", "Other", "Power", "Second"})
        messages = {finding["variable"]: finding["message"] for finding in self.findings(self.file("checked.lua", project))}
        self.assertEqual(set(messages), {"Limit", "Blink", "Power", "Second"})
        self.assertIn('nor "Good" ever gets', messages["Limit"])
        self.assertIn('nor "Other" ever gets', messages["Power"])
        self.assertNotIn("Units", messages["Blink"])

    def test_a_conversion_that_never_succeeds_leaves_the_variable_empty(self):
        device = self.device('device{ name = "D", instance = 1, objects = { analog_input{instance = 1, present_value = 21.5}, '
                             'accumulator{instance = 1, present_value = 300}, multi_state_value{instance = 1, number_of_states = 9, '
                             'present_value = 5} } }')
        project = block("B", device.address, [
            variable("Date", "analog-input", 1, "DateTime"), variable("Octet", "accumulator", 1, "Byte"),
            variable("State", "multi-state-value", 1, "Boolean")])
        empty, _ = self.never_read(project, ["B"])
        self.assertEqual({name for _, name in empty}, {"Date", "Octet"})
        codes = {finding["variable"]: finding["code"] for finding in self.findings(self.file("checked.lua", project))}
        self.assertEqual(codes, {"Date": "never-converts", "Octet": "may-not-convert", "State": "loses-information"})

    def test_values_are_misread_as_the_findings_say(self):
        device = self.device('device{ name = "D", instance = 1, objects = { integer_value{instance = 1, present_value = -5}, '
                             'positive_integer_value{instance = 1, present_value = 4294967301}, '
                             'binary_output{instance = 1, present_value = 1, feedback_value = 1} } }')
        project = block("B", device.address, [
            variable("Sign", "integer-value", 1, "Int32"), variable("Count", "positive-integer-value", 1, "UInt64"),
            variable("Feedback", "binary-output", 1, prop="feedback-value")])
        self.assertEqual(set(self.messages(project)),
                         {("Sign", "sign-not-read"), ("Count", "count-cut"), ("Feedback", "misread-feedback")})
        values, _ = self.last(project, cycles=1)
        self.assertEqual((values["Sign"]["value"], values["Count"]["value"]), (251, 5))
        self.assertLess(abs(values["Feedback"]["value"]), 1e-40)

    def messages(self, project):
        return {(finding["variable"], finding["code"]): finding["message"]
                for finding in self.findings(self.file("checked.lua", project))}

    def last(self, project, *options, cycles=4):
        """The variables of the only block after a run."""
        run = self.workbench(TASK + project, *options, cycles=cycles)
        self.assertEqual(run.code, 0, run.errors)
        state = [json.loads(line) for line in run.output.splitlines() if not line.startswith('{"set"')][-1]
        self.assertFalse(state["fault"])
        return {entry["name"]: entry for entry in state["variables"]}, run.errors

    def test_writes_end_as_the_findings_say(self):
        device = self.device('device{ name = "D", instance = 1, objects = { analog_value{instance = 1, present_value = 5}, '
                             'analog_value{instance = 2, present_value = 5}, loop{instance = 1} } }')
        project = block("B", device.address, [
            variable("Units", "analog-value", 1, "UInt32", "units", write=True),
            variable("Text", "analog-value", 2, "String", write=True),
            variable("Setpoint", "loop", 1, prop="setpoint", write=True), variable("Output", "loop", 1)])
        found = self.messages(project)
        self.assertEqual(set(found), {("Units", "write-refused"), ("Text", "write-text"), ("Setpoint", "write-other-property")})
        options = ("--set", "B.Units=62", "--set", "B.Text=21,5", "--set", "B.Setpoint=33")
        after, errors = self.last(project, *options)
        reason = re.search('every write ends with "(.*)"', found["Units", "write-refused"]).group(1)
        self.assertEqual((after["Units"]["write"]["state"], after["Units"]["write"]["reason"]), ("refused", reason))
        self.assertEqual(after["Text"]["value"], "0")
        self.assertEqual(found["Setpoint", "write-other-property"], "the driver reads setpoint and writes to present-value")
        self.assertNotEqual(after["Setpoint"]["value"], 33)
        self.assertEqual({line for line in errors.splitlines() if line.startswith("warning: B.")},
                         {"warning: B.Units: " + found["Units", "write-refused"],
                          "warning: B.Setpoint: " + found["Setpoint", "write-other-property"]})

    def test_a_lighting_output_is_written_though_it_is_never_read(self):
        device = self.device('device{ name = "D", instance = 1, objects = { lighting_output{instance = 1, present_value = 5} } }')
        project = block("B", device.address, [variable("Lamp", "lighting-output", 1, write=True)])
        self.assertEqual(set(self.messages(project)), {("Lamp", "lighting-output")})
        lamp = self.last(project, "--set", "B.Lamp=40")[0]["Lamp"]
        self.assertIsNone(lamp["value"])
        self.assertNotEqual(lamp["write"]["state"], "refused", lamp)

    def test_a_write_in_every_cycle_takes_the_second_of_the_finding(self):
        device = self.device('device{ name = "D", instance = 1, objects = { analog_value{instance = 1, present_value = 5} } }')
        project = block("B", device.address, [variable("V", "analog-value", 1, write=True)], 'WriteCondition = "Always",')
        (_, code), = self.messages(TASK + project)
        self.assertEqual(code, "short-period")
        begin = time.monotonic()
        self.last(project, "--set", "B.V=6", cycles=4)
        # The value waits for the first cycle.
        self.assertGreaterEqual(time.monotonic() - begin, 2.9)

    def test_a_network_without_a_mac_is_in_fault(self):
        device = self.device('device{ name = "D", instance = 1, objects = { analog_value{instance = 1} }, '
                             'router = { network = 5, mac = "0A" } }')
        project = ('BACnet.new{ Name = "B", Address = "%s", NetworkNumber = 5, CountRepeat = 1, %s\n Vars = {%s} }\n')
        point = variable("V", "analog-value", 1)
        for mac, codes, fault in (("", {"mac-missing"}, True), ('MAC = "10",', set(), False)):
            text = project % (device.address, mac, point)
            self.assertEqual({code for _, code in self.messages(text)}, codes)
            states = self.workbench(TASK + text).states
            self.assertEqual(states[-1]["fault"], fault, mac)

    def test_a_silent_device_delays_the_others_of_its_task_as_long_as_the_finding_says(self):
        device = self.device('device{ name = "D", instance = 1, objects = { analog_value{instance = 1} } }')
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as silent:
            silent.bind(("127.0.0.1", 0))
            project = (block("Silent", "127.0.0.1:%d" % silent.getsockname()[1], [variable("V", "analog-value", 1)], "CountRepeat = 2,") +
                       block("Good", device.address, [variable("V", "analog-value", 1)], "CountRepeat = 1,"))
            message = self.messages(project)[None, "shared-task"]
            self.assertIn("delays the others by up to 2 s in every cycle", message)
            begin = time.monotonic()
            self.workbench(TASK + project, cycles=2)
            self.assertGreaterEqual(time.monotonic() - begin, 3.9)


if __name__ == "__main__":
    import unittest
    unittest.main()
