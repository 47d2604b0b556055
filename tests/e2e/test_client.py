"""The client by the standard reads the simulator, by itself: all object types, segments, routers, faults."""

import os

from programs import PLANT, ROOT, EndToEnd, simulator
from reading import TYPES, read_device

PRESENT_VALUE, OBJECT_IDENTIFIER, OBJECT_LIST, OBJECT_NAME = 85, 75, 76, 77
DEVICE, ANY_DEVICE = 8, 4194303


class ClientByTheStandard(EndToEnd):
    def objects(self, address, *options):
        """(type, instance) of all objects of a device, by the elements of its Object_List."""
        rows, _ = read_device(address, *options, f"list,{ANY_DEVICE}")
        return [(text.split()[0], int(text.split()[1])) for _, kind, text in rows if kind == "identifier"]

    def assert_reads_all(self, address, *options):
        objects = self.objects(address, *options)
        reads = [f"{TYPES[name][0]},{number},{prop}" for name, number in objects
                 for prop in (OBJECT_IDENTIFIER, OBJECT_NAME, PRESENT_VALUE)]
        rows, _ = read_device(address, *options, *reads)
        self.assertEqual(len(rows), len(reads))
        for i, (name, number) in enumerate(objects):
            identifier, object_name, value = rows[3 * i:3 * i + 3]
            with self.subTest(f"{name} {number}"):
                self.assertEqual(identifier[1:], ["identifier", f"{name} {number}"])
                self.assertEqual(object_name[1], "text")
                self.assertTrue(object_name[2])
                kind = TYPES[name][1]
                self.assertEqual(value[0], f"{name} {number} present-value")
                if kind is None:
                    self.assertEqual(value[1:], ["failure", "property: unknown-property"])
                elif kind:
                    self.assertEqual(value[1], kind)
                else:
                    self.assertIn(value[1], ("real", "unsigned", "enumerated", "boolean"))
        return {name for name, _ in objects}

    def test_every_object_of_the_plant_is_read(self):
        for device in PLANT.values():
            with simulator(os.path.join(ROOT, "examples", "devices", device + ".lua")) as server:
                options = ("--router", "5", "0A14") if device == "chiller" else ()
                with self.subTest(device):
                    self.assertGreater(len(self.assert_reads_all(server.address, *options)), 3)

    def test_every_object_type_is_read(self):
        own_names = {"bitstring-value": "bit_string_value", "octetstring-value": "octet_string_value"}
        names = [name for name in TYPES if name != "device"]
        objects = ",\n".join(f"{own_names.get(name, name.replace('-', '_'))}{{instance = 7, name = '{name}'}}"
                             for name in names)
        server = self.device('device{name = "All", instance = 1, objects = {\n%s } }' % objects)
        self.assertEqual(self.assert_reads_all(server.address), set(TYPES))
        self.assertEqual(self.assert_reads_all(server.address, "--singly"), set(TYPES))

    def test_a_long_answer_comes_in_segments(self):
        objects = ",".join(f"analog_value{{instance = {i}, present_value = {i}}}" for i in range(1, 301))
        for window in (1, 3, 127):
            server = self.device('device{name = "D", instance = 1, max_apdu_length_accepted = 50, '
                                 f'proposed_window_size = {window}, objects = {{{objects}}} }}')
            rows, last = read_device(server.address, f"{DEVICE},{ANY_DEVICE},{OBJECT_LIST}")
            self.assertEqual(rows[0][2].split(", ")[1:], [f"analog-value {i}" for i in range(1, 301)])
            self.assertIn("34 segments", last)

    def test_a_device_that_cannot_segment_is_read_in_parts(self):
        objects = ",".join(f"analog_value{{instance = {i}, present_value = {i}, description = '{'x' * 30}'}}"
                           for i in range(1, 41))
        server = self.device('device{name = "D", instance = 1, max_apdu_length_accepted = 128, '
                             f'segmentation_supported = "no-segmentation", objects = {{{objects}}} }}')
        rows, last = read_device(server.address, *(f"2,{i},28" for i in range(1, 41)), f"{DEVICE},1,{OBJECT_LIST}")
        self.assertEqual([row[2] for row in rows[:-1]], ["x" * 30] * 40)
        self.assertEqual(rows[-1][1:], ["failure", "abort: segmentation-not-supported"])
        self.assertGreater(int(last.split()[0]), 20)

    def read_faulty(self, fault, *options):
        """Two properties of a device with a fault, and the last line."""
        server = self.device('device{name = "D", instance = 1, faults = {%s}, objects = {analog_input{instance = 1, '
                             'present_value = 21.5}, integer_value{instance = 1, present_value = -56}}}' % fault)
        rows, last = read_device(server.address, "--timeout", "300", "--retries", "2", *options,
                                 f"0,1,{PRESENT_VALUE}", f"45,1,{PRESENT_VALUE}", f"0,9,{PRESENT_VALUE}")
        return [row[1:] for row in rows], last

    GOOD = [["real", "21.5"], ["signed", "-56"], ["failure", "object: unknown-object"]]

    def test_a_list_that_fails_is_read_singly(self):
        for kind in ('"reject"', '"abort", code = 4', '"error"', '"truncate", octet = 20', '"wrong_object"',
                     '"unasked_property"', '"odd_list"', '"headers_only", headers = "apdu"'):
            with self.subTest(kind):
                rows, last = self.read_faulty(f"fault{{{kind}, times = 1}}")
                self.assertEqual(rows, self.GOOD)
                # Two single properties after the half of an aborted list are a list again.
                self.assertEqual(last, f"{3 if 'abort' in kind else 4} requests, 0 segments, 1 attempts")

    def test_lost_and_wrong_answers_are_repeated(self):
        for kind in ('"silence"', '"delay", seconds = 0.4', '"other_invoke_id"', '"other_address"', '"bvlc_function"',
                     '"bvlc_type"', '"bvlc_length"', '"network_message"', '"previous_answer"', '"garbage"',
                     '"headers_only"'):
            with self.subTest(kind):
                rows, last = self.read_faulty(f"fault{{{kind}, times = 1}}")
                self.assertEqual(rows, self.GOOD)
                self.assertEqual(last, "1 requests, 0 segments, 2 attempts")

    def test_a_device_that_never_answers_is_silent(self):
        for kind in ("silence", "other_address", "garbage"):
            with self.subTest(kind):
                rows, last = self.read_faulty(f'fault{{"{kind}"}}')
                self.assertEqual([row[0] for row in rows], ["failure"] * 3)
                self.assertRegex(rows[0][1], r"^no answer \(another station answers: .*\)$" if kind == "other_address"
                                 else r"^no answer( \((a datagram came that is|\d+ datagrams came that are) not an answer\))?$")
                self.assertEqual(last, "2 requests, 0 segments, 3 attempts")

    def read_long(self, fault):
        objects = ",".join(f"analog_value{{instance = {i}, present_value = {i}}}" for i in range(1, 101))
        server = self.device('device{name = "D", instance = 1, max_apdu_length_accepted = 50, apdu_segment_timeout = '
                             '300, proposed_window_size = 4, faults = {%s}, objects = {%s} }' % (fault, objects))
        return read_device(server.address, "--timeout", "600", f"{DEVICE},{ANY_DEVICE},{OBJECT_LIST}")[0][0]

    def test_segments_arrive_whatever_happens_to_them(self):
        for kind in ("segments_out_of_order", "repeated_segment", "segments_at_once",
                     "oversized_segments", "duplicate"):
            times = "" if kind in ("duplicate", "repeated_segment") else ", times = 1"
            with self.subTest(kind):
                row = self.read_long(f'fault{{"{kind}"{times}}}')
                self.assertEqual(row[2].split(", ")[1:], [f"analog-value {i}" for i in range(1, 101)])

    def test_a_segment_that_never_arrives_ends_the_answer(self):
        row = self.read_long('fault{"lost_segment", segment = 2}')
        self.assertEqual(row[1:], ["failure", "incomplete answer (the segments stopped after 2)"])

    def test_segments_without_end_end(self):
        row = self.read_long('fault{"endless_segments"}')
        self.assertEqual(row[1:], ["failure", "malformed answer (longer than 1048576 octets)"])
