"""What publishing costs the cycles of a large plant, for scripts/bench.

The simulator plays devices of 1,000 analog inputs, each of which has another value at each poll. The workbench polls them
once a second, a block for each device, all in one task, and publishes to a mosquitto on the same machine. Runs without and with
publishing take turns; the rounds of a run, one cycle of every block, are measured after the first ones.
"""

import pathlib
import statistics
import sys
import tempfile

import measure
from plant import Plant, every_one_rises

RECEIVED = "$SYS/broker/messages/received"
UPTIME = "$SYS/broker/uptime"
FIRST_ROUNDS = 3  # in which everything is published for the first time


def received(client):
    """How many packets the broker has got, nearly all of them messages of the run, and at which second of its own.

    It states that about once a second, the number only if it is another one."""
    ticks = len(client.of(UPTIME)) + 2
    client.wait_for(lambda _: len(client.of(UPTIME)) >= ticks)
    return int(client.newest[RECEIVED]["text"]), int(client.newest[UPTIME]["text"].split()[0])


def measure_run(plant, broker, client, rounds, result):
    """One run; with a broker it publishes."""
    kind = "with" if broker else "without"
    plant.run(*Plant.SPARSE, *(["--mqtt", broker.url, "--mqtt-node", "bench"] if broker else []))
    for _ in range(FIRST_ROUNDS):
        plant.round()
    before, begin = received(client)
    result[kind] += [plant.round() for _ in range(rounds)]
    after, end = received(client)
    result[f"{kind}_rate"].append((after - before) / (end - begin))
    result[f"{kind}_memory"] = max(result[f"{kind}_memory"], plant.workbench.memory("VmHWM"))
    plant.end_run()


def mqtt_load(bin_folder, objects, period, turns, rounds):
    sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests/e2e"))
    from broker import Broker, broker_is_missing
    from clients import Client, client_is_missing

    if reason := broker_is_missing() or client_is_missing():
        raise measure.Failure(reason)
    result = {"without": [], "with": [], "without_rate": [], "with_rate": [], "without_memory": 0, "with_memory": 0}
    with tempfile.TemporaryDirectory(prefix="dorvel-bench-") as folder, Broker(folder) as broker, \
            Client(broker.url, RECEIVED, UPTIME) as client:
        plant = Plant(folder, bin_folder, objects, period, every_one_rises, has_clock=True)
        try:
            for turn in range(2 * turns):
                measure_run(plant, broker if turn % 2 else None, client, rounds, result)
        finally:
            plant.end()
    for kind in ("without", "with"):
        result[f"{kind}_median"] = statistics.median(result[kind])
        result[f"{kind}_most"] = max(result[kind])
        result[f"{kind}_rate"] = statistics.median(result[f"{kind}_rate"])
    result["ratio"] = result["with_median"] / result["without_median"]
    if result["with_rate"] < 0.9 * objects * 1000 / max(period, 1000) or result["without_rate"] > objects / 20:
        raise measure.Failure(f"the broker got {result['with_rate']:.0f} messages a second, without publishing "
                              f"{result['without_rate']:.0f}: not what {objects} values a second make")
    return result
