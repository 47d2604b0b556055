"""Runs the commands of the workbench that ask a network."""

import json
import os
import subprocess

from programs import LONGEST, SIMULATOR, WORKBENCH, EndToEnd

READ_PROPERTY, READ_PROPERTY_MULTIPLE, WRITE_PROPERTY = 12, 14, 15


class Result:
    def __init__(self, code, output, errors):
        self.code, self.output, self.errors = code, output, errors

    @property
    def rows(self):
        """The lines of a pipe as dictionaries by the heading."""
        lines = [line.split("\t") for line in self.output.splitlines()]
        return [dict(zip(lines[0], line)) for line in lines[1:]]

    @property
    def objects(self):
        return [json.loads(line) for line in self.output.splitlines()]


def run(*words):
    process = subprocess.run([WORKBENCH, *words], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                             stderr=subprocess.PIPE, timeout=LONGEST, check=False)
    return Result(process.returncode, process.stdout.decode("utf-8"), process.stderr.decode("utf-8"))


class LoggedDevice:
    """A simulated device that logs its requests."""

    def __init__(self, path):
        with open(path + ".log", "wb") as log:
            self._process = subprocess.Popen(
                [SIMULATOR, path, "--port", "0", "--exit-with-stdin", "--verbose"], stdin=subprocess.PIPE,
                stdout=subprocess.PIPE, stderr=log, text=True)
        self.address = self._process.stdout.readline().split()[-1]
        self._log = path + ".log"

    def services(self):
        """Ends the device. The numbers of the confirmed services that it was asked for."""
        self._process.communicate(timeout=LONGEST)
        with open(self._log, encoding="utf-8") as log:
            received = [bytes.fromhex(line.split()[-1]) for line in log if " < " in line]
        return [octets[9] for octets in received if octets[5] & 0x80 == 0 and octets[6] & 0xF0 == 0]


class Exploring(EndToEnd):
    def logged_device(self, text):
        return LoggedDevice(self.file("logged%d.lua" % len(os.listdir(self.folder)), text))


AHU = """device{ name = "AHU-1", instance = 1001, vendor_name = "Example", model_name = "X1", objects = {
    analog_input{instance = 1, name = "Supply air", present_value = 21.5, units = "degrees-celsius",
                 description = "North side"},
    analog_output{instance = 1, name = "Valve", present_value = 40, units = "percent", relinquish_default = 5},
    multi_state_value{instance = 1, name = "Mode", present_value = 2, number_of_states = 3,
                      state_text = {"off", "automatic", "hand"}},
    schedule{instance = 1, name = "Programme", schedule_default = real(18),
             weekly_schedule = {monday = {{"08:00", real(21.5)}, {"17:30", null()}}}},
    averaging{instance = 1, name = "Mean"},
} }
"""
