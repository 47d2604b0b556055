"""The driver reads the simulator: local and routed, with and without segments, and schedules."""

import subprocess

from programs import LONGEST, SIMULATOR, TASK, EndToEnd, block, variable

OBJECTS = """
    analog_input{ instance = 1, name = "Air", present_value = 21.5, units = "degrees-celsius", description = "%s" },
    binary_value{ instance = 4194302, name = "Release", present_value = "active" },
    multi_state_value{ instance = 3, name = "Mode", present_value = 2, number_of_states = 3 },
"""

SCHEDULES = """
    schedule{ instance = 1, name = "Programme", present_value = real(20),
        weekly_schedule = {
            monday = {{"08:00", real(21.5)}, {"17:30", real(18)}},
            tuesday = {{"07:00", boolean(true)}},
            wednesday = {{"12:00", unsigned(45)}},
            thursday = {{"12:00", octet_string("0AFF")}, {"13:00", character_string("hello")}},
            friday = {{"12:00", bit_string("1010")}, {"13:00", date("2024-03-15")}},
            saturday = {{"12:00", time("06:30")}, {"13:00", object_identifier("analog_input", 1234)}},
            sunday = {{"06:00", null()}, {"12:00", enumerated(2)}},
        },
        exception_schedule = {
            {date = "2024-03-15", priority = 16, entries = {{"08:00", boolean(true)}, {"17:00", boolean(false)}}},
            {calendar = 7, priority = 10, entries = {{"08:00", real(20)}}},
            {from = "2026-07-13", to = "2026-08-21", priority = 12, entries = {{"06:00", unsigned(300)}}},
            {week_n_day = {month = 12, week = 1, day = 2}, priority = 5, entries = {{"12:00", null()}, {"13:00", enumerated(1)}}},
        } },
"""


def device(objects, fields=""):
    return f'device{{ name = "Device", instance = 1, {fields}\n objects = {{ {objects} }} }}\n'


ROWS = [variable("air", "analog-input", 1),
        variable("text", "analog-input", 1, "String", "description"),
        variable("release", "binary-value", 4194302, "Boolean"),
        variable("mode", "multi-state-value", 3, "UInt32")]


class Simulated(EndToEnd):
    def assert_all_values(self, state, text):
        self.assertFalse(state["fault"], state["error"])
        for name, value in (("air", 21.5), ("text", text), ("release", True), ("mode", 2)):
            self.assert_good(state, name, value)

    def test_a_local_device_is_read(self):
        server = self.device(device(OBJECTS % "supply"))
        run = self.workbench(TASK + block("x", server.address, ROWS), cycles=3)
        self.assertEqual(run.code, 0, run.errors)
        for state in run.of("x"):
            self.assert_all_values(state, "supply")

    def test_a_device_behind_a_router_is_read(self):
        server = self.device(device(OBJECTS % "supply", 'router = {network = 5, mac = "0A14"},'))
        project = TASK + block("x", server.address, ROWS, "NetworkNumber = 5,")
        run = self.workbench(project.replace(f'MAC = "{server.address}"', 'MAC = "10:20"'), cycles=3)
        self.assertEqual(run.code, 0, run.errors)
        for state in run.of("x"):
            self.assert_all_values(state, "supply")

    def test_a_router_does_not_forward_a_request_for_another_device(self):
        server = self.device(device(OBJECTS % "supply", 'router = {network = 5, mac = "0A14"},'))
        project = TASK + block("x", server.address, ROWS, "NetworkNumber = 5, CountRepeat = 1,")
        run = self.workbench(project.replace(f'MAC = "{server.address}"', 'MAC = "10:21"'))
        self.assertTrue(run.of("x")[0]["fault"])

    def test_segmented_answers_are_read_local_and_routed(self):
        text = "0123456789" * 60
        for network, mac, fields in ((0, None, ""), (5, "10:20", 'router = {network = 5, mac = "0A14"},')):
            with self.subTest(network=network):
                server = self.device(device(OBJECTS % text, fields + "max_apdu_length_accepted = 128,"))
                project = TASK + block("x", server.address, ROWS, f"NetworkNumber = {network},")
                if mac:
                    project = project.replace(f'MAC = "{server.address}"', f'MAC = "{mac}"')
                run = self.workbench(project, "--trace", cycles=2)
                self.assertEqual(run.code, 0, run.errors)
                for state in run.of("x"):
                    self.assert_all_values(state, text)

    def test_schedules_are_read_as_texts(self):
        server = self.device(device(SCHEDULES))
        rows = [variable("weekly", "schedule", 1, "String", "weekly-schedule"),
                variable("exception", "schedule", 1, "String", "exception-schedule"), variable("now", "schedule", 1)]
        run = self.workbench(TASK + block("x", server.address, rows))
        state, = run.of("x")
        self.assertFalse(state["fault"], run.errors)
        self.assert_good(state, "now", 20)
        self.assert_good(
            state, "weekly",
            "08000000,4,9,21.500000,17300000,4,9,18.000000;07000000,1,1,1;12000000,2,3,45d;"
            "12000000,6,4,0aff,13000000,7,5,hello;12000000,8,4,1010,13000000,10,9,515032024;"
            "12000000,11,8,06300000,13000000,12,0,1234;,12000000,9,1,2;")
        self.assert_good(
            state, "exception",
            "0,515032024,16,08000000,1,1,1,17000000,1,1,0;3,7,10,08000000,4,9,20.000000;"
            "1,113072026,521082026,12,06000000,2,3,300;2,1212,5,12000000,,13000000,9,1,1;")

    def test_two_routed_blocks_use_different_ports(self):
        first = self.device(device(OBJECTS % "first", 'router = {network = 5, mac = "0A14"},'))
        second = self.device(device(OBJECTS % "second", 'router = {network = 5, mac = "0A14"},'))
        project = TASK + block("a", first.address, ROWS, "NetworkNumber = 5,").replace(f'MAC = "{first.address}"', 'MAC = "10:20"')
        project += block("b", second.address, ROWS, "NetworkNumber = 5,").replace(f'MAC = "{second.address}"', 'MAC = "10:20"')
        run = self.workbench(project, cycles=2)
        for name, text in (("a", "first"), ("b", "second")):
            for state in run.of(name):
                self.assert_all_values(state, text)

    def test_a_port_in_use_ends_the_simulator_with_one_line_and_an_exit_code(self):
        first = self.device(device(OBJECTS % "first"))
        path = self.file("second.lua", device(OBJECTS % "second"))
        second = subprocess.run([SIMULATOR, path, "--port", str(first.port), "--bind", "127.0.0.1"],
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                                timeout=LONGEST, check=False)
        self.assertEqual(second.returncode, 3)
        self.assertEqual(second.stdout, "")
        self.assertEqual(len(second.stderr.strip().splitlines()), 1, second.stderr)
        self.assertIn(str(first.port), second.stderr)
        # The first simulator keeps the port.
        run = self.workbench(TASK + block("x", first.address, ROWS))
        self.assert_all_values(run.of("x")[0], "first")
