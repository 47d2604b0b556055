"""Two workbenches, each with a broker of its own, and a bridge between the brokers, as docs/publish.md describes it."""

import json
import os
import re

from bacnet import write_real
from programs import ROOT
from publishing import BrokerTestCase, points_device, points_project
from reading import read_device


def bridge_of_the_document(port):
    """The lines of mosquitto.conf that the document shows, with another address."""
    with open(os.path.join(ROOT, "docs", "publish.md"), encoding="utf-8") as stream:
        part = stream.read().split("\n## Two workbenches on a bridged pair\n")[1].split("\n## ")[0]
    lines = [line.strip() for line in re.search(r"((?:^    .*\n)*^    connection .*\n(?:^    .*\n)*)", part, re.MULTILINE)[1].splitlines()]
    assert any(line.startswith("address ") for line in lines), lines
    return [f"address 127.0.0.1:{port}" if line.startswith("address ") else line for line in lines
            if not line.startswith(("listener", "allow_anonymous", "max_queued"))]


class PublishPair(BrokerTestCase):
    def test_readers_at_both_brokers_have_the_values_of_both_workbenches_and_can_set_them(self):
        east = self.broker(name="east")
        west = self.broker(*bridge_of_the_document(east.port), name="west")
        devices = {"east": self.device(points_device(3)), "west": self.device(points_device(3))}
        brokers = {"east": east, "west": west}
        for name, broker in brokers.items():
            project = self.file(f"{name}.lua", points_project(devices[name].address, 3))
            self.run_of(project, "--mqtt", broker.url, "--mqtt-node", name, "--mqtt-writes")
        readers = {name: self.client(broker.url, "dorvel/#") for name, broker in brokers.items()}
        for reader in readers.values():
            for node in brokers:
                reader.wait_for_value(f"dorvel/{node}/$state", lambda value: value["online"], longest=10)
                for number in (1, 2, 3):
                    reader.wait_for_value(f"dorvel/{node}/AHU/Point {number}", lambda value, number=number: value["value"] == number)
        write_real(devices["east"].address, 2, 42)
        for reader in readers.values():
            reader.wait_for_value("dorvel/east/AHU/Point 2", lambda value: value["value"] == 42)
        # A command from the other side.
        readers["west"].publish("dorvel/east/AHU/Point 1/set", json.dumps({"value": 21.5, "id": 1}))
        readers["west"].wait_for(lambda client: any(
            json.loads(message["text"])["state"] == "written" for message in client.of("dorvel/east/AHU/Point 1/set/state")))
        self.assertEqual(read_device(devices["east"].address, "2,1,85")[0][0][2], "21.5")

    def test_what_changes_while_the_bridge_is_broken_is_there_when_it_is_back(self):
        east = self.broker(name="east")
        west = self.broker(*bridge_of_the_document(east.port), name="west")
        device = self.device(points_device(3))
        run = self.run_of(points_project(device.address, 3), "--mqtt", west.url, "--mqtt-node", "west")
        reader = self.client(east.url, "dorvel/#")
        reader.wait_for_value("dorvel/west/AHU/Point 3", lambda _: True)
        east.kill()
        write_real(device.address, 3, 33)
        run.wait_for_cycles(5)
        east.start()
        self.client(east.url, "dorvel/#").wait_for_value("dorvel/west/AHU/Point 3", lambda value: value["value"] == 33)
        self.assert_no_cycle_was_disturbed(run, "AHU")
