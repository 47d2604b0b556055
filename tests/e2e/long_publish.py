"""A large plant that publishes for a long time while its broker is killed, frozen, cut off and blocked, for scripts/test-long.

DORVEL_PUBLISH_MINUTES, 10 by default; DORVEL_PUBLISH_SEED chooses the faults.
"""

import os
import pathlib
import random
import sys
import tempfile
import time
import unittest

from broker import Broker
from clients import Client
from programs import BIN, ROOT
from proxy import Proxy
from publishing import PublishingRun

sys.path.insert(0, os.path.join(ROOT, "bench"))
from plant import Plant, every_one_rises  # noqa: E402

VARIABLES = int(os.environ.get("DORVEL_PUBLISH_VARIABLES", "10000"))
MINUTES = float(os.environ.get("DORVEL_PUBLISH_MINUTES", "10"))
SEED = int(os.environ.get("DORVEL_PUBLISH_SEED", random.randrange(10**6)))
OLDEST = 4  # seconds: a period, a cycle, the way to the reader
RECOVERY = 70  # seconds from the end of a fault until all is published again: the longest pause between attempts, and a cycle
MOST_GROWTH = 32  # MiB from the first minute to the last


def say(text):
    print(f"publish: {text}", file=sys.stderr, flush=True)


class LongPublish(unittest.TestCase):
    """The simulator's objects count the seconds since its start, so that each value tells how old it is."""

    def setUp(self):
        self.random = random.Random(SEED)
        folder = self.enterContext(tempfile.TemporaryDirectory(prefix="dorvel-long-"))
        self.broker = self.enterContext(Broker(folder))
        self.proxy = self.enterContext(Proxy(self.broker.port))
        self.begin = time.monotonic()
        self.plant = Plant(folder, pathlib.Path(BIN), VARIABLES, 1000, every_one_rises, has_clock=True)
        self.addCleanup(self.plant.end)
        self.bench = self.enterContext(PublishingRun(
            str(self.plant.project), *Plant.SPARSE, "--mqtt", f"mqtt://127.0.0.1:{self.proxy.port}", "--mqtt-node", "long",
            "--mqtt-keep-alive", "10", most_cycles=10**7))
        self.reader = self.enterContext(Client(self.broker.url, "dorvel/long/+/+", keeps_all=False))

    def ages(self):
        """Seconds by which each newest value at the reader is behind the simulator, by topic."""
        now = time.monotonic() - self.begin
        each = VARIABLES // self.plant.devices
        ages = {}
        for device in range(1, self.plant.devices + 1):
            for number in range(1, each + 1):
                topic = f"dorvel/long/D{device}/Point {number}"
                value = self.reader.value(topic)
                ages[topic] = now - (value["value"] - number) if value else now
        return ages

    def assert_all_are_new(self, what):
        deadline = time.monotonic() + RECOVERY
        while (oldest := max(self.ages().values())) > OLDEST:
            self.assertGreater(deadline, time.monotonic(), f"{what}: the oldest of {VARIABLES} values is {oldest:.1f} s old")
            time.sleep(0.5)
        return oldest

    def kill(self, seconds):
        self.broker.kill()
        time.sleep(seconds)
        self.broker.start()

    def freeze(self, seconds):
        self.broker.freeze()
        time.sleep(seconds)
        self.broker.thaw()

    def cut(self, seconds):
        self.proxy.close()
        time.sleep(seconds)
        self.proxy.open()

    def block(self, seconds):
        self.proxy.block()
        time.sleep(seconds)
        self.proxy.unblock()

    def test_no_newest_value_is_lost_whatever_happens_to_the_broker(self):
        end = self.begin + MINUTES * 60
        say(f"{VARIABLES} variables for {MINUTES:g} minutes, seed {SEED}")
        self.assert_all_are_new("the first values")
        time.sleep(10)
        memory, faults, undisturbed = self.bench.memory(), 0, 0
        while time.monotonic() < end:
            time.sleep(self.random.uniform(3, 10))
            undisturbed = max(undisturbed, self.assert_all_are_new("without a fault"))
            fault = self.random.choice([self.kill, self.freeze, self.cut, self.block])
            seconds = self.random.uniform(0.5, 15)
            fault(seconds)
            faults += 1
            oldest = self.assert_all_are_new(f"{fault.__name__} for {seconds:.1f} s")
            say(f"{fault.__name__} for {seconds:.1f} s: all are published again, the oldest is {oldest:.1f} s old; "
                f"{self.bench.memory():.0f} MiB, {self.reader.count} messages")
        grown = self.bench.memory() - memory
        cycles = self.bench.cycles
        self.assertEqual(self.bench.stop(), 0)
        self.assert_the_last_cycle_is_published()
        first = [state for state in cycles if state["block"] == "D1"]
        say(f"{faults} faults, {first[-1]['cycle']} cycles, {first[-1]['overruns']} overruns, "
            f"slowest cycle {max(state['cycle_ms']['maximum'] for state in cycles):.0f} ms, {self.reader.count} messages, "
            f"memory {memory:.0f} MiB and {grown:+.0f} MiB")
        self.assertLess(grown, MOST_GROWTH)
        self.assertGreater(first[-1]["cycle"], 0.95 * (time.monotonic() - self.begin - RECOVERY))
        self.assertEqual([state["error"] for state in cycles if state["fault"]], [])

    def assert_the_last_cycle_is_published(self):
        """The clocks are in the output of the run, and are published like all others."""
        last = {}
        for state in self.bench.cycles:
            last[state["block"]] = next(v["value"] for v in state["variables"] if v["name"] == "Clock")
        for block, clock in last.items():
            self.reader.wait_for_value(f"dorvel/long/{block}/Clock", lambda value, clock=clock: value["value"] == clock)


if __name__ == "__main__":
    unittest.main()
