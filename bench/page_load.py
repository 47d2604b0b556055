"""What readers of the page cost the cycles of a large plant, for scripts/bench.

The simulator plays devices of 1,000 analog inputs, of which each tenth moves. The workbench polls them, a block for each
device, all in one task. Rounds, one cycle of every block, are measured by turns without and with readers of the event
stream, in one run of the workbench.
"""

import http.client
import json
import pathlib
import re
import statistics
import sys
import tempfile

import measure
from plant import LONGEST, Plant, Program, tenth_moves

READERS = pathlib.Path(__file__).with_name("page_readers.py")


def enter_page(workbench):
    """Opens the link that a run prints, and returns the port and the cookie."""
    link = None
    while not link:
        link = re.search(r"http://127\.0\.0\.1:(\d+)(/\?token=\S+)", workbench.line(workbench.errors))
    connection = http.client.HTTPConnection("127.0.0.1", int(link[1]), timeout=LONGEST)
    connection.request("GET", link[2])
    cookie = connection.getresponse().getheader("Set-Cookie")
    connection.close()
    if not cookie:
        raise measure.Failure("the page gives no cookie for its link")
    return link[1], cookie.split(";")[0]


def measure_rounds(plant, entrance, turns, rounds, readers):
    """Rounds by turns without and with readers, and what the readers got."""
    result = {"without": [], "with": [], "octets": 0, "events": 0, "lost": 0, "ended": 0}
    for _ in range(turns):
        result["without"] += [plant.round() for _ in range(rounds)]
        result.setdefault("memory_before", plant.workbench.memory("VmRSS"))
        clients = Program(sys.executable, READERS, *entrance, readers)
        try:
            if clients.line() != "reading":
                raise measure.Failure("the readers got nothing")
            result["with"] += [plant.round() for _ in range(rounds)]
            clients.process.stdin.close()
            for key, count in json.loads(clients.line()).items():
                result[key] += count
        finally:
            clients.process.kill()
            clients.process.wait()
    result["memory_most"] = plant.workbench.memory("VmHWM")
    return result


def page_load(bin_folder, objects, period, turns, rounds, readers):
    with tempfile.TemporaryDirectory(prefix="dorvel-bench-") as folder:
        plant = Plant(folder, bin_folder, objects, period, tenth_moves)
        try:
            plant.run("--changes-only", "--page")
            entrance = enter_page(plant.workbench)
            for _ in range(2):
                plant.round()
            result = measure_rounds(plant, entrance, turns, rounds, readers)
        finally:
            plant.end()
    for kind in ("without", "with"):
        result[f"{kind}_median"] = statistics.median(result[kind])
        result[f"{kind}_most"] = max(result[kind])
    result["ratio"] = result["with_median"] / result["without_median"]
    return result
