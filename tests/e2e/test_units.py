"""Units and state texts of a project, in every output and in what is typed."""

import json
import os
import re
import signal
import subprocess

from bacnet import FakeDevice
from programs import LONGEST, TASK, WORKBENCH, EndToEnd, block, simulator, variable
from test_terminal import TerminalBase, settable

CHILLER = """
device{
    instance = 5, name = "Chiller",
    objects = {
        analog_value{instance = 1, name = "Setpoint", present_value = 7, units = "degrees-celsius"},
        binary_value{instance = 1, name = "Release", present_value = "active", relinquish_default = "inactive"},
        multi_state_value{instance = 1, name = "Mode", present_value = 1, number_of_states = 3, relinquish_default = 1},
    },
}
"""


def lua(value):
    """A text, a number, a list or a dictionary as Lua writes it."""
    if isinstance(value, list):
        return "{" + ", ".join(map(lua, value)) + "}"
    if isinstance(value, dict):
        return "{" + ", ".join(f"{name} = {lua(inner)}" for name, inner in value.items()) + "}"
    return json.dumps(value, ensure_ascii=False)


def shown(text, **fields):
    """A variable with fields for people."""
    return text[:-2] + "".join(f", {name} = {lua(value)}" for name, value in fields.items()) + " }"


def chiller(address):
    return TASK + block("Chiller", address, [
        shown(variable("Setpoint", "analog-value", 1, write=True), Unit="degrees-celsius", Description="Chilled water"),
        shown(variable("Release", "binary-value", 1, "Boolean", write=True), StateTexts=["blocked", "released"]),
        shown(variable("Mode", "multi-state-value", 1, "UInt32", write=True), StateTexts=["automatic", "manual", "maintenance"]),
    ])


class Units(EndToEnd):
    def setUp(self):
        super().setUp()
        self.simulated = self.device(CHILLER)

    def run_lines(self, *options, commands=None):
        """Runs the project with plain lines and returns its outputs. The end of the commands does not end the run."""
        path = self.file("project.lua", chiller(self.simulated.address))
        process = subprocess.run([WORKBENCH, "run", path, "--format", "lines", "--no-summary", *options], input=commands,
                                 stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, timeout=LONGEST, check=False)
        self.assertEqual(process.returncode, 0, process.stderr)
        return process.stdout, process.stderr

    def test_lines_have_units_and_state_texts_after_the_values(self):
        output, _ = self.run_lines("--cycles", "2")
        values = {line.split("\t")[4]: line.split("\t")[7] for line in output.splitlines() if not line.startswith("#")}
        self.assertEqual(values, {"Setpoint": "7 °C", "Release": "true (released)", "Mode": "1 (automatic)"})

    def test_json_has_them_beside_the_values(self):
        run = self.workbench(chiller(self.simulated.address), cycles=2)
        variables = run.of("Chiller")[-1]["variables"]
        self.assertEqual(variables["Setpoint"]["value"], 7)
        self.assertEqual(variables["Setpoint"]["unit"], "degrees-celsius")
        self.assertEqual(variables["Setpoint"]["description"], "Chilled water")
        self.assertIs(variables["Release"]["value"], True)
        self.assertEqual(variables["Release"]["stateText"], "released")
        self.assertEqual(variables["Mode"]["value"], 1)
        self.assertEqual(variables["Mode"]["stateText"], "automatic")
        self.assertNotIn("unit", variables["Mode"])
        self.assertNotIn("description", variables["Mode"])

    def test_words_and_units_are_set_from_standard_input(self):
        commands = "set Chiller.Mode = Manual\nset Chiller.Release = blocked\nset Chiller.Setpoint = 8.5 °C\n"
        output, errors = self.run_lines("--cycles", "150", commands=commands)
        self.assertIn("Chiller.Mode = 2 (manual): pending", errors)
        self.assertIn("Chiller.Release = false (blocked): pending", errors)
        self.assertIn("Chiller.Setpoint = 8.5 °C: pending", errors)
        self.assertRegex(output, r"\tMode\t.*\t2 \(manual\)\t.*\t2 \(manual\) written\t")
        self.assertRegex(output, r"\tRelease\t.*\tfalse \(blocked\)\t.*\tfalse \(blocked\) written\t")
        self.assertRegex(output, r"\tSetpoint\t.*\t8.5 °C\t.*\t8.5 °C written\t")

    def test_mistakes_list_what_is_allowed(self):
        commands = "set Chiller.Mode = manul\nset Chiller.Setpoint = 8.5 K\nset Chiller.Mode = 3\n"
        _, errors = self.run_lines("--cycles", "40", commands=commands)
        self.assertIn('"manul" is not a state; allowed are "automatic" (1), "manual" (2), "maintenance" (3), by text or value '
                      '(did you mean "manual"?)', errors)
        self.assertIn('"K" is not the unit of the variable; allowed is ', errors)
        self.assertIn("Chiller.Mode = 3 (maintenance): pending", errors)

    def test_a_word_is_set_on_the_command_line_and_in_the_project(self):
        run = self.workbench(chiller(self.simulated.address) + 'Set("Chiller.Release", "blocked")\n',
                             "--set", "Chiller.Mode=maintenance", "--fail-on", "refused,pending", cycles=200)
        self.assertEqual(run.code, 0, run.errors)
        last = run.of("Chiller")[-1]["variables"]
        self.assertEqual((last["Mode"]["value"], last["Mode"]["stateText"]), (3, "maintenance"))
        self.assertEqual((last["Release"]["value"], last["Release"]["stateText"]), (False, "blocked"))
        self.assertEqual(last["Mode"]["write"], {"state": "written", "value": 3, "stateText": "maintenance"})

    def test_a_wrong_word_on_the_command_line_ends_the_run_before_it_begins(self):
        run = self.workbench(chiller(self.simulated.address), "--set", "Chiller.Mode=holiday")
        self.assertEqual(run.code, 2)
        self.assertIn('"holiday" is not a state; allowed are ', run.errors)
        self.assertEqual(run.output, "")

    def test_verify_shows_them_of_the_driver(self):
        path = self.file("project.lua", chiller(self.simulated.address))
        process = subprocess.run([WORKBENCH, "verify", path], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                                 timeout=LONGEST, check=False)
        self.assertEqual(process.returncode, 0, process.stdout + process.stderr)
        self.assertRegex(process.stdout, r"Setpoint .* 7 °C  ")
        self.assertRegex(process.stdout, r"Mode .* 1 \(automatic\)  ")

    def test_the_same_octets_are_sent_with_and_without_them(self):
        received = []
        for fields in ({}, {"Unit": "percent", "Description": "d", "Point": {"KeyName": "K"}, "StateTexts": ["a"]}):
            with FakeDevice(settable()) as device:
                project = TASK + block("x", device.address, [shown(variable("v", "analog-value", 1, write=True), **fields)],
                                       fields="DeviceInstance = 7," if fields else "")
                run = self.workbench(project, "--set", "x.v=22", cycles=5)
                self.assertEqual(run.code, 0, run.errors)
                received.append(list(device.received))
        self.assertEqual(received[0], received[1])
        self.assertGreater(len(received[0]), 5)

    def test_check_reports_mistakes_in_them(self):
        path = self.file("project.lua", TASK + block("x", "192.0.2.1:47808", [
            shown(variable("v", "analog-value", 1), StateTexts=["a"], Unit="degree-celsius"),
            shown(variable("w", "analog-value", 2), Unit=62),
        ]))
        check = subprocess.run([WORKBENCH, "check", path], stdout=subprocess.PIPE, text=True, timeout=LONGEST, check=False)
        self.assertEqual(check.returncode, 2)
        for code in ("state-texts-not-shown", "similar-unit", "workbench-field"):
            self.assertIn(f"[{code}]", check.stdout)


class UnitsInATerminal(TerminalBase):
    shown = b"\xc2\xb0C"

    def plant(self):
        return simulator(self.file("device.lua", CHILLER))

    def project(self, address):
        return chiller(address)

    def screen_of(self, columns):
        self.columns = columns
        _, screen, _, _ = self.run_in_a_terminal(lambda process, _: process.send_signal(signal.SIGINT))
        return re.sub(r"\x1b\[[0-9;?]*[A-Za-z]", "", screen.decode())

    def test_the_table_shows_them(self):
        screen = self.screen_of(140)
        for cell in (" 7 °C ", " true (released) ", " 1 (automatic) "):
            self.assertIn(cell, screen)

    def test_a_narrow_table_keeps_them(self):
        screen = self.screen_of(44)
        for cell in (" 7 °C ", " 1 (automatic)"):
            self.assertIn(cell, screen)

    def test_a_word_is_completed_and_set(self):
        def type_a_word(process, terminal):
            os.write(terminal, b"sChiller.Mo\t = man\t\r")
            seen = self.read_until(terminal, b"2 (manual) pending")
            self.read_until(terminal, b"2 (manual) written", seen)
            process.send_signal(signal.SIGINT)

        code, screen, before, after = self.run_in_a_terminal(type_a_word)
        self.assertEqual(code, 0, screen)
        self.assert_restored(screen, before, after)
