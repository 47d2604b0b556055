"""Faulty devices and projects end in a clear line and a fault, and no other block is affected."""

import random

from bacnet import FakeDevice, Request, frame, real_answer
from programs import TASK, EndToEnd, block, variable

GOOD = "0x00000000"
BAD = "0x80000000"


def answers(value):
    return lambda datagram: [real_answer(Request(datagram), value)]


class Faults(EndToEnd):
    def run_beside_a_good_device(self, answer, cycles=2, fields="CountRepeat = 1,", options=()):
        """Runs a block "odd" with this device, and a block "good", which is checked here. Returns the run."""
        with FakeDevice(answer) as odd, FakeDevice(answers(21.5)) as good:
            project = (TASK + block("odd", odd.address, [variable("value", "analog-input", 1)], fields)
                       + block("good", good.address, [variable("value", "analog-input", 1)]))
            run = self.workbench(project, *options, cycles=cycles)
        self.assertEqual(run.code, 0, run.errors)
        states = run.of("good")
        self.assertEqual(len(states), cycles)
        for state in states:
            self.assertFalse(state["fault"])
            self.assert_good(state, "value", 21.5)
        return run

    def assert_no_connection(self, run):
        for state in run.of("odd"):
            self.assertTrue(state["fault"])
            self.assertEqual(state["error"], "No connection")
            self.assertEqual(state["variables"]["value"]["status"], BAD)

    def test_a_silent_device_is_a_fault_of_its_block_alone(self):
        self.assert_no_connection(self.run_beside_a_good_device(lambda datagram: []))

    def test_a_device_that_answers_nonsense_is_a_fault_of_its_block_alone(self):
        dice = random.Random(1)

        def nonsense(datagram):
            return [dice.randbytes(dice.randrange(0, 200))]

        self.assert_no_connection(self.run_beside_a_good_device(nonsense, cycles=40))

    def test_a_device_whose_answers_are_damaged_never_stops_a_block(self):
        dice = random.Random(2)

        def damaged(datagram):
            answer = bytearray(real_answer(Request(datagram), 21.5))
            for _ in range(dice.randrange(1, 4)):
                answer[dice.randrange(len(answer))] = dice.randrange(256)
            return [bytes(answer[:dice.randrange(1, len(answer) + 1)])]

        run = self.run_beside_a_good_device(damaged, cycles=40)
        self.assertEqual([state["cycle"] for state in run.of("odd")], list(range(1, 41)))

    def test_a_frame_of_another_function_does_not_hang_the_block(self):
        self.assert_no_connection(self.run_beside_a_good_device(lambda datagram: [bytes.fromhex("810000060000")]))

    def test_an_error_is_a_fault_and_a_line_in_the_log(self):
        def error(datagram):
            return [frame(bytes([0x50, Request(datagram).invoke_id, 14, 0x91, 1, 0x91, 31]))]

        run = self.run_beside_a_good_device(error, cycles=1)
        self.assert_no_connection(run)
        self.assertIn("0-1 std::bad_cast", run.errors)

    def test_a_request_is_repeated_as_often_as_the_block_is_configured_to(self):
        with FakeDevice() as silent:
            self.workbench(TASK + block("odd", silent.address, [variable("value", "analog-input", 1)], "CountRepeat = 2,"))
        self.assertEqual([Request(datagram).invoke_id for datagram in silent.received], [1, 2])

    def test_a_device_that_falls_silent_keeps_its_last_values(self):
        requests = [0]

        def once(datagram):
            requests[0] += 1
            return [real_answer(Request(datagram), 18.25)] if requests[0] <= 2 else []

        with FakeDevice(once) as device:
            variables = [variable("checked", "analog-input", 1),
                         variable("plain", "analog-input", 2, data_value=False)]
            run = self.workbench(TASK + block("odd", device.address, variables, "CountRepeat = 1,"), cycles=2)
        first, second = run.of("odd")
        self.assert_good(first, "checked", 18.25)
        self.assert_good(first, "plain", 18.25)
        self.assertTrue(second["fault"])
        self.assertEqual(second["variables"]["checked"]["status"], BAD)
        self.assertEqual(second["variables"]["checked"]["value"], 18.25)
        self.assertEqual(second["variables"]["plain"], first["variables"]["plain"])

    def test_a_device_that_answers_again_is_good_again(self):
        count = [0]

        def sometimes(datagram):
            count[0] += 1
            return [] if count[0] == 2 else [real_answer(Request(datagram), 1.0)]

        run = self.run_beside_a_good_device(sometimes, cycles=3)
        self.assertEqual([state["fault"] for state in run.of("odd")], [False, True, False])
        self.assert_good(run.of("odd")[2], "value", 1.0)

    def test_an_object_type_without_a_table_gives_no_value_and_no_fault(self):
        with FakeDevice(answers(1.0)) as device:
            variables = [variable("light", "lighting-output", 1), variable("air", "analog-input", 1)]
            run = self.workbench(TASK + block("odd", device.address, variables), "--trace")
        state = run.of("odd")[0]
        self.assertFalse(state["fault"])
        self.assertIsNone(state["variables"]["light"]["value"])
        self.assert_good(state, "air", 1.0)
        self.assertIn("54-1 Support Information not found", run.errors)

    def test_status_flags_make_the_present_value_a_sensor_failure(self):
        def flagged(datagram):
            return [real_answer(Request(datagram), 3.5).replace(b"\x82\x04\x00", b"\x82\x04\x40")]

        with FakeDevice(flagged) as device:
            run = self.workbench(TASK + block("odd", device.address, [variable("value", "analog-input", 1)]))
        state = run.of("odd")[0]
        self.assertFalse(state["fault"])
        self.assertEqual(state["variables"]["value"]["status"], "0x808C0000")
        self.assertEqual(state["variables"]["value"]["value"], 3.5)

    def test_a_late_answer_reaches_a_port_that_the_block_has_left(self):
        def late(datagram):
            request = Request(datagram)
            if request.invoke_id == 1:
                return []
            first = [(real_answer(Request(device.received[0]), 1.0), device.senders[0])] if request.invoke_id == 2 else []
            return first + [real_answer(request, 1.0)]

        device = FakeDevice(late)
        with device:
            run = self.workbench(TASK + block("odd", device.address, [variable("one", "analog-input", 1)]), cycles=4)
        self.assertEqual([state["fault"] for state in run.of("odd")], [False] * 4)
        self.assertEqual([Request(datagram).invoke_id for datagram in device.received], [1, 2, 3, 4, 5])
        before, *after = device.senders
        self.assertEqual(len(set(after)), 1)
        self.assertNotEqual(before, after[0])

    def test_datagrams_that_arrive_between_two_cycles_are_dropped(self):
        def doubled(datagram):
            return [real_answer(Request(datagram), 1.0)] * 2

        with FakeDevice(doubled) as device:
            run = self.workbench('Task{ Name = "slow", Period = 500 }\n'
                                 + block("odd", device.address, [variable("one", "analog-input", 1)]), "--trace", cycles=3)
        self.assertEqual([state["fault"] for state in run.of("odd")], [False] * 3)
        self.assertEqual(run.errors.count("datagrams dropped before the request: 1\n"), 2)
        self.assertEqual(len(set(device.senders)), 1)

    def test_a_late_answer_is_never_taken_for_another(self):
        # The device sends the late answer to the port of the next request, before the answer to that.
        held = []

        def late(datagram):
            request = Request(datagram)
            answer = real_answer(request, float(request.apdu[8]))
            if request.invoke_id == 1:
                held.append(answer)
                return []
            return [held.pop(), answer] if held else [answer]

        rows = [variable("one", "analog-input", 1), variable("two", "analog-input", 2)]
        with FakeDevice(late) as device:
            run = self.workbench(TASK + block("odd", device.address, rows), "--trace", cycles=4)
        self.assertIn("InvokeId(1) != ReadInvokeId(2)", run.errors)
        for state in run.of("odd"):
            for name, value in (("one", 1), ("two", 2)):
                self.assertIn(state["variables"][name]["value"], (value, None))
        self.assertFalse(run.of("odd")[-1]["fault"])


class Mistakes(EndToEnd):
    """A mistake in a project ends in one line with file, line, block and field, and in exit code 2."""

    def assert_refused(self, project, *words):
        run = self.workbench(project)
        self.assertEqual(run.code, 2, run.errors)
        self.assertEqual(run.output, "")
        lines = run.errors.strip().splitlines()
        self.assertEqual(len(lines), 1, run.errors)
        for word in words:
            self.assertIn(word, lines[0])

    def test_a_bad_address_is_refused(self):
        for text in ("", "127.0.0.1", "127.0.0.1:0", "127.0.0.1:70000", "1.2.3:47808", "::1", "plant:47808"):
            with self.subTest(address=text):
                self.assert_refused(TASK + block("ahu", text, [variable("value", "analog-input", 1)]),
                                    "project.lua:2", '"ahu"', '"Address"')

    def test_an_unknown_object_type_is_refused(self):
        self.assert_refused(block("ahu", "127.0.0.1:47808", [variable("value", "analog-inputt", 1)]),
                            "project.lua:3", '"ahu"', '"value"', '"ObjectType"', "analog-input")

    def test_a_code_outside_the_tables_is_refused(self):
        text = block("ahu", "127.0.0.1:47808", [variable("value", "analog-input", 1)])
        self.assert_refused(text.replace('"analog-input"', "23"), "project.lua:3", '"ahu"', '"ObjectType"')
        self.assert_refused(text.replace('"present-value"', "38"), "project.lua:3", '"ahu"', '"ObjectProperties"')
        self.assert_refused(text.replace('"present-value"', "-1"), "project.lua:3", '"ahu"', '"ObjectProperties"')

    def test_an_unknown_field_is_refused(self):
        self.assert_refused(block("ahu", "127.0.0.1:47808", [variable("value", "analog-input", 1)], "Adress = 1,"),
                            "project.lua:1", '"ahu"', '"Adress"')

    def test_a_project_that_is_not_lua_is_refused(self):
        self.assert_refused("BACnet.new{", "project.lua:1")

    def test_a_missing_project_is_refused(self):
        self.assert_refused("/nowhere/project.lua", "/nowhere/project.lua")
