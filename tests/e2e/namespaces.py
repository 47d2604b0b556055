"""A plant's network and a desk on it, each in a network namespace that the test makes and removes.

The devices are in one namespace, with an address each, the workbench is in the other; between them is a virtual cable
that carries broadcasts. Nothing outside sees their datagrams, and every program can have port 47808.
"""

import os
import shutil
import subprocess
import unittest

from programs import LONGEST, SIMULATOR, WORKBENCH, Run, Server

DESK = "10.77.0.1"
BROADCAST = "10.77.0.255"


def device_address(number):
    return f"10.77.0.{10 + number}"


def ip(*words):
    result = subprocess.run(["ip", *words], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    if result.returncode != 0:
        raise AssertionError(f"ip {' '.join(words)}: {result.stdout}")


class PlantNetwork(unittest.TestCase):
    """A test with such a network. It needs root, which may make namespaces."""

    maxDiff = None
    addresses = 8  # of devices

    def setUp(self):
        if os.geteuid() != 0 or not shutil.which("ip"):
            self.skipTest("network namespaces need root and the program ip (iproute2)")
        self.desk = f"dorvel-desk-{os.getpid()}"
        self.plant = f"dorvel-plant-{os.getpid()}"
        for name in (self.desk, self.plant):
            ip("netns", "add", name)
            self.addCleanup(ip, "netns", "delete", name)
            ip("-netns", name, "link", "set", "lo", "up")
        ip("-netns", self.desk, "link", "add", "desk0", "type", "veth", "peer", "name", "plant0", "netns", self.plant)
        self._join(self.desk, "desk0", [DESK])
        self._join(self.plant, "plant0", [device_address(number) for number in range(self.addresses)])

    @staticmethod
    def _join(namespace, interface, addresses):
        for address in addresses:
            ip("-netns", namespace, "address", "add", f"{address}/24", "broadcast", BROADCAST, "dev", interface)
        ip("-netns", namespace, "link", "set", interface, "up")

    def simulator(self, number, *words):
        """Starts a simulator at device_address(number), port 47808. It ends with the test."""
        server = Server("ip", "netns", "exec", self.plant, SIMULATOR, *words, "--bind", device_address(number),
                        "--exit-with-stdin")
        self.addCleanup(server.stop)
        return server

    def workbench(self, *words, cwd=None):
        process = subprocess.run(
            ["ip", "netns", "exec", self.desk, WORKBENCH, *words], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=subprocess.PIPE, text=True, timeout=LONGEST, cwd=cwd, check=False)
        return Run(process.returncode, process.stdout, process.stderr)
