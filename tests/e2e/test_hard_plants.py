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

    def new(self, *source, code=0):
        """The paths of the project and of the clones that new makes of these devices."""
        path, folder = self.file("made.lua"), self.file("clone")
        made = self.command("new", path, "--devices", folder, "--force", "--from", *source)
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

    def test_a_list_that_changes_while_it_is_read_ends_and_is_marked(self):
        # A short answer makes the browser read the list in many requests, before each of which it changes.
        objects = "".join(f'analog_input{{instance = {i}, name = "T{i}", present_value = {i}}},' for i in range(1, 101))
        device = self.device('device{name = "D", instance = 7, max_apdu_length_accepted = 206, segmentation_supported = '
                             '"no-segmentation", faults = {fault{"changing_object_list"}}, '
                             f'objects = {{ {objects} }} }}')
        result = self.command("browse", device.address, "--rate", "1000", longest=TOTAL)
        self.assertEqual(result.code, 1, result.errors)
        self.assertIn("the list changed each time that it was read", result.errors)
        self.assertGreaterEqual(len(result.rows), 100)
        head = self.command("browse", device.address, "--rate", "1000", "--format", "json", longest=TOTAL).objects[0]
        self.assertFalse(head["complete"])
        path, clones, _ = self.new(device.address, code=1)
        self.assertTrue(self.read(path).startswith("-- PARTIAL: "))
        self.assertIn("PARTIAL: ", self.read(clones[0]))
        self.assert_project_checks(path)

    def test_a_list_that_changed_once_is_marked(self):
        objects = "".join(f'analog_input{{instance = {i}, name = "T{i}", present_value = {i}}},' for i in range(1, 101))
        device = self.device('device{name = "D", instance = 7, max_apdu_length_accepted = 206, segmentation_supported = '
                             '"no-segmentation", faults = {fault{"changing_object_list", every = 30, times = 1}}, '
                             f'objects = {{ {objects} }} }}')
        result = self.command("browse", device.address, "--rate", "1000", longest=TOTAL)
        self.assertEqual([row["name"] for row in result.rows if row["object"] != "analog-input 100"],
                         ["D"] + [f"T{i}" for i in range(1, 100)])
        # The change is found by the revision of the database, and the reading is marked.
        self.assertEqual((result.code, "read it again" in result.errors), (1, True))

    def test_two_devices_with_one_name_and_one_instance(self):
        text = 'device{{name = "AHU", instance = 7, objects = {{analog_input{{instance = 1, name = "T", present_value = {}}}}}}}'
        addresses = [self.device(text.format(value)).address for value in (1, 2)]
        found = self.command("discover", *addresses, "--timeout", "300")
        self.assertEqual((found.code, [row["marks"] for row in found.rows]), (1, ["same-instance"] * 2))
        browsed = self.command("browse", *addresses[:1])
        self.assertEqual(browsed.code, 0, browsed.errors)
        path, clones, _ = self.new(*addresses)
        project, copies = self.read(path), [self.read(clone) for clone in clones]
        self.assertEqual([os.path.basename(clone) for clone in clones], ["AHU-7-2.lua", "AHU-7.lua"])
        states = self.assert_project_runs(path).states
        self.assertEqual({state["block"] for state in states}, {"AHU", "AHU (7)"})
        self.assertEqual({state["variables"][0]["value"] for state in states}, {1, 2})
        again = self.new(*reversed(addresses))
        self.assertEqual(self.read(again[0]), project)
        self.assertEqual([self.read(clone) for clone in again[1]], copies)

    def test_500_objects_in_short_answers_go_the_whole_way(self):
        objects = "".join(f'analog_value{{instance = {i}, name = "Temperature {i}", present_value = {i}, '
                          'units = "degrees-celsius"},' for i in range(1, 501))
        device = self.device('device{name = "D", instance = 7, max_apdu_length_accepted = 206, '
                             f'segmentation_supported = "no-segmentation", objects = {{ {objects} }} }}')
        path, clones, _ = self.new(device.address, "--rate", "1000")
        states = self.assert_project_runs(path).states
        self.assertEqual([v["value"] for v in states[-1]["variables"]], list(range(1, 501)))
        copy = self.clone(clones[0])
        text = self.read(clones[0])
        self.assertEqual(self.read(self.new(copy.address, "--rate", "1000")[1][0]), text)

    def test_ctrl_c_in_browse_shows_what_was_read(self):
        objects = "".join(f'analog_input{{instance = {i}, name = "T{i}"}},' for i in range(1, 1000))
        device = self.device(f'device{{name = "D", instance = 7, objects = {{ {objects} }} }}')
        for form in FORMS:
            process = subprocess.Popen([WORKBENCH, "browse", device.address, "--rate", "20", "--format", form],
                                       stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
            time.sleep(3)
            process.send_signal(signal.SIGINT)
            begin = time.monotonic()
            output, errors = process.communicate(timeout=LONGEST)
            self.assertLess(time.monotonic() - begin, 3)
            self.assertEqual(process.returncode, 1, errors)
            self.assertIn("T1", output)
            if form == "json":
                head = json.loads(output.splitlines()[0])
                self.assertFalse(head["complete"])
                self.assertTrue(any("the reading was ended" in note for note in head["notes"]), head)
            else:
                self.assertIn("not everything was read: the reading was ended", output if form == "table" else errors)

    def test_ctrl_c_in_discover_shows_what_was_found(self):
        device = self.device('device{name = "D", instance = 7, objects = {}}')
        process = subprocess.Popen([WORKBENCH, "discover", device.address, "--timeout", "30000", "--format", "json"],
                                   stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        time.sleep(1)
        process.send_signal(signal.SIGINT)
        output, errors = process.communicate(timeout=10)
        self.assertEqual(process.returncode, 1, errors)
        found = [json.loads(line) for line in output.splitlines()]
        self.assertEqual([o["instance"] for o in found if o["kind"] == "device"], [7])
        self.assertFalse(found[-1]["complete"])

    def test_a_point_list_of_50000_rows_gives_a_project_that_checks(self):
        rows = "".join(f"key{i};9;Building 3 Floor 7 Room {i} temperature;2;{i};Supply air of room {i};1;0;100;Y;N;90;10;;62;a{i}\n"
                       for i in range(1, 50001))
        heading = ("keyname;device obj.-instance;object-name;object-type;object-instance;description;present-value-default;"
                   "min-present-value;max-present-value;settable;supports COV;hi-limit;low-limit;state-text-reference;"
                   "unit-code;vendor-specific-address\n")
        path, table = self.file("made.lua"), self.file("plant_EDE.csv", heading + rows)
        made = self.command("new", path, "--from", table, "-D", "9=127.0.0.1:1")
        self.assertEqual(made.code, 1, made.errors)
        self.assertIn("without descriptions and Point", made.errors)
        self.assertIn("50000 variables", made.output)
        self.assert_project_checks(path)

    def test_new_discovers_a_range_at_a_port(self):
        device = self.device('device{name = "D", instance = 7, objects = {analog_input{instance = 1, name = "T"}}}')
        port = device.address.split(":")[1]
        for instances, code in (("1-9", 0), ("8-9", 1)):
            made = self.command("new", self.file(f"range-{instances}.lua"), "--from", "discover", "--interface", "lo", "--port",
                                port, "--range", instances)
            self.assertEqual(made.code, code, made.errors)
        self.assertIn("DeviceInstance = 7", self.read(self.file("range-1-9.lua")))

    def test_no_fault_of_a_device_hangs_browse_or_new(self):
        faults = ("loss", "other_invoke_id", "previous_answer", "truncate", "bvlc_length", "error", "reject", "abort",
                  "wrong_object", "unasked_property", "odd_list", "garbage", "headers_only", "duplicate",
                  "network_message")
        for fault in faults:
            with self.subTest(fault=fault):
                device = self.device(f'device{{name = "D", instance = 7, faults = {{fault{{"{fault}"}}}}, objects = {{'
                                     'analog_input{instance = 1, name = "T"}, analog_value{instance = 2, name = "U"}}}')
                begin = time.monotonic()
                options = ("--timeout", "100", "--retries", "1", "--rate", "1000")
                result = self.command("browse", device.address, *options, "--format", "json", longest=TOTAL)
                self.assertIn(result.code, (0, 1), result.errors)
                self.assertEqual(result.objects[0]["complete"], result.code == 0, result.output)
                path = self.file("made.lua")
                made = self.command("new", path, "--force", *options, "--from", device.address, longest=TOTAL)
                self.assertIn(made.code, (0, 1), made.errors)
                if os.path.exists(path):
                    self.assert_project_checks(path)
                    self.assertEqual(self.read(path).startswith("-- PARTIAL"), made.code == 1, made.errors)
                    os.remove(path)
                self.assertLess(time.monotonic() - begin, TOTAL)


if __name__ == "__main__":
    import unittest
    unittest.main()
