"""An independent analyser dissects the capture of a run. Its findings are compared with the project."""

import unittest

from bacnet import FakeDevice, Request, frame as datagram_of, real_answer
from capture import COMPLEX_ACK, READ_REQUEST, SEGMENT_ACK, frames, only, requests_to, tshark, tshark_is_missing
from programs import PLANT, PLANT_PROJECT, TASK, EndToEnd, ExamplePlant, block, variable

REASON = tshark_is_missing()


def answers(datagram):
    return [real_answer(Request(datagram), 1.0)]


@unittest.skipIf(REASON, REASON)
class Capture(EndToEnd):
    def run_and_dissect(self, project, device, cycles=1, malformed=0):
        capture = self.file("run.pcap")
        run = self.workbench(project, "--pcap", capture, cycles=cycles)
        self.assertEqual(run.code, 0, run.errors)
        port = int(device.address.split(":")[1])
        captured = frames(capture, {port})
        self.assertEqual(len([frame for frame in captured if "_ws.malformed" in frame]), malformed)
        return captured, port

    def assert_read_request(self, frame, object_type, number, properties, invoke_id):
        expected = {
            "bvlc.function": ["0x0a"], "bacnet.version": ["1"], "bacapp.type": [READ_REQUEST],
            "bacapp.invoke_id": [str(invoke_id)], "bacapp.confirmed_service": ["14"],
            "bacapp.objectType": [str(object_type)], "bacapp.instance_number": [str(number)],
            "bacapp.property_identifier": [str(number) for number in properties],
            "bacapp.segmented_request": ["0"], "bacapp.more_segments": ["0"], "bacapp.SA": ["1"],
            "bacapp.response_segments": ["7"], "bacapp.max_adpu_size": ["4"]}
        self.assertEqual({field: frame.get(field) for field in expected}, expected)

    def test_each_object_is_one_request_with_its_properties_in_order(self):
        with FakeDevice(answers) as device:
            rows = [variable("a", "multi-state-value", 4194302, prop="event-state"),
                    variable("b", "analog-input", 7, prop="units"), variable("c", "analog-input", 7),
                    variable("d", "analog-input", 3, prop="status-flags"), variable("e", "analog-input", 3)]
            captured, port = self.run_and_dissect(TASK + block("x", device.address, rows), device)
        sent = requests_to(captured, port)
        self.assertEqual(len(sent), 3)
        self.assert_read_request(sent[0], 0, 3, [111, 85], 1)
        self.assert_read_request(sent[1], 0, 7, [117, 85, 111], 2)
        self.assert_read_request(sent[2], 19, 4194302, [36, 111], 3)
        for request in sent:
            self.assertEqual(only(request, "bacnet.control"), "0x04")
            for field in ("bacnet.dnet", "bacnet.snet", "bacnet.hopc"):
                self.assertNotIn(field, request)

    def test_invoke_ids_increase_by_one_and_wrap(self):
        with FakeDevice(answers) as device:
            captured, port = self.run_and_dissect(
                TASK + block("x", device.address, [variable("a", "analog-input", 1)]), device, cycles=260)
        ids = [int(only(frame, "bacapp.invoke_id")) for frame in requests_to(captured, port)]
        self.assertEqual(ids, [number % 256 for number in range(1, 261)])

    def test_every_answer_has_the_invoke_id_of_the_request_before_it(self):
        with FakeDevice(answers) as device:
            captured, port = self.run_and_dissect(
                TASK + block("x", device.address, [variable("a", "analog-input", 1)]), device, cycles=5)
        self.assertEqual(len(captured), 10)
        for request, answer in zip(captured[0::2], captured[1::2]):
            self.assertEqual(only(request, "udp.dstport"), str(port))
            self.assertEqual(only(answer, "udp.srcport"), str(port))
            self.assertEqual(only(answer, "bacapp.type"), COMPLEX_ACK)
            self.assertEqual(only(request, "bacapp.invoke_id"), only(answer, "bacapp.invoke_id"))

    def test_a_request_to_a_device_behind_a_router_has_its_network_and_address(self):
        for text, dlen, octets in (("10", 1, "0a"), ("10:20", 2, "0a14"), ("192.168.10.1:47809", 6, "c0a80a01bac1")):
            with self.subTest(mac=text), FakeDevice(answers) as router:
                project = TASK + block("x", router.address, [variable("a", "analog-input", 1)], "NetworkNumber = 5,")
                project = project.replace(f'MAC = "{router.address}"', f'MAC = "{text}"')
                captured, port = self.run_and_dissect(project, router)
                request, = requests_to(captured, port)
                self.assert_read_request(request, 0, 1, [85, 111], 1)
                self.assertEqual(only(request, "bacnet.control"), "0x24")
                self.assertEqual(only(request, "bacnet.dnet"), "5")
                self.assertEqual(only(request, "bacnet.dlen"), str(dlen))
                self.assertEqual(only(request, "bacnet.hopc"), "255")
                address = [request[field][0] for field in ("bacnet.dadr_mstp", "bacnet.dadr_eth", "bacnet.dadr_tmp")
                           if field in request]
                self.assertEqual([text.replace(":", "") for text in address], [octets if dlen > 1 else "10"])

    def test_segments_are_acknowledged_one_by_one_and_the_last_one_once_more(self):
        def segmented(datagram):
            apdu = datagram[6:]
            if apdu[0] == 0x40:
                number = apdu[2] + 1
                return [segment(apdu[1], number)] if number < 3 else []
            return [segment(apdu[2], 0)]

        whole = real_answer(Request(bytes.fromhex("810a00150104027401 0e0c000000011e0955096f1f".replace(" ", ""))), 7.0)[9:]
        parts = [whole[:9], whole[9:15], whole[15:]]

        def segment(invoke_id, number):
            return datagram_of(bytes([0x38 if number == 2 else 0x3C, invoke_id, number, 1, 14]) + parts[number])

        with FakeDevice(segmented) as device:
            project = TASK + block("x", device.address, [variable("a", "analog-input", 1)])
            captured, port = self.run_and_dissect(project, device)
            run = self.workbench(project)
        self.assert_good(run.of("x")[0], "a", 7.0)
        sent = requests_to(captured, port)
        self.assert_read_request(sent[0], 0, 1, [85, 111], 1)
        acks = sent[1:]
        self.assertEqual([only(ack, "bacapp.sequence_number") for ack in acks], ["0", "1", "2"])
        for ack in acks:
            self.assertEqual(only(ack, "bacapp.type"), SEGMENT_ACK)
            self.assertEqual(only(ack, "bacapp.invoke_id"), "1")
            self.assertEqual(only(ack, "bacapp.window_size"), "1")
            self.assertEqual((only(ack, "bacapp.NAK"), only(ack, "bacapp.SRV")), ("0", "0"))

    def test_a_request_of_256_octets_and_more_has_a_length_that_an_analyser_flags(self):
        with FakeDevice(answers) as device:
            rows = [variable(f"v{number}", "analog-input", 1) for number in range(126)]
            captured, port = self.run_and_dissect(TASK + block("x", device.address, rows), device, malformed=1)
        request, = requests_to(captured, port)
        self.assertIn("_ws.malformed", request)
        self.assert_read_request(request, 0, 1, [85] * 126 + [111], 1)
        dissection = tshark(self.file("run.pcap"), {port}, "-O", "bvlc", "-Y", f"udp.dstport=={port}")
        self.assertIn("4 of 4111 bytes (invalid length - expected 271 bytes)", dissection)

    def test_a_property_above_255_is_sent_as_its_low_eight_bits(self):
        with FakeDevice(answers) as device:
            captured, port = self.run_and_dissect(
                TASK + block("x", device.address, [variable("a", "analog-input", 1, prop="blink-warn-enable")]), device)
        self.assert_read_request(requests_to(captured, port)[0], 0, 1, [117, 111], 1)

    def test_every_frame_of_the_whole_plant_is_well_formed(self):
        capture = self.file("plant.pcap")
        with ExamplePlant() as plant:
            run = self.workbench(PLANT_PROJECT, *plant.defines, "--pcap", capture, cycles=1)
            ports = {name: device.port for name, device in plant.devices.items()}
        self.assertEqual(run.code, 0, run.errors)
        captured = frames(capture, set(ports.values()))
        self.assertEqual([frame for frame in captured if "_ws.malformed" in frame], [])
        for name in PLANT:
            sent = requests_to(captured, ports[name])
            self.assertTrue(sent, name)
            self.assertEqual({only(frame, "bacapp.type") for frame in sent} - {READ_REQUEST, SEGMENT_ACK}, set())
            invoke_ids = [only(frame, "bacapp.invoke_id") for frame in sent if only(frame, "bacapp.type") == READ_REQUEST]
            self.assertEqual(invoke_ids, [str(number) for number in range(1, len(invoke_ids) + 1)])
        routed = [frame for frame in captured if "bacnet.dnet" in frame]
        self.assertTrue(routed)
        self.assertEqual({only(frame, "udp.dstport") for frame in routed}, {str(ports["chiller"])})
        self.assertIn(SEGMENT_ACK, {only(frame, "bacapp.type") for frame in captured})
