"""Simulators as a network: found by broadcasts, behind routers, and many of them."""

import os
import socket
import subprocess
import sys
import tempfile
import time

from bacnet import frame
from namespaces import BROADCAST, DESK, PlantNetwork, device_address
from programs import LONGEST, ROOT, SIMULATOR, EndToEnd, Server

WHO_IS = b"\x10\x08"
TO_ALL = bytes.fromhex("0120FFFF00FF")
I_AM = b"\x10\x00\xC4"


def device(name, instance, settings=""):
    return f'device{{name = "{name}", instance = {instance}, {settings}}}'


class SimulatorNetwork(EndToEnd):
    def start(self, *words, port=0, address="127.0.0.1"):
        server = Server(SIMULATOR, *words, "--port", str(port), "--bind", address, "--exit-with-stdin")
        self.addCleanup(server.stop)
        return server

    def answers(self, port, datagram, count, address="127.255.255.255"):
        """Broadcasts a datagram and returns as many answers, each with its sender."""
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as client:
            client.setsockopt(socket.SOL_SOCKET, socket.SO_BROADCAST, 1)
            client.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 1 << 20)
            client.bind(("127.0.0.1", 0))
            client.settimeout(LONGEST)
            client.sendto(datagram, (address, port))
            found = [client.recvfrom(1500) for _ in range(count)]
            client.settimeout(0.2)
            self.assertRaises(socket.timeout, client.recvfrom, 1500)
        return found

    @staticmethod
    def instances(found):
        return sorted(int.from_bytes(octets[octets.index(I_AM) + 3:][:4], "big") & 0x3FFFFF for octets, _ in found)

    def test_two_simulators_on_one_port_each_answer_a_broadcast(self):
        first = self.start(self.file("a.lua", device("A", 1)))
        self.start(self.file("b.lua", device("B", 2)), port=first.port, address="127.0.0.2")
        for address in ("127.255.255.255", "255.255.255.255"):
            found = self.answers(first.port, frame(WHO_IS, function=0x0B), 2, address)
            self.assertEqual(self.instances(found), [1, 2])
            self.assertEqual({sender for _, sender in found}, {("127.0.0.1", first.port), ("127.0.0.2", first.port)})

    def test_the_devices_of_several_files_are_behind_one_router(self):
        files = [self.file(f"{mac}.lua", device(f"D{mac}", mac, f'router = {{network = 5, mac = "0{mac}", name = "R"}}'))
                 for mac in (1, 2, 3)]
        running = self.start(*files)
        found = self.answers(running.port, frame(WHO_IS, npdu=TO_ALL, function=0x0B), 3)
        self.assertEqual(self.instances(found), [1, 2, 3])
        self.assertEqual({sender for _, sender in found}, {("127.0.0.1", running.port)})
        self.assertEqual(sorted(octets[4:10].hex() for octets, _ in found), [f"01080005010{mac}" for mac in (1, 2, 3)])
        router = self.answers(running.port, bytes.fromhex("810B000701 80 00"), 1)
        self.assertEqual(router[0][0].hex(), "810a000901800100" "05")

    def test_the_router_of_the_chiller_of_the_plant_is_found(self):
        running = self.start(os.path.join(ROOT, "examples", "devices", "chiller.lua"))
        self.assertEqual(self.answers(running.port, bytes.fromhex("810B0007018000"), 1)[0][0].hex(), "810a00090180010005")
        self.assertEqual(self.answers(running.port, bytes.fromhex("810B0007018012"), 1)[0][0].hex(), "810a000a018013000101")

    def test_a_thousand_devices_answer_within_seconds(self):
        text = device("Room", 1000, 'router = {network = 9, mac = "0001", name = "R"}')
        running = self.start(self.file("room.lua", text), "--devices", "1000")
        begin = time.monotonic()
        asked = bytes.fromhex("090A1A03E8")  # Who-Is for 10 to 1000, which is the first
        self.assertEqual(self.instances(self.answers(running.port, frame(WHO_IS + asked, npdu=TO_ALL, function=0x0B), 1)), [1000])
        for low in range(1000, 2000, 100):
            limits = b"\x0A" + low.to_bytes(2, "big") + b"\x1A" + (low + 99).to_bytes(2, "big")
            found = self.answers(running.port, frame(WHO_IS + limits, npdu=TO_ALL, function=0x0B), 100)
            self.assertEqual(self.instances(found), list(range(low, low + 100)))
        self.assertLess(time.monotonic() - begin, 30)

    def test_many_devices_with_a_port_each_can_run(self):
        run = subprocess.run([SIMULATOR, self.file("a.lua", device("A", 1)), "--devices", "400", "--port", "0", "--duration", "0"],
                             capture_output=True, text=True, timeout=LONGEST, check=True)
        lines = run.stdout.splitlines()
        self.assertEqual((len(lines), lines[0].split(":")[0], lines[399].split(":")[0]),
                         (400, "ready A 127.0.0.1", "ready A-400 127.0.0.1"))
        self.assertEqual(len(set(lines)), 400)
        self.assertEqual(run.stderr, "")

    def test_two_devices_to_multiply_are_a_mistake(self):
        run = subprocess.run([SIMULATOR, self.file("a.lua", device("A", 1)), self.file("b.lua", device("B", 1)), "--devices", "2"],
                             capture_output=True, text=True, timeout=LONGEST)
        self.assertEqual(run.returncode, 2)
        self.assertEqual(run.stderr, "bacnet-simulator: --devices: multiplies one device, and the device files have 2\n")


# Broadcasts a datagram to port 47808 from a local address and port and prints who answers, in order.
ASK = """
import socket, sys
address, port, receiver, datagram = sys.argv[1:]
with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as client:
    client.setsockopt(socket.SOL_SOCKET, socket.SO_BROADCAST, 1)
    client.bind((address, int(port)))
    client.settimeout(1)
    client.sendto(bytes.fromhex(datagram), (receiver, 47808))
    found = []
    try:
        while True:
            octets, sender = client.recvfrom(1500)
            if octets != bytes.fromhex(datagram):
                found.append(f"{sender[0]}:{sender[1]} {octets.hex()}")
    except socket.timeout:
        for line in sorted(found):
            print(line)
"""


class SimulatorsOnANetwork(PlantNetwork):
    addresses = 3

    def ask(self, datagram, receiver=BROADCAST, address=DESK, port=0):
        return subprocess.run(["ip", "netns", "exec", self.desk, sys.executable, "-c", ASK, address, str(port), receiver, datagram],
                              stdout=subprocess.PIPE, text=True, timeout=LONGEST, check=True).stdout.splitlines()

    def start(self, number, text):
        stream = tempfile.NamedTemporaryFile("w", suffix=".lua")
        self.addCleanup(stream.close)
        stream.write(text)
        stream.flush()
        return self.simulator(number, stream.name)

    def test_devices_of_one_interface_are_found_by_its_broadcasts(self):
        self.start(0, device("A", 1))
        self.start(1, device("B", 2, 'router = {network = 5, mac = "07"}'))
        first = f"{device_address(0)}:47808 810a001501001000c4020000012205c491012203e7"
        second = f"{device_address(1)}:47808 810a00190108000501071000c4020000022205c491012203e7"
        for receiver in (BROADCAST, "255.255.255.255"):
            self.assertEqual(self.ask("810B0008 0100 1008", receiver), [first])
            self.assertEqual(self.ask("810B000C 0120FFFF00FF 1008", receiver), [first, second])
            self.assertEqual(self.ask("810B0007 0180 00", receiver), [f"{device_address(1)}:47808 810a00090180010005"])

    def test_an_i_am_to_all_reaches_port_47808_of_the_network(self):
        self.start(0, device("A", 1, 'i_am = "broadcast"'))
        answer = f"{device_address(0)}:47808 810b00190120ffff00ff1000c4020000012205c491012203e7"
        self.assertEqual(self.ask("810B0008 0100 1008"), [])
        self.assertEqual(self.ask("810B0008 0100 1008", address="0.0.0.0", port=47808), [answer])
