"""Sparkplug B, as the npm package sparkplug-payload decodes it and a host takes it: births, data, deaths, rebirths, commands."""

import json
import time
from datetime import datetime

import published_plant
from bacnet import write_real
from proxy import Proxy
from published_plant import BLOCK, POINTS, real
from publishing import BrokerTestCase, escaped, points_device, points_project
from reading import read_device
from sparkplug_host import SparkplugHost

QUALITIES = {"good": 192, "bad": 0}


class PublishSparkplug(BrokerTestCase):
    def publish(self, project, *options, node="one"):
        return self.run_of(project, "--mqtt", self.at.url, "--mqtt-node", node, "--mqtt-payload", "sparkplug", *options)

    def start(self, device_text, project, *options):
        self.simulated = self.device(device_text)
        self.at = self.broker()
        self.reader = self.client(self.at.url, "spBv1.0/#")
        self.bench = self.publish(project(self.simulated.address), *options)
        return SparkplugHost(self.reader, "one")

    def small(self, *options, text=lambda text: text):
        return self.start(points_device(3), lambda address: text(points_project(address, 3)), *options)

    def test_births_have_the_types_values_units_and_qualities_of_the_simulator(self):
        host = self.start(published_plant.DEVICE, published_plant.project)
        device = escaped(BLOCK)
        host.wait_for(lambda host: device in host.devices, "the birth of the device")
        self.assertEqual(host.node["Node Control/Rebirth"]["value"], False)
        for point in POINTS:
            name = "/".join(escaped(part) for part in point.name.split("/"))
            with self.subTest(name):
                self.assert_is_born(host.devices[device][name], point)

    def assert_is_born(self, metric, point):
        self.assertEqual(metric["type"], point.declared)
        value = metric["value"]
        if point.declared == "DateTime":
            self.assertEqual(value, round(datetime.fromisoformat(point.value).timestamp() * 1000))
        elif point.declared == "Float":
            expected = {"nan": "NaN", "-inf": "-Infinity"}.get(point.value)
            self.assertEqual(value, expected or real(point.value))
        else:  # the package takes the bits of an UInt32 for a signed number
            self.assertEqual(value % 2**32 if point.declared == "UInt32" else value, point.value)
        properties = {name: entry["value"] for name, entry in metric["properties"].items()}
        self.assertEqual(properties["Quality"], QUALITIES[point.quality])
        self.assertEqual((properties["object"], properties["property"]), (point.object, point.property))
        self.assertEqual(properties.get("engUnit"), {"degrees-celsius": "°C", None: None}[point.texts.get("Unit")])
        if "StateTexts" in point.texts:
            first = 0 if point.declared == "Boolean" else 1
            self.assertEqual(json.loads(properties["states"]),
                             {str(number): text for number, text in enumerate(point.texts["StateTexts"], first)})
        self.assertLess(abs(time.time() * 1000 - metric["timestamp"]), 60000)

    def test_data_by_alias_follow_the_simulator(self):
        host = self.small()
        host.wait_for(lambda host: host.value("AHU", "Point 3") == 3)
        for step in range(5):
            write_real(self.simulated.address, 2, 10.5 + step)
            host.wait_for(lambda host, step=step: host.value("AHU", "Point 2") == 10.5 + step)
        self.assertEqual([host.value("AHU", f"Point {number}") for number in (1, 3)], [1, 3])
        self.assertEqual(host.births, {None: 1, "AHU": 1})

    def test_a_host_that_asks_for_a_rebirth_gets_one(self):
        host = self.small()
        host.wait_for(lambda host: "AHU" in host.devices)
        self.assertEqual(host.births, {None: 1, "AHU": 1})
        self.reader.publish(host.topic("NCMD"), qos=0, sparkplug={"timestamp": int(time.time() * 1000), "metrics": [
            {"name": "Node Control/Rebirth", "type": "Boolean", "value": True}]})
        host.wait_for(lambda host: host.births == {None: 2, "AHU": 2}, "the second births")
        self.assertEqual(host.value("AHU", "Point 3"), 3)

    def test_a_late_host_gets_everything_by_a_rebirth(self):
        self.small()
        SparkplugHost(self.reader, "one").wait_for(lambda host: "AHU" in host.devices)
        write_real(self.simulated.address, 1, 55)
        late = self.client(self.at.url, "spBv1.0/dorvel/+/one/#")
        late.publish("spBv1.0/dorvel/NCMD/one", sparkplug={"timestamp": int(time.time() * 1000), "metrics": [
            {"name": "Node Control/Rebirth", "type": "Boolean", "value": True}]})
        late.wait_for(lambda client: any("/NBIRTH/" in message["topic"] for message in client.messages), "the birth of the node")
        first = next(index for index, message in enumerate(late.messages) if "/NBIRTH/" in message["topic"])
        del late.messages[:first]  # data that were on their way
        SparkplugHost(late, "one").wait_for(lambda host: host.value("AHU", "Point 1") == 55)

    def test_the_will_of_a_killed_workbench_is_the_death_of_its_birth(self):
        host = self.small()
        host.wait_for(lambda host: "AHU" in host.devices)
        self.bench.kill()
        host.wait_for(lambda host: not host.is_alive, "the death of the node")

    def test_a_broken_connection_is_a_death_and_new_births(self):
        self.simulated = self.device(points_device(3))
        broker = self.broker()
        host = SparkplugHost(self.client(broker.url, "spBv1.0/#"), "one")
        with Proxy(broker.port) as proxy:
            self.run_of(points_project(self.simulated.address, 3), "--mqtt", f"mqtt://127.0.0.1:{proxy.port}", "--mqtt-node", "one",
                        "--mqtt-payload", "sparkplug")
            host.wait_for(lambda host: "AHU" in host.devices)
            proxy.close()
            host.wait_for(lambda host: not host.is_alive, "the death of the node")
            write_real(self.simulated.address, 2, 20)
            proxy.open()
            host.wait_for(lambda host: host.value("AHU", "Point 2") == 20)

    def test_a_device_that_is_lost_dies_and_is_born_again(self):
        host = self.small(text=lambda text: text.replace('Name = "AHU"', 'Name = "AHU", Timeout = 100, CountRepeat = 1'))
        host.wait_for(lambda host: "AHU" in host.devices)
        self.simulated.command("fault * silence")
        host.wait_for(lambda host: host.deaths == ["AHU"], "the death of the device")
        self.simulated.command("clear *")
        host.wait_for(lambda host: host.value("AHU", "Point 1") == 1, "its second birth")
        self.assertTrue(host.is_alive)

    def test_commands_by_name_and_by_alias_arrive_and_are_answered(self):
        host = self.small("--mqtt-writes")
        host.wait_for(lambda host: "AHU" in host.devices)
        self.command(host, {"name": "Point 1"}, 21.5)
        self.command(host, {"alias": host.devices["AHU"]["Point 2"]["alias"]}, 22.5)
        for number, value in ((1, 21.5), (2, 22.5)):
            host.wait_for(lambda host, number=number, value=value: host.value("AHU", f"Point {number}") == value)
            self.assertEqual(float(read_device(self.simulated.address, f"2,{number},85")[0][0][2]), value)
        answers = self.answers(host)
        for number in (1, 2):
            states = [answer["state"] for answer in answers if answer["variable"] == f"Point {number}"]
            self.assertEqual(states[0], "pending")
            self.assertLessEqual(set(states), {"pending", "written"})

    def command(self, host, metric, value, **fields):
        self.reader.publish(host.topic("DCMD", "AHU"), sparkplug={"timestamp": int(time.time() * 1000), "metrics": [
            {"type": "Float", "value": value} | metric]} | fields)

    def answers(self, host):
        metrics = [metric for message in self.reader.of(host.topic("NDATA")) for metric in message["payload"]["metrics"]]
        return [json.loads(metric["value"]) for metric in metrics if metric.get("name") == "Commands/Answer"]

    def test_commands_are_off_by_default_and_old_or_frequent_ones_are_refused(self):
        host = self.small()
        host.wait_for(lambda host: "AHU" in host.devices)
        self.command(host, {"name": "Point 1"}, 21.5)
        host.wait_for(lambda host: [answer["state"] for answer in self.answers(host)] == ["rejected"])
        self.assertIn("--mqtt-writes", self.answers(host)[0]["reason"])
        self.bench.stop()
        host.wait_for(lambda host: not host.is_alive)
        self.bench = self.publish(points_project(self.simulated.address, 3), "--mqtt-writes")
        host.wait_for(lambda host: "AHU" in host.devices)
        self.command(host, {"name": "Point 1"}, 31.5, timestamp=int(time.time() * 1000) - 60000)
        for value in (41, 42, 43):
            self.command(host, {"name": "Point 2"}, value)
        host.wait_for(lambda host: sum(answer["state"] == "rejected" for answer in self.answers(host)) == 4)
        host.wait_for(lambda host: host.value("AHU", "Point 2") == 41)
        self.assertEqual([float(row[2]) for row in read_device(self.simulated.address, "2,1,85", "2,2,85")[0]], [1, 41])

    def test_two_nodes_at_one_broker_do_not_collide(self):
        host = self.small()
        other_device = self.device(points_device(2))
        self.publish(self.file("other.lua", points_project(other_device.address, 2)), node="two")
        other = SparkplugHost(self.reader, "two")
        other.wait_for(lambda host: host.value("AHU", "Point 2") == 2)
        write_real(other_device.address, 1, 9)
        other.wait_for(lambda host: host.value("AHU", "Point 1") == 9)
        host.wait_for(lambda host: host.value("AHU", "Point 1") == 1)
        self.assertEqual((host.births, other.births), ({None: 1, "AHU": 1}, {None: 1, "AHU": 1}))
