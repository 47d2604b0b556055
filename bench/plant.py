"""A large plant, its simulator and the workbench, for the measurements of scripts/bench."""

import datetime
import json
import pathlib
import queue
import re
import subprocess
import threading

import measure

LONGEST = 60  # seconds for a round, a connection, the end of a program
OBJECTS_OF_A_DEVICE = 1000


def tenth_moves(i):
    return f"ramp{{from = 0, to = 100, period = {20 + i % 40}}}" if i % 10 == 0 else str(i)


def every_one_rises(i):
    """Seconds from the start of the simulator, with fractions: another value at each poll. `i` makes them different."""
    return f"ramp{{from = {i}, to = {i + 86400}, period = 86400}}"


def device_text(number, objects, value_of, has_clock):
    inputs = "".join(f"analog_input{{instance = {i}, name = 'Point {i}', present_value = {value_of(i)}}},\n"
                     for i in range(1, objects + 1))
    clock = "datetime_value{instance = 1, name = 'Clock', present_value = clock()},\n" if has_clock else ""
    return f"device{{name = 'D{number}', instance = {number}, objects = {{\n{clock}{inputs}}}}}\n"


def block_text(name, address, objects, has_clock):
    clock = ("{Name = 'Clock', Type = 'DataValue', ElementType = 'DateTime', ObjectType = 'datetime-value', ObjectNumber = 1, "
             "ObjectProperties = 'present-value'},\n" if has_clock else "")
    variables = "".join(
        f"{{Name = 'Point {i}', Type = 'DataValue', ElementType = 'Float', ObjectType = 'analog-input', ObjectNumber = {i}, "
        "ObjectProperties = 'present-value'},\n" for i in range(1, objects + 1))
    return f"BACnet.new{{Name = '{name}', Address = '{address}', MAC = '{address}', Vars = {{\n{clock}{variables}}}}}\n"


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
    """Simulated devices of 1,000 analog inputs, whose values value_of() writes, and runs of the workbench with them.

    A clock, one more object of each device, changes with each cycle: with SPARSE the output has each cycle and little else.
    """

    SPARSE = ("--dead-band", "1e9")

    def __init__(self, folder, bin_folder, objects, period, value_of, has_clock=False):
        self.devices = max(1, objects // OBJECTS_OF_A_DEVICE)
        each = objects // self.devices
        device_file = pathlib.Path(folder, "plant.lua")
        device_file.write_text("".join(device_text(number, each, value_of, has_clock) for number in range(1, self.devices + 1)))
        self.bin_folder, self.workbench = bin_folder, None
        self.simulator = Program(bin_folder / "bacnet-simulator", device_file, "--port", 0, "--exit-with-stdin")
        addresses = [self.simulator.line().split()[-1] for _ in range(self.devices)]
        self.project = pathlib.Path(folder, "project.lua")
        self.project.write_text(f"Task{{Name = 'all', Period = {period}}}\n" + "".join(
            block_text(f"D{number}", address, each, has_clock) for number, address in enumerate(addresses, 1)))

    def run(self, *options):
        """Starts the workbench, which prints its cycles as JSON."""
        self.workbench = Program(self.bin_folder / "dorvel-workbench", "run", self.project, "--format", "json", "--no-summary",
                                 *options, errors=subprocess.PIPE)

    def _next_block(self):
        while "block" not in (state := json.loads(self.workbench.line())):
            pass  # the state of an outlet
        return state

    def blocks(self):
        """The next round: the state of each block, in their order."""
        states = []
        for number in range(1, self.devices + 1):
            block = self._next_block()
            while block["block"] != f"D{number}":
                if number > 1:
                    raise measure.Failure(f"the cycle of {block['block']} came in place of that of D{number}")
                block = self._next_block()
            if block["fault"]:
                raise measure.Failure(f"{block['block']} is in fault: {block['error']}")
            states.append(block)
        return states

    def round(self):
        """The next round: milliseconds from the begin of the first block's cycle to the end of the last one's."""
        states = self.blocks()
        begin, end = (datetime.datetime.fromisoformat(state["time"]) for state in (states[0], states[-1]))
        return (end - begin) / datetime.timedelta(milliseconds=1) + states[0]["cycle_ms"]["last"]

    def end_run(self):
        if self.workbench:
            self.workbench.process.terminate()
            self.workbench.end()
            self.workbench = None

    def end(self):
        self.end_run()
        self.simulator.end()
