"""Runs the programs of this build: the workbench, the simulator and the scripts."""

import json
import os
import shutil
import subprocess
import tempfile
import unittest

BIN = os.environ.get("DORVEL_BIN", "")
ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
WORKBENCH = os.path.join(BIN, "dorvel-workbench")
SIMULATOR = os.path.join(BIN, "bacnet-simulator")
ADD_IN = os.path.join(BIN, "dorvel_bacnet.so")

# Seconds after which a program counts as hanging; all of them end within a few.
LONGEST = 60


class Server:
    """A program that prints "ready [NAME ]ADDRESS:PORT" and runs until its standard input is closed."""

    def __init__(self, *command, cwd=None):
        self._process = subprocess.Popen(
            command, cwd=cwd, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        line = self._process.stdout.readline().strip()
        if not line.startswith("ready "):
            _, errors = self._process.communicate(timeout=LONGEST)
            raise AssertionError(f"{command[0]} did not start: {line} {errors}")
        self.address = line.split()[-1]
        self.output = ""  # what it printed after that line, once it has ended

    @property
    def port(self):
        return int(self.address.split(":")[1])

    def command(self, line):
        self._process.stdin.write(line + "\n")
        self._process.stdin.flush()

    def stop(self):
        if self._process.stdin.closed:
            return self._process.returncode
        self._process.stdin.close()
        code = self._process.wait(timeout=LONGEST)
        self.output = self._process.stdout.read()
        self._process.stdout.close()
        self._process.stderr.close()
        return code

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.stop()


def simulator(device_file):
    return Server(SIMULATOR, device_file, "--port", "0", "--bind", "127.0.0.1", "--exit-with-stdin")


PLANT_PROJECT = os.path.join(ROOT, "examples", "plant.lua")
PLANT = {"ahu": "air-handling-unit", "chiller": "chiller", "rooms": "room-controllers", "meter": "energy-meter"}


class ExamplePlant:
    """The four devices of the example plant; defines are the workbench's options with their addresses."""

    def __enter__(self):
        self.devices = {}
        try:
            for name, device in PLANT.items():
                self.devices[name] = simulator(os.path.join(ROOT, "examples", "devices", device + ".lua"))
        except BaseException:
            self.__exit__()
            raise
        self.defines = [word for name, device in self.devices.items() for word in ("--define", f"{name}={device.address}")]
        return self

    def __exit__(self, *_):
        for device in self.devices.values():
            device.stop()


class Run:
    """The result of a run of the workbench: exit code, both outputs, and the states that it printed as JSON."""

    def __init__(self, code, output, errors):
        self.code, self.output, self.errors = code, output, errors

    @property
    def states(self):
        return [json.loads(line) for line in self.output.splitlines()]

    def of(self, block):
        """The states of one block, with the variables of each as a dictionary by name."""
        states = [state for state in self.states if state["block"] == block]
        for state in states:
            state["variables"] = {variable["name"]: variable for variable in state["variables"]}
        return states


class EndToEnd(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="dorvel-e2e-")
        self.addCleanup(shutil.rmtree, self.folder)

    def file(self, name, text=None):
        path = os.path.join(self.folder, name)
        if text is not None:
            with open(path, "w", encoding="utf-8") as stream:
                stream.write(text)
        return path

    def device(self, text):
        """Starts a simulated device from the text of its file. It ends with the test."""
        server = simulator(self.file("device%d.lua" % len(os.listdir(self.folder)), text))
        self.addCleanup(server.stop)
        return server

    def workbench(self, project, *options, cycles=1):
        """Runs a project, given as text or as the absolute path of a file, and returns the result."""
        path = project if project.startswith("/") else self.file("project.lua", project)
        process = subprocess.run(
            [WORKBENCH, "run", path, "--cycles", str(cycles), "--format", "json", *options],
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, timeout=LONGEST,
            check=False)
        return Run(process.returncode, process.stdout, process.stderr)

    def assert_good(self, state, name, value=None):
        variable = state["variables"][name]
        self.assertEqual(variable["status"], "0x00000000", variable)
        if value is not None:
            self.assertEqual(variable["value"], value, variable)


def block(name, address, variables, fields=""):
    """The text of a block for a local device. variables are results of variable()."""
    return "BACnet.new{ Name = %s, Address = %s, MAC = %s, %s\n  Vars = {\n    %s\n  } }\n" % (
        json.dumps(name, ensure_ascii=False), json.dumps(address), json.dumps(address), fields, ",\n    ".join(variables))


def variable(name, object_type, number, declared="Float", prop="present-value", data_value=True, write=False):
    kind = f'Type = "DataValue", ElementType = "{declared}"' if data_value else f'Type = "{declared}"'
    return (f'{{ Name = "{name}", {kind}, ObjectType = "{object_type}", ObjectNumber = {number}, '
            f'ObjectProperties = "{prop}"{", Write = true" if write else ""} }}')


TASK = 'Task{ Name = "fast", Period = 20 }\n'
