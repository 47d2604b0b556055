"""What readers of the page cost the cycles of a large plant, for scripts/bench.

The simulator plays devices of 1,000 analog inputs, of which each tenth moves. The workbench polls them, a block for each
device, all in one task. Rounds, one cycle of every block, are measured by turns without and with readers of the event
stream, in one run of the workbench.
"""

import datetime
import http.client
import json
import pathlib
import queue
import re
import statistics
import subprocess
import sys
import tempfile
import threading

import measure

READERS = pathlib.Path(__file__).with_name("page_readers.py")
LONGEST = 60  # seconds for a round, a connection, the end of a program
OBJECTS_OF_A_DEVICE = 1000


def device_text(number, objects):
    inputs = "".join(
        f"analog_input{{instance = {i}, name = 'Point {i}', present_value = "
        + (f"ramp{{from = 0, to = 100, period = {20 + i % 40}}}" if i % 10 == 0 else str(i)) + "},\n"
        for i in range(1, objects + 1))
    return f"device{{name = 'D{number}', instance = {number}, objects = {{\n{inputs}}}}}\n"


def block_text(name, address, objects):
    variables = "".join(
        f"{{Name = 'Point {i}', Type = 'DataValue', ElementType = 'Float', ObjectType = 'analog-input', ObjectNumber = {i}, "
        "ObjectProperties = 'present-value'},\n" for i in range(1, objects + 1))
    return f"BACnet.new{{Name = '{name}', Address = '{address}', MAC = '{address}', Vars = {{\n{variables}}}}}\n"


class Program:
    """A program that ends when its standard input is closed, and the lines that it prints."""

    def __init__(self, *command, errors=subprocess.DEVNULL):
        self.process = subprocess.Popen([str(word) for word in command], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=errors, text=True)
        self.lines = self._lines_of(self.process.stdout)
        self.errors = self._lines_of(self.process.stderr) if errors == subprocess.PIPE else None

    @staticmethod
    def _lines_of(stream):
        lines = queue.Queue()

        def read():
            for line in stream:
                lines.put(line.rstrip("\n"))
            lines.put(None)
        threading.Thread(target=read, daemon=True).start()
        return lines

    def line(self, lines=None):
        try:
            line = (lines or self.lines).get(timeout=LONGEST)
        except queue.Empty:
            raise measure.Failure(f"{self.process.args[0]} has printed nothing for {LONGEST} s") from None
        if line is None:
            raise measure.Failure(f"{self.process.args[0]} has ended")
        return line

    def memory(self, what):
        """VmRSS or VmHWM in MiB."""
        status = pathlib.Path(f"/proc/{self.process.pid}/status").read_text()
        return int(re.search(rf"{what}:\s+(\d+) kB", status).group(1)) / 1024

    def end(self):
        self.process.stdin.close()
        try:
            self.process.wait(timeout=LONGEST)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()


class Plant:
    """The workbench with its simulated devices."""

    def __init__(self, folder, bin_folder, objects, period):
        self.devices = max(1, objects // OBJECTS_OF_A_DEVICE)
        each = objects // self.devices
        device_file = pathlib.Path(folder, "plant.lua")
        device_file.write_text("".join(device_text(number, each) for number in range(1, self.devices + 1)))
        self.simulator = Program(bin_folder / "bacnet-simulator", device_file, "--port", 0, "--exit-with-stdin")
        self.workbench = None
        addresses = [self.simulator.line().split()[-1] for _ in range(self.devices)]
        project = pathlib.Path(folder, "project.lua")
        project.write_text(f"Task{{Name = 'all', Period = {period}}}\n" + "".join(
            block_text(f"D{number}", address, each) for number, address in enumerate(addresses, 1)))
        self.workbench = Program(bin_folder / "dorvel-workbench", "run", project, "--format", "json", "--changes-only",
                                 "--no-summary", "--page", errors=subprocess.PIPE)
        self.port, self.cookie = self._enter()

    def _enter(self):
        """Opens the link and returns the port and the cookie."""
        link = None
        while not link:
            link = re.search(r"http://127\.0\.0\.1:(\d+)(/\?token=\S+)", self.workbench.line(self.workbench.errors))
        connection = http.client.HTTPConnection("127.0.0.1", int(link[1]), timeout=LONGEST)
        connection.request("GET", link[2])
        cookie = connection.getresponse().getheader("Set-Cookie")
        connection.close()
        if not cookie:
            raise measure.Failure("the page gives no cookie for its link")
        return int(link[1]), cookie.split(";")[0]

    def round(self):
        """The next round: milliseconds from the begin of the first block's cycle to the end of the last one's."""
        begin = None
        for number in range(1, self.devices + 1):
            block = json.loads(self.workbench.line())
            while block["block"] != f"D{number}":
                if number > 1:
                    raise measure.Failure(f"the cycle of {block['block']} came in place of that of D{number}")
                block = json.loads(self.workbench.line())
            if block["fault"]:
                raise measure.Failure(f"{block['block']} is in fault: {block['error']}")
            end = datetime.datetime.fromisoformat(block["time"])
            if begin is None:
                begin = end - datetime.timedelta(milliseconds=block["cycle_ms"]["last"])
        return (end - begin) / datetime.timedelta(milliseconds=1)

    def end(self):
        if self.workbench:
            self.workbench.process.terminate()
            self.workbench.end()
        self.simulator.end()


def measure_rounds(plant, turns, rounds, readers):
    """Rounds by turns without and with readers, and what the readers got."""
    result = {"without": [], "with": [], "octets": 0, "events": 0, "lost": 0, "ended": 0}
    for _ in range(turns):
        result["without"] += [plant.round() for _ in range(rounds)]
        result.setdefault("memory_before", plant.workbench.memory("VmRSS"))
        clients = Program(sys.executable, READERS, plant.port, plant.cookie, readers)
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
        plant = Plant(folder, bin_folder, objects, period)
        try:
            for _ in range(2):
                plant.round()
            result = measure_rounds(plant, turns, rounds, readers)
        finally:
            plant.end()
    for kind in ("without", "with"):
        result[f"{kind}_median"] = statistics.median(result[kind])
        result[f"{kind}_most"] = max(result[kind])
    result["ratio"] = result["with_median"] / result["without_median"]
    return result
