"""The command release: the priority array before and after, refusals, and every writable point of a project."""

import unittest

from exploring import AHU, WRITE_PROPERTY, Exploring, run
from programs import block, variable


class Release(Exploring):
    def test_a_priority_is_released(self):
        device = self.device(AHU)
        result = run("release", device.address, "analog-output", "1", "--priority", "16", "--yes")
        self.assertEqual((result.code, result.errors), (0, ""))
        self.assertRegex(result.output, r"(?s)before:\n    16 +40\n.*after:\n    nothing is commanded\n"
                                        r"  priority 16 is released\n")
        row = {row["name"]: row for row in run("browse", device.address).rows}["Valve"]
        self.assertEqual(row["value"], "5")

    def test_one_null_is_written_and_nothing_else(self):
        device = self.logged_device(AHU)
        run("release", device.address, "analog-output", "1", "--priority", "16", "--yes")
        self.assertEqual(device.services().count(WRITE_PROPERTY), 1)

    def test_what_is_not_commanded_is_not_written(self):
        device = self.logged_device(AHU)
        result = run("release", device.address, "analog-output", "1", "--priority", "8", "--yes")
        self.assertEqual(result.code, 0)
        self.assertIn("there is nothing to release", result.output)
        self.assertEqual(device.services().count(WRITE_PROPERTY), 0)

    def test_without_a_terminal_it_needs_yes(self):
        device = self.logged_device(AHU)
        result = run("release", device.address, "analog-output", "1", "--priority", "16")
        self.assertEqual((result.code, result.output), (2, ""))
        self.assertIn("--yes", result.errors)
        self.assertEqual(device.services(), [])

    def test_the_answer_of_the_device_is_shown(self):
        device = self.device(AHU.replace('name = "Valve",', 'name = "Valve", read_only = {"present_value"},'))
        result = run("release", device.address, "analog-output", "1", "--priority", "16", "--yes")
        self.assertEqual(result.code, 1)
        self.assertIn("the device does not release priority 16: property: write-access-denied", result.output)
        result = run("release", device.address, "analog-input", "1", "--priority", "16", "--yes", "--format", "json")
        self.assertEqual((result.code, result.objects[0]["outcome"]), (1, "not-readable"))
        self.assertIn("unknown-property", result.objects[0]["reason"])

    def test_all_writable_points_of_a_project(self):
        device = self.device(AHU)
        project = self.file("project.lua", block("AHU", device.address, [
            variable("Valve", "analog-output", 1, write=True), variable("Supply", "analog-input", 1)]))
        result = run("release", "--all-at", "16", project, "--yes", "--format", "json")
        self.assertEqual(result.code, 0, result.errors)
        (released,) = result.objects
        self.assertEqual((released["variable"], released["outcome"], released["before"][15], released["after"][15]),
                         ("AHU.Valve", "released", "40", None))

    def test_mistakes_on_the_command_line(self):
        for words in (("127.0.0.1", "analog-output,1"), ("127.0.0.1", "--priority", "8"),
                      ("127.0.0.1", "analog-output,1", "--priority", "17"), ("--all-at", "8", "missing.lua")):
            self.assertEqual(run("release", *words, "--yes").code, 2, words)


if __name__ == "__main__":
    unittest.main()
