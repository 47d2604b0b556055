"""The example plant: four simulated devices, read by the real add-in in the workbench."""

import os

from programs import PLANT_PROJECT, ROOT, EndToEnd, ExamplePlant, simulator

# Every object type that the driver can read. It can read no property of a Lighting Output.
READABLE = {
    "accumulator", "analog-input", "analog-output", "analog-value", "averaging", "binary-input", "binary-output",
    "binary-value", "bitstring-value", "date-value", "datetime-value", "integer-value", "large-analog-value", "loop",
    "multi-state-input", "multi-state-output", "multi-state-value", "octetstring-value", "positive-integer-value",
    "pulse-converter", "schedule", "time-value"}

# The one object of the plant that is in alarm.
IN_ALARM = {("Chiller", "Alarm bits"): "0x808C0000"}


class Plant(EndToEnd):
    def run_plant(self, cycles):
        with ExamplePlant() as plant:
            run = self.workbench(PLANT_PROJECT, *plant.defines, cycles=cycles)
        self.assertEqual(run.code, 0, run.errors)
        return run

    def test_every_variable_but_the_one_in_alarm_is_good_after_the_first_cycle(self):
        states = self.run_plant(1).states
        self.assertEqual([state["cycle"] for state in states], [1] * len(states))
        for state in states:
            self.assertFalse(state["fault"], state["error"])
        status = {(state["block"], variable["name"]): variable["status"]
                  for state in states for variable in state["variables"] if variable["value"] is not None}
        self.assertEqual(len(status), sum(len(state["variables"]) for state in states))
        self.assertEqual({name: code for name, code in status.items() if code != "0x00000000"}, IN_ALARM)

    def test_has_four_devices_and_sixty_variables_over_every_readable_type(self):
        states = self.run_plant(1).states
        self.assertGreaterEqual(len({state["block"] for state in states}), 4)
        variables = [variable for state in states for variable in state["variables"]]
        self.assertGreaterEqual(len(variables), 60)
        self.assertEqual({variable["object"].split()[0] for variable in variables}, READABLE)

    def test_values_change_from_cycle_to_cycle(self):
        run = self.run_plant(5)
        for name in {state["block"] for state in run.states}:
            values = [[variable["value"] for variable in state["variables"].values()] for state in run.of(name)]
            self.assertEqual(len(values), 5)
            self.assertNotEqual(values[0], values[-1], name)

    def test_the_times_of_values_increase_from_cycle_to_cycle(self):
        run = self.run_plant(3)
        for name in {state["block"] for state in run.states}:
            first, *later = run.of(name)
            for state in later:
                for variable, before in zip(state["variables"].values(), first["variables"].values()):
                    self.assertGreater(variable["time"], before["time"])

    def test_a_good_plant_has_no_causes_and_no_suspect_values(self):
        for state in self.run_plant(3).states:
            self.assertEqual(state["causes"], [], state["block"])
            self.assertEqual([variable for variable in state["variables"] if "suspect" in variable], [])

    def test_a_run_ends_with_a_summary(self):
        with ExamplePlant() as plant:
            run = self.workbench(PLANT_PROJECT, *plant.defines, "--summary", cycles=2)
        self.assertEqual(run.code, 0, run.errors)
        printed = run.output + run.errors
        for word in ("objects", "answers", "faults", "median", "maximum"):
            self.assertIn(word, printed)


class FirstSteps(EndToEnd):
    def test_the_smallest_project_reads_the_simulated_air_handling_unit(self):
        with simulator(os.path.join(ROOT, "examples", "devices", "air-handling-unit.lua")) as device:
            run = self.workbench(os.path.join(ROOT, "examples", "first-steps.lua"), "--define", f"ahu={device.address}")
        self.assertEqual(run.code, 0, run.errors)
        state, = run.of("AHU")
        self.assertFalse(state["fault"], state["error"])
        for name in state["variables"]:
            self.assert_good(state, name)
            self.assertIsNotNone(state["variables"][name]["value"])
