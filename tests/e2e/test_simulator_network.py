"""Simulators as a network: found by broadcasts, behind routers, and many of them."""

import os
import socket
import subprocess
import time

from bacnet import frame
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
