"""Commands to a run that publishes: what is taken, what is refused and why, and that the value arrives in the simulator."""

import datetime
import json
import time

from publishing import BrokerTestCase, points_device, points_project
from reading import read_device

POINT = "dorvel/one/AHU/Point 1"


def ago(seconds):
    return (datetime.datetime.now(datetime.timezone.utc) - datetime.timedelta(seconds=seconds)).isoformat(timespec="milliseconds")


class PublishCommands(BrokerTestCase):
    def start(self, *options):
        self.simulated = self.device(points_device(3))
        self.at = self.broker()
        self.reader = self.client(self.at.url, "dorvel/#")
        self.bench = self.run_of(points_project(self.simulated.address, 3), "--mqtt", self.at.url, "--mqtt-node", "one", *options)
        self.reader.wait_for(lambda client: client.value(POINT))

    def value_in_the_device(self, number=1):
        rows, _ = read_device(self.simulated.address, f"2,{number},85")
        return float(rows[0][2])

    def answers(self, point=POINT):
        return [json.loads(message["text"]) for message in self.reader.of(f"{point}/set/state")]

    def command(self, value, count, point=POINT, **fields):
        """Sends a command and returns its answers, when there are so many more."""
        before = len(self.answers(point))
        self.reader.publish(f"{point}/set", value if isinstance(value, str) else json.dumps(value), **fields)
        self.reader.wait_for(lambda _: len(self.answers(point)) >= before + count, f"{count} answers to {value}")
        return self.answers(point)[before:]

    def test_a_command_arrives_and_is_answered_with_the_state_of_the_write(self):
        self.start("--mqtt-writes")
        accepted, final = self.command({"value": 21.5, "id": "order 7"}, 2)
        self.assertEqual((accepted["state"], accepted["id"]), ("pending", "order 7"))
        self.assertEqual((final["state"], final["id"], final["value"]), ("written", "order 7", 21.5))
        self.assertEqual(self.value_in_the_device(), 21.5)
        self.reader.wait_for_value(POINT, lambda value: value["value"] == 21.5)
        self.assertFalse(any(message["retained"] for message in self.reader.of(f"{POINT}/set/state")))
        # A bare value will do too.
        self.assertEqual([answer["state"] for answer in self.command("22.5", 2, "dorvel/one/AHU/Point 2")], ["pending", "written"])
        self.assertEqual(self.value_in_the_device(2), 22.5)
        self.bench.log.wait_for("mqtt: AHU.Point 2 = 22.5")

    def test_commands_are_off_by_default(self):
        self.start()
        self.reader.publish(f"{POINT}/set", "21.5")
        self.bench.wait_for_cycles(5)
        self.assertEqual(self.value_in_the_device(), 1)
        self.assertEqual(self.answers(), [])
        self.assertNotRegex(self.at.log(), "Received SUBSCRIBE from dorvel")

    def test_retained_old_and_early_commands_are_refused_and_nothing_is_written(self):
        self.start("--mqtt-writes")
        answer, = self.command({"value": 30, "time": ago(60)}, 1)
        self.assertEqual(answer["state"], "rejected")
        self.assertRegex(answer["reason"], "old|ago")
        answer, = self.command({"value": 31, "time": ago(-60)}, 1, "dorvel/one/AHU/Point 2")
        self.assertEqual(answer["state"], "rejected")
        self.assertIn("future", answer["reason"])
        self.assertEqual([answer["state"] for answer in self.command({"value": 32, "time": ago(1)}, 2, "dorvel/one/AHU/Point 3")],
                         ["pending", "written"])
        self.bench.wait_for_cycles(3)
        self.assertEqual([self.value_in_the_device(number) for number in (1, 2, 3)], [1, 2, 32])

    def test_a_command_that_the_broker_has_kept_is_refused(self):
        self.simulated = self.device(points_device(3))
        self.at = self.broker()
        self.reader = self.client(self.at.url, "dorvel/#")
        self.reader.publish(f"{POINT}/set", "40", retain=True)
        bench = self.run_of(points_project(self.simulated.address, 3), "--mqtt", self.at.url, "--mqtt-node", "one", "--mqtt-writes")
        self.reader.wait_for(lambda _: self.answers(), "the answer to the retained command")
        self.assertEqual([answer["state"] for answer in self.answers()], ["rejected"])
        self.assertIn("retain", self.answers()[0]["reason"])
        bench.wait_for_cycles(5)
        self.assertEqual(self.value_in_the_device(), 1)

    def test_more_than_one_a_second_is_refused_and_counted(self):
        self.start("--mqtt-writes", "--page")
        for value in range(50, 60):
            self.reader.send(publish=f"{POINT}/set", text=str(value))
        self.reader.wait_for(lambda _: len(self.answers()) >= 11, "ten answers and the end of the first one")
        states = [answer["state"] for answer in self.answers()]
        self.assertEqual((states.count("rejected"), states.count("pending"), states.count("written")), (9, 1, 1))
        self.assertEqual(self.value_in_the_device(), 50)
        counts = self.bench.outlet()["counts"]
        self.assertEqual((counts["commands"], counts["commands refused"]), (10, 9))
        time.sleep(1)
        self.assertEqual([answer["state"] for answer in self.command("60", 2)], ["pending", "written"])

    def test_what_is_not_a_value_is_answered(self):
        self.start("--mqtt-writes")
        for number, text in ((1, '{"value": "warm"}'), (2, "{" * 60000), (3, '{"id": 1}')):
            answer, = self.command(text, 1, f"dorvel/one/AHU/Point {number}")
            self.assertEqual(answer["state"], "invalid", text[:20])
            self.assertTrue(answer["reason"])
        self.bench.wait_for_cycles(3)
        self.assertEqual([self.value_in_the_device(number) for number in (1, 2, 3)], [1, 2, 3])

    def test_a_refusal_of_the_device_is_answered_with_its_reason(self):
        self.start("--mqtt-writes")
        self.simulated.command("fault * error class=1 code=37 on=write")
        accepted, final = self.command("25", 2)
        self.assertEqual((accepted["state"], final["state"]), ("pending", "refused"))
        self.assertIn("ValueOutOfRange", final["reason"])
        self.assertEqual(self.value_in_the_device(), 1)
