"""Faults that the simulator is given while a block polls it."""

import json
import os
import re
import subprocess
import threading
from queue import Queue

from programs import LONGEST, ROOT, SIMULATOR, TASK, WORKBENCH, EndToEnd, block, variable

DEVICE = """device{name = "Room 1", instance = 1, objects = {analog_input{instance = 1, present_value = 21.5}}}"""
BAD = "0x80000000"


def lines_of(stream):
    """A queue that receives the lines of a stream, and None at its end."""
    lines = Queue()

    def read():
        for line in stream:
            lines.put(line.rstrip("\n"))
        lines.put(None)

    threading.Thread(target=read, daemon=True).start()
    return lines


class Program:
    """A program with its three streams, which ends with the test."""

    def __init__(self, test, *command):
        self.process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        test.addCleanup(self.stop)
        self.output = lines_of(self.process.stdout)
        self.errors = lines_of(self.process.stderr)

    def command(self, line):
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()

    def answer(self):
        return self.output.get(timeout=LONGEST)

    def complaint(self):
        return self.errors.get(timeout=LONGEST)

    def stop(self, kill=True):
        if self.process.poll() is None and kill:
            self.process.kill()
        if not self.process.stdin.closed:
            self.process.stdin.close()
        return self.process.wait(timeout=LONGEST)


class SimulatorFaults(EndToEnd):
    def start_device(self, text=DEVICE, *options):
        simulator = Program(self, SIMULATOR, self.file("device.lua", text), "--port", "0", *options)
        simulator.address = simulator.answer().split()[-1]
        self.assertTrue(simulator.address.startswith("127.0.0.1:"), "it listens on loopback by default")
        return simulator

    def start_block(self, address):
        rows = [variable("value", "analog-input", 1)]
        project = self.file("project.lua", TASK + block("room", address, rows, "CountRepeat = 1,"))
        return Program(self, WORKBENCH, "run", project, "--format", "json")

    def wait_for(self, workbench, fault):
        """Reads states until the block has a fault, or has none, as given. Returns that state."""
        while True:
            line = workbench.answer()
            self.assertIsNotNone(line, "the workbench has ended")
            state = json.loads(line)
            if state["fault"] == fault:
                return state

    def test_a_fault_by_command_reaches_the_block_and_clear_ends_it(self):
        simulator = self.start_device()
        workbench = self.start_block(simulator.address)
        self.assertEqual(self.wait_for(workbench, False)["variables"][0]["value"], 21.5)
        for fault in ("silence", "error code=30", "truncate octet=9", "bvlc_type code=0", "headers_only"):
            with self.subTest(fault=fault):
                simulator.command(f'fault "Room 1" {fault}')
                self.assertEqual(simulator.answer(), "Room 1: " + fault)
                state = self.wait_for(workbench, True)
                self.assertEqual(state["error"], "No connection")
                self.assertEqual(state["variables"][0]["status"], BAD)
                simulator.command('clear "Room 1"')
                self.assertEqual(simulator.answer(), "Room 1: no faults")
                state = self.wait_for(workbench, False)
                self.assertEqual(state["variables"][0]["status"], "0x00000000")
                self.assertEqual(state["variables"][0]["value"], 21.5)

    def test_a_fault_with_a_duration_ends_by_itself(self):
        simulator = self.start_device(DEVICE.replace("objects", 'faults = {fault{"silence", duration = 1.5}}, objects'))
        workbench = self.start_block(simulator.address)
        self.wait_for(workbench, True)
        self.assertEqual(self.wait_for(workbench, False)["variables"][0]["value"], 21.5)
        simulator.command("faults")
        self.assertEqual(simulator.answer(), "Room 1: no faults")

    def test_mistakes_are_reported_on_standard_error_and_the_device_runs_on(self):
        simulator = self.start_device()
        simulator.command('fault "Room 1" silense')
        self.assertEqual(simulator.complaint(), 'fault: unknown fault "silense" (did you mean "silence"?)')
        simulator.command("x" * 100000)
        self.assertEqual(simulator.complaint(), "the line is longer than 1000 octets")
        simulator.command("faults")
        self.assertEqual(simulator.answer(), "Room 1: no faults")

    def test_output_that_nobody_reads_does_not_block_the_simulator(self):
        simulator = self.start_device()
        for _ in range(2000):
            simulator.process.stdin.write("help\n")
        simulator.process.stdin.flush()
        self.wait_for(self.start_block(simulator.address), False)

    def test_the_end_of_standard_input_ends_the_simulator_only_with_the_option(self):
        self.assertEqual(self.start_device(DEVICE, "--exit-with-stdin").stop(kill=False), 0)
        simulator = self.start_device(DEVICE, "--duration", "5")
        simulator.process.stdin.close()
        self.wait_for(self.start_block(simulator.address), False)
        self.assertIsNone(simulator.process.poll())

    def test_a_mistake_in_the_file_ends_the_simulator_with_one_line(self):
        path = self.file("device.lua", DEVICE.replace("objects", '\nfaults = {fault{"truncate", octets = 9}}, objects'))
        process = subprocess.run([SIMULATOR, path], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                 stderr=subprocess.PIPE, text=True, timeout=LONGEST, check=False)
        self.assertEqual((process.returncode, process.stdout), (2, ""))
        self.assertEqual(process.stderr, f'bacnet-simulator: {path}:2: device Room 1: faults: truncate: has no field '
                                         '"octets" (did you mean "octet"?)\n')

    def test_every_fault_and_its_fields_are_documented(self):
        with open(os.path.join(ROOT, "docs", "simulator.md"), encoding="utf-8") as stream:
            part = stream.read().split("## Faults")[1]
        rows = {name: re.findall("`([a-z_]+)`", fields)
                for name, fields in re.findall(r"^\| `([a-z_]+)` \| [^|]* \|([^|]*)\|$", part, re.MULTILINE)}
        simulator = self.start_device()
        simulator.command("help\nfaults")
        listed = {}
        for line in iter(simulator.answer, "Room 1: no faults"):
            if match := re.match(r"  ([a-z_]+) +[^(]*(?:\((.*)\))?$", line):
                listed[match[1]] = match[2].split(", ") if match[2] else []
        self.assertEqual(len(listed), 29)
        self.assertEqual(rows, listed)
