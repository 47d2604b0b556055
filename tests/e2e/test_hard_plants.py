"""Plants that make trouble, taken the whole way: discover, browse, new, check, run, and a clone in the simulator."""

import glob
import json
import os
import signal
import subprocess
import time

from exploring import Exploring, run
from programs import LONGEST, SIMULATOR, WORKBENCH, Server

FORMS = ("table", "lines", "json")
TOTAL = 20  # seconds that a command may take for one small device, whatever that does

# Lua's texts of names that a device had better not have.
NAMES = {
    "long": '"%s"' % ("n" * 10000), "wide": '"%s"' % ("\u20ac" * 3333), "broken": '"T\\xFF\\xC3(\\xED\\xA0\\x80"',
    "controls": '"A\\27[2J\\r\\n\\tB\\0C\\127\\xC2\\x9B1m"', "lua": '"]]--\\"\\\\ .. os.exit()"',
}


class HardPlants(Exploring):
    def command(self, *words, longest=LONGEST):
        begin = time.monotonic()
        result = run(*words)
        self.assertLess(time.monotonic() - begin, longest, words)
        return result

    def read(self, name):
        with open(name, encoding="utf-8") as stream:
            return stream.read()

    def assert_is_printable(self, text, allowed):
        """No octet of it moves the cursor of a terminal or breaks a line."""
        odd = {c for c in text if (ord(c) < 0x20 or 0x7F <= ord(c) < 0xA0) and c not in allowed}
        self.assertEqual(odd, set())

    def clone(self, path):
        server = Server(SIMULATOR, path, "--port", "0", "--exit-with-stdin")
        self.addCleanup(server.stop)
        return server

    def assert_project_checks(self, path):
        checked = self.command("check", "--strict", path)
        self.assertEqual(checked.code, 0, checked.output)

    def assert_project_runs(self, path, *options):
        self.assert_project_checks(path)
        result = self.workbench(path, *options, "--fail-on", "fault,suspect", cycles=3)
        self.assertEqual(result.code, 0, result.errors)
        return result

    def new(self, *addresses, code=0):
        """The paths of the project and of the clones that new makes of the devices."""
        path, folder = self.file("made.lua"), self.file("clone")
        made = self.command("new", path, "--devices", folder, "--force", "--from", *addresses)
        self.assertEqual(made.code, code, made.errors)
        return path, sorted(glob.glob(os.path.join(folder, "*.lua"))), made

    def test_names_of_any_octets_go_the_whole_way(self):
        objects = "".join(f"analog_value{{instance = {i}, name = {name}, description = {name}, present_value = {i}}},"
                          for i, name in enumerate(NAMES.values(), 1))
        states = ", ".join(NAMES.values())
        device = self.device(f'device{{name = {NAMES["controls"]}, instance = 7, vendor_name = {NAMES["broken"]}, '
                             f'model_name = {NAMES["long"]}, objects = {{{objects} multi_state_value{{instance = 1, '
                             f'name = "states", number_of_states = 5, state_text = {{{states}}} }} }} }}')
        found = self.command("discover", device.address, "--timeout", "300")
        self.assertEqual(len(found.rows), 1)
        for form in FORMS:
            for words in (("discover", device.address, "--timeout", "300"), ("browse", device.address),
                          ("browse", device.address, "analog-value,1"), ("browse", device.address, "analog-value,4"),
                          ("browse", device.address, "multi-state-value,1")):
                result = self.command(*words, "--format", form, longest=TOTAL)
                self.assertEqual(result.code, 0, result.errors)
                self.assert_is_printable(result.output, "\n\t" if form == "lines" else "\n")
        self.assertEqual([o["name"] for o in run("browse", device.address, "--format", "json").objects[1:3]],
                         ["n" * 10000, "\u20ac" * 3333])
        path, clones, made = self.new(device.address)
        self.assert_is_printable(made.errors + made.output, "\n")
        states = self.assert_project_runs(path).states
        self.assertEqual([v["value"] for v in states[-1]["variables"]][:5], [1, 2, 3, 4, 5])
        self.assertEqual(len(clones), 1)
        copy = self.clone(clones[0])
        texts = self.read(clones[0])
        again = self.new(copy.address)[1]
        self.assertEqual(self.read(again[0]), texts)

    def test_objects_that_a_device_lists_and_does_not_have(self):
        device = self.device("""device{name = "D", instance = 7,
            object_list = {{"device", 7}, {"analog_input", 1}, {"analog_input", 9}, {"binary_value", 4}},
            objects = {analog_input{instance = 1, name = "T", present_value = 21.5}}}""")
        result = self.command("browse", device.address, longest=TOTAL)
        rows = {row["object"]: row for row in result.rows}
        self.assertEqual(rows["analog-input 1"]["name"], "T")
        self.assertEqual(sorted(rows), ["analog-input 1", "analog-input 9", "binary-value 4", "device 7"])
        self.assertIn("it lists objects that it does not have: analog-input 9, binary-value 4", result.errors)
        path, clones, _ = self.new(device.address)
        run_ = self.assert_project_runs(path)
        self.assertEqual(len(run_.states[-1]["variables"]), 1)
        self.assertIn("-- analog-input 9: the device answers its present-value with: object: unknown-object", self.read(path))
        self.assertIn("Not copied: analog-input 9", self.read(clones[0]))
        copy = self.clone(clones[0])
        self.assertEqual(len(self.command("browse", copy.address).rows), 2)


if __name__ == "__main__":
    import unittest
    unittest.main()
