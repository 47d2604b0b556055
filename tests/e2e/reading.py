"""Reads devices with the client by the standard, through the program read-device."""

import os
import subprocess

from programs import BIN, LONGEST

# The numbers of object types and the kind of their Present_Value; None: they have none.
TYPES = {
    "analog-input": (0, "real"), "analog-output": (1, "real"), "analog-value": (2, "real"),
    "binary-input": (3, "enumerated"), "binary-output": (4, "enumerated"), "binary-value": (5, "enumerated"),
    "device": (8, None), "loop": (12, "real"), "multi-state-input": (13, "unsigned"),
    "multi-state-output": (14, "unsigned"), "schedule": (17, ""), "averaging": (18, None),
    "multi-state-value": (19, "unsigned"), "accumulator": (23, "unsigned"), "pulse-converter": (24, "real"),
    "bitstring-value": (39, "bits"), "date-value": (42, "date"), "datetime-value": (44, "date time"),
    "integer-value": (45, "signed"), "large-analog-value": (46, "double"), "octetstring-value": (47, "octets"),
    "positive-integer-value": (48, "unsigned"), "time-value": (50, "time"), "lighting-output": (54, "real"),
}


def read_device(address, *words):
    """The lines of read-device as lists of their fields, and its last line."""
    process = subprocess.run(
        [os.path.join(BIN, "read-device"), address, *words], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
        stderr=subprocess.PIPE, text=True, timeout=LONGEST, check=False)
    if process.returncode != 0:
        raise AssertionError(process.stderr)
    *lines, last = process.stdout.splitlines()
    return [line.split("\t") for line in lines], last
