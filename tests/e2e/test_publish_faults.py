"""What the broker and the way to it can do to a run that publishes: no cycle is disturbed and no newest value is lost."""

import os
import time

from bacnet import write_real
from broker import Tls
from certificates import Authority
from proxy import Proxy
from publishing import BrokerTestCase, points_device, points_project
from test_screen import ScreenBase

MOVING = ('local objects = {}\nfor i = 1, %d do\n  table.insert(objects, analog_input{ instance = i, present_value = '
          'ramp{from = 0, to = 100000, period = 20} })\nend\ndevice{ instance = 1, name = "D", objects = objects }\n')


class PublishFaults(BrokerTestCase):
    """The runs end with --page, where the state of the broker is looked at; the log is looked at too."""

    def start(self, url, *options, count=50):
        self.simulated = self.device(points_device(count))
        self.bench = self.run_of(points_project(self.simulated.address, count), "--mqtt", url, "--mqtt-node", "one", "--page", *options)

    def change(self, values):
        for number, value in values.items():
            write_real(self.simulated.address, number, value)

    def assert_reader_has(self, reader, values, count=50):
        expected = {number: values.get(number, number) for number in range(1, count + 1)}
        def read(client):
            return all((value := client.value(f"dorvel/one/AHU/Point {number}")) and value["value"] == wanted
                       for number, wanted in expected.items())
        reader.wait_for(read, f"every newest value: {values}")

    def test_a_broker_that_is_killed_and_comes_back_empty_gets_every_newest_value(self):
        broker = self.broker()
        self.start(broker.url)
        self.assert_reader_has(self.client(broker.url, "dorvel/#"), {})
        broker.kill()
        outlet = self.bench.wait_for_outlet(lambda outlet: outlet["health"] == "waiting")
        self.assertIn(str(broker.port), outlet["text"])
        self.bench.log.wait_for("mqtt: .*nobody accepts connections there")
        self.change({1: 100, 2: 200, 3: 300})
        self.change({1: 101, 2: 2, 3: 301})  # what is newest, also if it is what it was
        before = len(self.bench.log.all)
        broker.start()
        self.bench.wait_for_outlet(lambda outlet: outlet["health"] == "good")
        self.assert_reader_has(self.client(broker.url, "dorvel/#"), {1: 101, 3: 301})
        self.bench.log.wait_for("mqtt: connected", after=before)
        self.assertGreaterEqual(self.bench.outlet()["counts"]["reconnects"], 1)
        self.assert_no_cycle_was_disturbed(self.bench, "AHU")

    def test_a_connection_that_is_cut_is_made_again(self):
        broker = self.broker()
        with Proxy(broker.port) as proxy:
            reader = self.client(broker.url, "dorvel/#")
            self.start(f"mqtt://127.0.0.1:{proxy.port}")
            self.assert_reader_has(reader, {})
            for turn in (1, 2):
                proxy.close()
                reader.wait_for_value("dorvel/one/$state", lambda value: not value["online"], "the will")
                self.change({turn: 500 + turn})
                proxy.open()
                reader.wait_for_value("dorvel/one/$state", lambda value: value["online"])
                self.assert_reader_has(reader, {number: 500 + number for number in range(1, turn + 1)})
            self.assert_no_cycle_was_disturbed(self.bench, "AHU")

    def test_a_way_that_stops_reading_costs_no_memory_and_no_newest_value(self):
        broker = self.broker()
        self.simulated = self.device(MOVING % 1000)
        project = points_project(self.simulated.address, 1000, period=250).replace("analog-value", "analog-input").replace(", Write = true", "")
        with Proxy(broker.port) as proxy:
            self.bench = self.run_of(project, "--mqtt", f"mqtt://127.0.0.1:{proxy.port}", "--mqtt-node", "one", "--page")
            reader = self.client(broker.url, "dorvel/#")
            reader.wait_for(lambda client: len(client.newest) >= 1002)
            proxy.block()
            self.bench.wait_for_cycles(3)
            before = self.bench.memory()
            self.bench.wait_for_cycles(10)
            # Snapshots of 1000 variables make some 0.2 MiB a cycle, their messages some more.
            self.assertLess(self.bench.memory() - before, 4)
            passed = proxy.passed
            proxy.unblock()
            first = self.bench.cycles[-1]["variables"]
            self.assertGreater(first[0]["value"], 0)
            reader.wait_for(lambda client: all(
                client.value(f"dorvel/one/AHU/Point {number}")["time"] >= first[number - 1]["time"] for number in range(1, 1001)))
            self.assertGreater(proxy.passed, passed)
            self.assert_no_cycle_was_disturbed(self.bench, "AHU", 250)

    def test_a_broker_that_hangs_is_left_after_the_keep_alive(self):
        broker = self.broker()
        self.start(broker.url, "--mqtt-keep-alive", "5")
        reader = self.client(broker.url, "dorvel/#")
        self.assert_reader_has(reader, {})
        broker.freeze()
        self.change({1: 77})
        outlet = self.bench.wait_for_outlet(lambda outlet: outlet["health"] == "waiting", longest=15)
        self.assertRegex(outlet["text"], "within the keep alive|has taken no message")
        broker.thaw()
        self.assert_reader_has(reader, {1: 77})
        self.assert_no_cycle_was_disturbed(self.bench, "AHU")

    def test_what_nobody_but_a_person_can_change_is_on_the_page_and_in_the_log(self):
        authority = Authority(self.folder)
        wrong = self.file("wrong", "plant\nnot-the-secret\n")
        os.chmod(wrong, 0o600)
        self.simulated = self.device(points_device(1))
        project = self.file("project.lua", points_project(self.simulated.address, 1))
        plain = self.broker(login=("plant", "secret"), name="plain")
        self.assert_state(project, [plain.url, "--mqtt-login", wrong], "the user and the password of --mqtt-login")
        late = self.broker(tls=Tls(authority, *authority.issue("late", days=(-9, -1))), name="late")
        self.assert_state(project, [late.url, "--mqtt-ca", authority.certificate], "the certificate of the broker has expired on")

    def assert_state(self, project, words, text):
        run = self.run_of(project, "--mqtt", *words, "--page", "--mqtt-node", "one")
        outlet = run.wait_for_outlet(lambda outlet: outlet["health"] == "failed")
        self.assertIn(text, outlet["text"])
        run.log.wait_for(f"mqtt: .*{text}")
        run.wait_for_cycles(10)
        self.assert_no_cycle_was_disturbed(run, "AHU")
        self.assertEqual(run.stop(), 0)
        self.assertFalse(any("not-the-secret" in line for line in run.log.all + run.output.all))

    def test_two_runs_of_one_node_say_that_another_program_uses_the_client_id(self):
        broker = self.broker()
        self.start(broker.url)
        self.bench.wait_for_outlet(lambda outlet: outlet["health"] == "good")
        run = self.run_of(os.path.join(self.folder, "project.lua"), "--mqtt", broker.url, "--mqtt-node", "one", "--page")
        deadline = time.monotonic() + 15
        while not any("client id" in line for line in run.log.all + self.bench.log.all):
            self.assertGreater(deadline, time.monotonic(), run.log.all + self.bench.log.all)
            time.sleep(0.1)
        self.assert_no_cycle_was_disturbed(self.bench, "AHU")


class PublishOnTheScreen(ScreenBase, BrokerTestCase):
    def test_the_table_shows_how_the_broker_is(self):
        broker = self.broker()
        self.open(100, 24, "--mqtt", broker.url, "--mqtt-node", "one")
        self.wait_for(f"connected to 127.0.0.1:{broker.port}")
        broker.kill()
        self.wait_for("nobody accepts")
        broker.start()
        self.wait_for(f"connected to 127.0.0.1:{broker.port}")
        self.assertEqual(self.stop(), 0)
