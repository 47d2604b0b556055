"""The command new: projects that run as they are, and clones of a plant."""

import glob
import os
import signal
import socket
import subprocess
import time
import unittest

from programs import LONGEST, ROOT, SIMULATOR, WORKBENCH, EndToEnd, ExamplePlant, Server

HOSTILE = r"""
device{
    name = "A.\xC3\xA4\x7F/../=\"x", instance = 7,
    objects = {
        analog_input{instance = 1, name = "", present_value = 1},
        analog_value{instance = 1, name = " T = 1\t", present_value = 2, relinquish_default = 0, description = "]]--\n"},
        analog_value{instance = 2, name = "t=1", present_value = 3},
        analog_value{instance = 3, name = "%s", present_value = 4},
        date_value{instance = 1, name = "never", present_value = "*-*-*"},
        date_value{instance = 2, name = "last", present_value = "7E0D20FF"},
        datetime_value{instance = 1, name = "any time", present_value = "*"},
        time_value{instance = 1, name = "any time of day", present_value = "*:*"},
        bit_string_value{instance = 1, name = "no bits", present_value = ""},
        octet_string_value{instance = 1, name = "no octets", present_value = ""},
        analog_input{instance = 2, name = "not a real", defaults = false, present_value = tagged(2, "05")},
        analog_input{instance = 3, name = "nothing", defaults = false},
        analog_input{instance = 4, name = "infinite", present_value = 1e999},
        accumulator{instance = 1, name = "large", present_value = 5000000000},
        object{type = 40, instance = 1, name = "text", properties = {[85] = "x", [111] = bit_string("0000")}},
        object{type = 1000, instance = 1, name = "vendor", properties = {[85] = real(1), [9999] = constructed(3, null())}},
        schedule{instance = 1, name = "enumerated", present_value = enumerated(1)},
    },
}
""" % ("n" * 2000)


class New(EndToEnd):
    def new(self, *arguments, longest=LONGEST):
        return subprocess.run([WORKBENCH, "new", *arguments], stdin=subprocess.DEVNULL, capture_output=True, text=True,
                              timeout=longest, check=False)

    def made(self, *arguments, code=0):
        """The path of a project that new has written."""
        path = self.file("made.lua")
        process = self.new(path, *arguments)
        self.assertEqual((process.returncode, process.stderr), (code, ""))
        return path

    def assert_works(self, path, *options):
        """check has no finding, 10 cycles no fault and no suspect value, and verify agrees for every point."""
        checked = subprocess.run([WORKBENCH, "check", "--strict", path], capture_output=True, text=True, check=False)
        self.assertEqual(checked.returncode, 0, checked.stdout + checked.stderr)
        run = self.workbench(path, *options, "--fail-on", "fault,suspect,overrun", cycles=10)
        self.assertEqual(run.code, 0, run.errors)
        self.assertEqual([state for state in run.states if state["fault"]], [])
        verified = subprocess.run([WORKBENCH, "verify", path, *options], capture_output=True, text=True, check=False)
        self.assertEqual(verified.returncode, 0, verified.stdout + verified.stderr)
        return run

    def sources(self, plant):
        return [device.address + (",5:10:20" if name == "chiller" else "") for name, device in plant.devices.items()]

    def test_the_project_of_the_example_plant_runs_as_it_is(self):
        with ExamplePlant() as plant:
            path = self.made("--from", *self.sources(plant))
            run = self.assert_works(path)
        self.assert_good(run.of("Chiller")[-1], "Mode", 1)
        self.assertEqual(len({state["block"] for state in run.states}), 4)
        self.assertEqual(len(run.of("Rooms")[-1]["variables"]), 61)
        with open(path, encoding="utf-8") as stream:
            text = stream.read()
        self.assertIn('StateTexts = {"automatic", "manual", "maintenance"}', text)
        self.assertNotIn("Write = true", text)
        self.assertIn('-- lighting-output 1 "Room 101 light": the driver cannot decode status-flags', text)

    def test_a_variable_can_be_written_if_that_is_asked_for(self):
        with ExamplePlant() as plant:
            path = self.made("--writable", "--from", plant.devices["ahu"].address)
            run = self.workbench(path, "--set", "AHU-1.Supply air setpoint=21.5", "--fail-on",
                                 "fault,refused,pending,differs,unconfirmed", cycles=4)
        self.assertEqual(run.code, 0, run.errors)
        self.assert_good(run.of("AHU-1")[-1], "Supply air setpoint", 21.5)

    def test_the_clone_of_a_clone_is_the_same(self):
        names = ["AHU-1-1001.lua", "Chiller-2001.lua", "Energy-meter-4001.lua", "Rooms-3001.lua"]
        first, second = self.file("first"), self.file("second")
        with ExamplePlant() as plant:
            made = self.new("--devices", first, "--from", *self.sources(plant))
        self.assertEqual((made.returncode, made.stderr), (0, ""))
        self.assertEqual(sorted(os.listdir(first)), names)
        addresses = [self.clone(os.path.join(first, name)).address + (",5:10:20" if "Chiller" in name else "")
                     for name in names]
        project = self.file("clone.lua")
        made = self.new(project, "--devices", second, "--from", *addresses)
        self.assertEqual((made.returncode, made.stderr), (0, ""))
        for name in names:
            with open(os.path.join(first, name), "rb") as one, open(os.path.join(second, name), "rb") as other:
                self.assertEqual(one.read(), other.read(), name)
        self.assert_works(project)

    def clone(self, path):
        server = Server(SIMULATOR, path, "--port", "0", "--exit-with-stdin")
        self.addCleanup(server.stop)
        return server

    def test_whatever_a_device_has_the_project_runs(self):
        device = self.device(HOSTILE)
        path, folder = self.file("made.lua"), self.file("clone")
        made = self.new(path, "--devices", folder, "--from", device.address)
        self.assertEqual((made.returncode, made.stderr), (0, ""))
        run = self.assert_works(path)
        self.assertIn("T - 1", run.states[-1]["variables"][1]["name"])
        with open(path, encoding="utf-8") as stream:
            text = stream.read()
        for name in ("not a real", "nothing", "large", "never", "last", "any time", "text", "vendor", "enumerated"):
            self.assertRegex(text, f'-- [a-z-]+ [a-z0-9 -]*"{name}": ')
        copy = self.clone(glob.glob(os.path.join(folder, "*.lua"))[0])
        self.assertEqual(self.new("--devices", self.file("again"), "--from", copy.address).returncode, 0)
        with open(glob.glob(os.path.join(folder, "*"))[0], "rb") as one, \
                open(glob.glob(os.path.join(self.file("again"), "*"))[0], "rb") as other:
            self.assertEqual(one.read(), other.read())

    def test_a_device_that_does_not_answer_is_a_comment(self):
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as silent, ExamplePlant() as plant:
            silent.bind(("127.0.0.1", 0))
            address = "127.0.0.1:%d" % silent.getsockname()[1]
            path = self.file("made.lua")
            made = self.new(path, "--timeout", "100", "--from", address, plant.devices["ahu"].address)
            self.assertEqual(made.returncode, 1, made.stderr)
            self.assertIn(address, made.stderr)
            self.assert_works(path)
        with open(path, encoding="utf-8") as stream:
            text = stream.read()
        self.assertTrue(text.startswith("-- PARTIAL: "))
        self.assertIn(f"-- {address}: none of its objects could be read; it is not polled\n", text)

    def test_without_a_device_there_is_no_project(self):
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as silent:
            silent.bind(("127.0.0.1", 0))
            path = self.file("made.lua")
            made = self.new(path, "--timeout", "100", "--from", "127.0.0.1:%d" % silent.getsockname()[1])
        self.assertEqual(made.returncode, 1)
        self.assertIn("is not written: no device has an object that the driver can read", made.stderr)
        self.assertEqual(os.listdir(self.folder), [])

    def test_ctrl_c_keeps_what_was_read(self):
        objects = "".join(f'analog_input{{instance = {i}, name = "T{i}"}},' for i in range(1, 1000))
        device = self.device('device{name = "D", instance = 7, faults = {fault{"delay", seconds = 0.1}}, objects = {%s}}'
                             % objects)
        path = self.file("made.lua")
        process = subprocess.Popen([WORKBENCH, "new", path, "--from", device.address],
                                   stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        time.sleep(9)
        process.send_signal(signal.SIGINT)
        _, errors = process.communicate(timeout=LONGEST)
        self.assertEqual(process.returncode, 1, errors)
        with open(path, encoding="utf-8") as stream:
            text = stream.read()
        self.assertTrue(text.startswith("-- PARTIAL: "))
        self.assertIn('Name = "T1"', text)
        self.assertNotIn('Name = "T999"', text)
        checked = subprocess.run([WORKBENCH, "check", "--strict", path], capture_output=True, text=True, check=False)
        self.assertEqual(checked.returncode, 0, checked.stdout + checked.stderr)

    def test_files_that_are_there_stay_unless_replacing_is_asked_for(self):
        with ExamplePlant() as plant:
            source = ("--from", plant.devices["ahu"].address)
            path, folder = self.file("made.lua", "mine"), self.file("clone")
            os.mkdir(folder)
            copy = os.path.join(folder, "AHU-1-1001.lua")
            with open(copy, "w", encoding="utf-8") as stream:
                stream.write("mine")
            for options in ((path,), ("--devices", folder)):
                made = self.new(*options, *source)
                self.assertEqual(made.returncode, 2)
                self.assertIn("the file is there already; --force replaces it", made.stderr)
            for name in (path, copy):
                with open(name, encoding="utf-8") as stream:
                    self.assertEqual(stream.read(), "mine")
            self.assertEqual(self.new(path, "--devices", folder, "--force", *source).returncode, 0)
            for name in (path, copy):
                with open(name, encoding="utf-8") as stream:
                    self.assertNotEqual(stream.read(), "mine")
            self.assertEqual(sorted(os.listdir(self.folder) + os.listdir(folder)),
                             sorted(["made.lua", "clone", "AHU-1-1001.lua"]))

    def test_a_point_list_makes_a_project(self):
        with ExamplePlant() as plant:
            with open(self.file("plant_EDE.csv", "keyname;device obj.-instance;object-name;object-type;object-instance\n"
                                                 "a;1001;Supply;0;1\nb;1001;Heating;1;1\nc;5;Lost;0;1\n"),
                      encoding="utf-8"):
                pass
            path = self.file("made.lua")
            made = self.new(path, "--from", self.file("plant_EDE.csv"), "-D", f"1001={plant.devices['ahu'].address}")
            self.assertEqual(made.returncode, 1, made.stderr)
            self.assertIn("device 5", made.stderr)
            run = self.assert_works(path)
        self.assertEqual(sorted(run.of("Device 1001")[-1]["variables"]), ["Heating", "Supply"])
        self.assertEqual(self.new(self.file("b.lua"), "--strict", "--from", self.file("plant_EDE.csv")).returncode, 2)
        self.assertFalse(os.path.exists(self.file("b.lua")))

    def test_mistakes_of_the_command_line(self):
        mistakes = {
            (): "--from is required",
            ("--from", "1.2.3.4"): "name a project",
            ("p.lua", "--from", "1.2.3"): '"1.2.3"',
            ("p.lua", "--from", "discover", "1.2.3.4"): '"discover" must be the only source',
            ("p.lua", "--from", "a.csv", "b.csv"): "must be the only source",
            ("p.lua", "--from", "1.2.3.4", "-D", "1=1.2.3.4"): "is for a point list",
            ("p.lua", "--from", "1.2.3.4", "--range", "1-9"): "are for --from discover",
            ("p.lua", "--from", "discover", "--range", "9-1"): "the first instance must not be the larger one",
            ("p.lua", "--from", "discover", "--bbmd", "10.0.0"): '"10.0.0"',
            ("--devices", "x", "--from", "a.csv"): "a point list has no values",
            ("missing/p.lua", "--from", "1.2.3.4"): 'the folder "missing" does not exist',
            (self.folder, "--from", "1.2.3.4"): "this is a folder",
            ("p.lua", "--from", "missing.csv"): "missing.csv",
        }
        for arguments, message in mistakes.items():
            made = self.new(*arguments)
            self.assertEqual(made.returncode, 2, arguments)
            self.assertIn(message, made.stderr)


if __name__ == "__main__":
    unittest.main()
