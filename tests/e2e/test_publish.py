"""What is published, as a client that others wrote reads it: values, qualities and types against what the simulator has been given."""

import datetime
import json

import published_plant
from bacnet import write_real
from published_plant import BLOCK, POINTS, real
from publishing import BrokerTestCase, escaped, points_device, points_project


def fnv_1a(octets):
    result = 0xCBF29CE484222325
    for octet in octets:
        result = (result ^ octet) * 0x100000001B3 % 2**64
    return result


class PublishJson(BrokerTestCase):
    def publish(self, broker, project, *options, node="one"):
        return self.run_of(project, "--mqtt", broker.url, "--mqtt-node", node, *options)

    def test_values_qualities_units_and_names_are_those_of_the_simulator(self):
        device = self.device(published_plant.DEVICE)
        broker = self.broker()
        reader = self.client(broker.url, "dorvel/#")
        self.publish(broker, published_plant.project(device.address))
        for point in POINTS:
            with self.subTest(point.name):
                self.assert_is_published(reader, point)
        state = reader.wait_for_value(f"dorvel/one/{escaped(BLOCK)}/$state", lambda value: value["state"] == "ok")
        self.assert_is_recent(state["time"])
        plant = reader.wait_for_value("dorvel/one/$state", lambda value: value["online"])
        self.assertEqual(plant["project"], "project.lua")
        self.assertEqual({name for name, message in reader.newest.items() if not message["retained"] and not message["text"]}, set())

    def assert_is_published(self, reader, point):
        got = reader.wait_for_value(f"dorvel/one/{escaped(BLOCK)}/{escaped(point.name)}", lambda _: True)
        if isinstance(point.value, float) and point.declared == "Float":
            self.assertEqual(real(got["value"]), real(point.value))
        else:
            self.assertEqual((type(got["value"]), got["value"]), (type(point.value), point.value))
        self.assertEqual(got["quality"], point.quality)
        self.assertEqual(got["unit"], point.texts.get("Unit"))
        states = point.texts.get("StateTexts")
        self.assertEqual(got.get("stateText"), states and states[int(point.value) - (0 if point.declared == "Boolean" else 1)])
        self.assertEqual((got["object"], got["property"]), (point.object, point.property))
        self.assertIsNone(got["suspect"])
        self.assert_is_recent(got["time"])

    def assert_is_recent(self, text):
        time = datetime.datetime.fromisoformat(text)
        self.assertLess(abs((datetime.datetime.now(datetime.timezone.utc) - time).total_seconds()), 60)

    def test_a_client_that_comes_later_gets_every_newest_value(self):
        device = self.device(points_device(20))
        broker = self.broker()
        writer = self.client(broker.url, "dorvel/one/#")
        self.publish(broker, points_project(device.address, 20))
        writer.wait_for(lambda client: client.value("dorvel/one/AHU/Point 20"))
        write_real(device.address, 7, 99.5)
        writer.wait_for_value("dorvel/one/AHU/Point 7", lambda value: value["value"] == 99.5)
        later = self.client(broker.url, "dorvel/one/#")
        later.wait_for(lambda client: len(client.newest) == 22)
        self.assertEqual([later.value(f"dorvel/one/AHU/Point {i}")["value"] for i in range(1, 21)],
                         [99.5 if i == 7 else i for i in range(1, 21)])
        self.assertTrue(all(message["retained"] for message in later.messages))
        # On change only: nineteen values have come once.
        self.assertEqual([len(writer.of(f"dorvel/one/AHU/Point {i}")) for i in range(1, 21)],
                         [2 if i == 7 else 1 for i in range(1, 21)])

    def test_a_dead_band_and_an_interval_spare_messages_and_lose_no_last_value(self):
        device = self.device(points_device(2))
        broker = self.broker()
        reader = self.client(broker.url, "dorvel/one/#")
        self.publish(broker, points_project(device.address, 2), "--mqtt-dead-band", "0.5", "--mqtt-interval", "1")
        reader.wait_for(lambda client: client.value("dorvel/one/AHU/Point 2"))
        write_real(device.address, 2, 2.25)  # within the dead band
        for step in range(1, 9):
            write_real(device.address, 1, 10 * step)
            reader.wait_for(lambda client: True)
        last = reader.wait_for_value("dorvel/one/AHU/Point 1", lambda value: value["value"] == 80)
        self.assertEqual(last["quality"], "good")
        self.assertLessEqual(len(reader.of("dorvel/one/AHU/Point 1")), 4)
        self.assertEqual([json.loads(message["text"])["value"] for message in reader.of("dorvel/one/AHU/Point 2")], [2])

    def test_a_long_name_is_cut_with_its_hash(self):
        name = "ä/" * 60000
        device = self.device(points_device(1))
        broker = self.broker()
        reader = self.client(broker.url, "dorvel/one/#")
        self.publish(broker, points_project(device.address, 1).replace('"Point 1"', f'"{name}"'))
        cut = "ä%2F" * 30 + f"~{fnv_1a(name.encode()):016X}"
        self.assertEqual(reader.wait_for_value(f"dorvel/one/AHU/{cut}", lambda _: True)["value"], 1)

    def test_the_will_says_that_a_killed_workbench_is_away(self):
        device = self.device(points_device(1))
        broker = self.broker()
        reader = self.client(broker.url, "dorvel/one/#")
        run = self.publish(broker, points_project(device.address, 1))
        reader.wait_for_value("dorvel/one/$state", lambda value: value["online"])
        run.kill()
        self.assertEqual(reader.wait_for_value("dorvel/one/$state", lambda value: not value["online"])["time"], None)

    def test_an_ordered_end_says_when_it_was(self):
        device = self.device(points_device(1))
        broker = self.broker()
        reader = self.client(broker.url, "dorvel/one/#")
        run = self.publish(broker, points_project(device.address, 1))
        reader.wait_for_value("dorvel/one/AHU/Point 1", lambda value: True)
        self.assertEqual(run.stop(), 0)
        self.assert_is_recent(reader.wait_for_value("dorvel/one/$state", lambda value: not value["online"])["time"])

    def test_a_device_that_is_lost_makes_its_values_bad(self):
        device = self.device(points_device(1))
        broker = self.broker()
        reader = self.client(broker.url, "dorvel/one/#")
        project = points_project(device.address, 1).replace('Name = "AHU"', 'Name = "AHU", Timeout = 100, CountRepeat = 1')
        self.publish(broker, project)
        reader.wait_for_value("dorvel/one/AHU/$state", lambda value: value["state"] == "ok")
        device.command("fault * silence")
        state = reader.wait_for_value("dorvel/one/AHU/$state", lambda value: value["state"] == "fault")
        self.assertTrue(state["reason"])
        reader.wait_for_value("dorvel/one/AHU/Point 1", lambda value: value["quality"] == "bad")
        device.command("clear *")
        reader.wait_for_value("dorvel/one/AHU/$state", lambda value: value["state"] == "ok")
        reader.wait_for_value("dorvel/one/AHU/Point 1", lambda value: value["quality"] == "good")

    def test_two_workbenches_at_one_broker_do_not_collide(self):
        devices = [self.device(points_device(1)), self.device(points_device(1).replace("present_value = i", "present_value = 50"))]
        broker = self.broker()
        reader = self.client(broker.url, "dorvel/#")
        for node, device in zip(("one", "two"), devices):
            self.publish(broker, self.file(f"{node}.lua", points_project(device.address, 1)), node=node)
        for node, value in (("one", 1), ("two", 50)):
            self.assertEqual(reader.wait_for_value(f"dorvel/{node}/AHU/Point 1", lambda _: True)["value"], value)
        write_real(devices[0].address, 1, 2)
        write_real(devices[1].address, 1, 60)
        for node, value in (("one", 2), ("two", 60)):
            reader.wait_for_value(f"dorvel/{node}/AHU/Point 1", lambda got, value=value: got["value"] == value)
            self.assertEqual(len(reader.of(f"dorvel/{node}/$state")), 1)
