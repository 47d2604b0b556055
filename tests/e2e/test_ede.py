"""Point lists in the format of the trade: ede and compare, and what real lists have."""

import json
import os
import resource
import subprocess
import unittest

from programs import BIN, EndToEnd, ExamplePlant, LONGEST, ROOT, WORKBENCH, block, simulator, variable

HEADINGS = ("keyname;device obj.-instance;object-name;object-type;object-instance;description;present-value-default;"
            "min-present-value;max-present-value;settable;supports COV;hi-limit;low-limit;state-text-reference;"
            "unit-code;vendor-specific-address;notification-class")
FILES = ("EDE", "StateTexts", "Units", "ObjTypes")
LISTS = os.path.join(ROOT, "tests", "e2e", "point_lists")


class Ede(EndToEnd):
    def run_workbench(self, *words, code=0, **environment):
        process = subprocess.run([WORKBENCH, *words], cwd=self.folder, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                 stderr=subprocess.PIPE, text=True, timeout=LONGEST, check=False,
                                 env={**os.environ, **environment})
        self.assertEqual(process.returncode, code, process.stdout + process.stderr)
        return process

    def read(self, name):
        with open(os.path.join(self.folder, name), encoding="utf-8-sig", newline="") as stream:
            return stream.read()

    def list_of(self, name):
        return [self.read(f"{name}_{kind}.csv") for kind in FILES]

    def assert_same_list_again(self, name):
        """Export, import, export again gives the same files."""
        self.run_workbench("ede", name + "_EDE.csv", "-o", name + "-again")
        self.assertEqual(self.list_of(name), self.list_of(name + "-again"))

    def test_a_list_of_the_plant_agrees_with_the_plant_and_is_the_same_when_written_again(self):
        with ExamplePlant() as plant:
            addresses = [device.address + (",5:10:20" if name == "chiller" else "")
                         for name, device in plant.devices.items()]
            run = self.run_workbench("ede", *addresses, "-o", "plant", "--author", "me", SOURCE_DATE_EPOCH="0")
            self.assertRegex(run.stdout, r"^plant_EDE\.csv: devices: \d+, points: \d+\nplant_StateTexts\.csv\n")
            first = self.list_of("plant")
            self.assertIn("TIMESTAMP_OF_LAST_CHANGE;1970-01-01T00:00:00Z\r\n", first[0])
            self.assertIn("Supply air temperature;1001;Supply air temperature;0;1;Behind the heating coil;", first[0])
            self.assert_same_list_again("plant")
            run = self.run_workbench("compare", "plant_EDE.csv", *addresses)
            self.assertRegex(run.stdout, r"^differences: 0, devices compared: \d+, objects compared: \d+\n$")

    def test_the_list_of_a_project_that_was_made_from_a_list_is_that_list(self):
        with simulator(os.path.join(ROOT, "examples", "devices", "air-handling-unit.lua")) as device:
            heading = ("--timestamp", "T", "--project-name", "P")
            self.run_workbench("ede", device.address, "-o", "a", *heading)
            self.run_workbench("new", "p.lua", "--from", "a_EDE.csv", "-D", "1001=" + device.address)
            self.run_workbench("check", "p.lua")
            self.run_workbench("ede", "p.lua", "-o", "b", *heading)
            self.assertEqual(self.list_of("a"), self.list_of("b"))
            self.run_workbench("compare", "b_EDE.csv", device.address)

    def test_differences_are_named_and_counted(self):
        device = self.device("""device{ instance = 7, name = "D", objects = {
            analog_input{ instance = 1, name = "Temperature", units = "degrees-celsius" },
            analog_input{ instance = 2, name = "Pressure", units = "pascals" },
            multi_state_value{ instance = 1, name = "Mode", number_of_states = 2, state_text = {"off", "on"} } } }""")
        self.file("p_EDE.csv", HEADINGS + "\nk;7;Temp;0;1;;;;;;;;;;98\nk;7;Flow;0;3\nk;7;Mode;19;1;;;;;;;;;5\nk;8;X;0;1\n")
        self.file("p_StateTexts.csv", "5;off;auto\n")
        run = self.run_workbench("compare", "p_EDE.csv", device.address, code=1)
        self.assertEqual(run.stdout, """\
device 7 analog-input 1 "Temp": the name is "Temp" in the list and "Temperature" there
device 7 analog-input 1 "Temp": the unit is "percent" in the list and "degrees-celsius" there
device 7 analog-input 2 "Pressure": is additional: the list does not have it
device 7 analog-input 3 "Flow": is missing: only the list has it
device 7 multi-state-value 1 "Mode": the state texts are "off, auto" in the list and "off, on" there
device 8: is missing: only the list has it
differences: 6, devices compared: 1, objects compared: 2
""")
        run = self.run_workbench("compare", "p_EDE.csv", device.address, "--format", "json", code=1)
        lines = [json.loads(line) for line in run.stdout.splitlines()]
        self.assertEqual([line.get("difference") for line in lines[:-1]],
                         ["name", "unit", "additional-object", "missing-object", "state-texts", "missing-device"])
        self.assertEqual(lines[-1], {"differences": 6, "devices": 1, "objects": 2, "notes": []})

    def test_a_project_with_the_instances_of_its_devices_has_a_list(self):
        point = variable("Supply air", "analog-input", 1).replace(
            " }", ', Unit = "degrees-celsius", Point = { KeyName = "K1", ObjectName = "SupT", Maximum = 80 } }')
        self.file("p.lua", block("AHU", "127.0.0.1:47808", [point], "DeviceInstance = 2001,"))
        self.run_workbench("ede", "p.lua", "--timestamp", "T")
        rows = self.read("p_EDE.csv").splitlines()
        self.assertEqual(rows[8:], ["AHU;2001;AHU;8;2001;;;;;;;;;;;;", "K1;2001;SupT;0;1;;;;80;N;;;;;62;;"])
        self.assertIn("TIMESTAMP_OF_LAST_CHANGE;T", rows)
        self.assert_same_list_again("p")
        self.run_workbench("compare", "p_EDE.csv", "p.lua")
        self.file("q_EDE.csv", self.read("p_EDE.csv") + "K2;x;Y;0;2\r\n")
        run = self.run_workbench("compare", "q_EDE.csv", "p.lua", code=1)
        self.assertTrue(run.stdout.startswith("differences: 0,"), run.stdout)
        run = self.run_workbench("ede", "p.lua", code=2)
        self.assertEqual(run.stderr, "p_EDE.csv: exists; choose another name with -o, or replace it with --force\n")
        self.run_workbench("ede", "p.lua", "--force")

    def test_a_block_without_the_instance_of_its_device_is_a_mistake_with_its_line(self):
        self.file("p.lua", "\n" + block("AHU", "127.0.0.1:47808", [variable("T", "analog-input", 1)]))
        run = self.run_workbench("ede", "p.lua", code=2)
        self.assertEqual(run.stderr, 'p.lua:2: block "AHU": has no DeviceInstance, by which a point list names its '
                                     "device; add the instance of the Device object, such as DeviceInstance = 2001\n")

    def test_mistakes_on_the_command_line(self):
        for words, text in ((("ede", "nowhere"), "a project ends in .lua, a point list in .csv"),
                            (("ede", "p.lua", "q.lua"), '"p.lua" must be the only source'),
                            (("ede", "p_EDE.csv"), "a point list is written under another name: give it with -o NAME"),
                            (("compare", "p_EDE.csv", "p.lua"), "p_EDE.csv: cannot be read"),
                            (("ede", "none.lua"), "none.lua: cannot be read")):
            with self.subTest(words=words):
                self.assertIn(text, self.run_workbench(*words, code=2).stderr)

    def test_a_device_that_does_not_answer_is_reported_and_nothing_is_written(self):
        server = simulator(self.file("d.lua", 'device{ instance = 7, name = "D" }'))
        server.stop()
        run = self.run_workbench("ede", server.address, "--timeout", "20", "-o", "p", code=1)
        self.assertIn(server.address, run.stderr)
        self.assertTrue(run.stderr.endswith("no device answered; nothing is written\n"), run.stderr)
        self.assertFalse(os.path.exists(self.file("p_EDE.csv")))

    def test_what_a_list_has_and_cannot_be_used_is_reported_and_strict_makes_it_a_mistake(self):
        self.file("p_EDE.csv", HEADINGS + "\nk;7;A;0;1\nk;x;B;0;2\n")
        run = self.run_workbench("ede", "p_EDE.csv", "-o", "q", code=1)
        self.assertEqual(run.stderr, """\
p_EDE.csv:3: column 2 (device obj.-instance): "x" is not an instance; allowed is 0 to 4194302: row not used
rows: 2, devices: 1, points: 1, rows not used: 1, values not used: 0, devices not used: 0
""")
        run = self.run_workbench("ede", "p_EDE.csv", "-o", "r", "--strict", code=2)
        self.assertIn("p_EDE.csv: not everything in it can be used, and --strict makes that a mistake\n", run.stderr)
        self.assertFalse(os.path.exists(self.file("r_EDE.csv")))

    def test_lists_that_deviate_have_the_same_points_as_the_one_that_does_not(self):
        lists = sorted(name for name in os.listdir(LISTS) if name.lower().rpartition(".")[0].endswith("ede"))
        self.assertGreaterEqual(len(lists), 13)
        self.run_workbench("ede", os.path.join(LISTS, "strict_EDE.csv"), "-o", "strict", "--timestamp", "T")
        expected = self.list_of("strict")
        for name in lists:
            with self.subTest(name=name):
                self.run_workbench("ede", os.path.join(LISTS, name), "-o", "p", "--timestamp", "T", "--force",
                                   "--project-name", "Plant", "--author", "me", "--file-version", "1", "--strict")
                self.assertEqual(self.list_of("p"), expected)
                self.run_workbench("compare", "strict_EDE.csv", os.path.join(LISTS, name))

    def test_the_example_of_the_document_is_what_the_programs_print(self):
        with open(os.path.join(ROOT, "docs", "ede.md"), encoding="utf-8") as stream:
            example = stream.read().split("<!-- example: begin -->")[1].split("<!-- example: end -->")[0]
        lines = [line[4:] for line in example.splitlines() if line.startswith("    ")]
        first = lines.index(next(line for line in lines if line.startswith("$ ")))
        self.file("delivered_EDE.csv", "\n".join(lines[:first]) + "\n")
        commands = "\n".join(lines[first:]).split("$ dorvel-workbench ")[1:]
        self.assertEqual(len(commands), 2)
        for command, code in zip(commands, (1, 1)):
            words, output = command.split("\n", 1)
            run = self.run_workbench(*words.split(), code=code)
            self.assertEqual(run.stderr + run.stdout, output.rstrip("\n") + "\n")

    def test_a_list_of_50000_rows_is_read_and_written_in_less_than_2_seconds(self):
        with open(self.file("big_EDE.csv"), "w", encoding="ascii") as stream:
            stream.write(HEADINGS + "\n")
            for i in range(50000):
                stream.write(f"K{i};{1000 + i // 500};Building A floor 3 room {i} temperature;2;{i % 500};Supply air "
                             f"temperature;21,5;-50;150;Y;Y;80,5;-10;;62;path/{i};3\n")
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        run = self.run_workbench("ede", "big_EDE.csv", "-o", "p")
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        # The time of the processor does not depend on other tests; sanitizers and the emulator make it longer.
        if os.path.basename(os.path.dirname(os.path.realpath(BIN))) == "release":
            self.assertLess(after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime, 2)
        self.assertIn("p_EDE.csv: devices: 100, points: 50000\n", run.stdout)


if __name__ == "__main__":
    unittest.main()
