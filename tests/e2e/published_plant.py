"""A plant with values of every type, and what its readers must get: what the simulator has been given, by the standard's types."""

import json
import struct

from programs import block, variable
from publishing import TASK
from test_units import shown

BLOCK = "Lüftung 1/2"
TEXT = "Zuluft °C, 100 % + # / \"\\"


def real(value):
    """The number that a Real of 32 bits holds of it."""
    return struct.unpack(">f", struct.pack(">f", value))[0]


def device_type(object_type):
    """The name of an object type in device files."""
    return object_type.replace("bitstring", "bit-string").replace("octetstring", "octet-string").replace("-", "_")


class Point:
    """A variable: the object in the device file, its fields in the project, and what is read of it."""

    def __init__(self, name, object_type, number, declared, value, given, quality="good", prop="present-value", fields="", **texts):
        self.name, self.object, self.property = name, f"{object_type} {number}", prop
        self.declared, self.value, self.quality, self.texts = declared, value, quality, texts
        self.device_text = given and f"{device_type(object_type)}{{instance = {number}, name = {json.dumps(name, ensure_ascii=False)}, {given}, {fields}}},"
        self.project_text = shown(variable(name, object_type, number, declared, prop), **texts)


POINTS = [
    Point("Supply air/return", "analog-input", 1, "Float", 21.1, 'present_value = 21.1, units = "degrees-celsius"', Unit="degrees-celsius",
          fields=f"description = {json.dumps(TEXT, ensure_ascii=False)}"),
    Point("Text", "analog-input", 1, "String", TEXT, "", prop="description"),
    Point("Units", "analog-input", 1, "UInt32", 62, "", prop="units"),
    Point("Flags", "analog-input", 1, "UInt64", 0, "", prop="status-flags"),
    Point("+ # % ~ Überlauf", "analog-input", 2, "Float", -0.0078125, "present_value = -0.0078125"),
    Point("$Frost", "analog-input", 3, "Float", -50, 'present_value = -50, reliability = "open-loop"', quality="bad"),
    Point("Not a number", "analog-input", 4, "Float", "nan", "present_value = 0/0"),
    Point("Infinite", "analog-input", 5, "Float", "-inf", "present_value = -1/0"),
    Point("Energy", "large-analog-value", 1, "Double", 123456789012.015625, "present_value = 123456789012.015625"),
    Point("Offset", "integer-value", 1, "Int32", -2147483648, "present_value = -2147483648"),
    Point("Counter", "accumulator", 1, "UInt32", 4294967295, "present_value = 4294967295"),
    Point("Fan", "binary-input", 1, "Boolean", True, 'present_value = "active"', StateTexts=["off", "läuft"]),
    Point("Release", "binary-input", 2, "Boolean", False, 'present_value = "inactive"'),
    Point("Mode", "multi-state-input", 1, "UInt32", 2, "present_value = 2, number_of_states = 3",
          StateTexts=["automatic", "manual", "maintenance"]),
    Point("Bits", "bitstring-value", 1, "String", "0010100000000001", 'present_value = "0010100000000001"'),
    Point("Octets", "octetstring-value", 1, "String", "0a14c0ffee", 'present_value = "0A14C0FFEE"'),
    Point("Inspection", "date-value", 1, "DateTime", "2027-04-01T00:00:00.000+00:00", 'present_value = "2027-04-01"'),
    Point("Reset", "datetime-value", 1, "DateTime", "1999-12-31T23:59:58.250+00:00", 'present_value = "1999-12-31 23:59:58.25"'),
]

DEVICE = 'device{ instance = 1, name = "D", objects = {\n' + "\n".join(filter(None, (point.device_text for point in POINTS))) + "\n}}\n"


def project(address):
    return TASK + block(BLOCK, address, [point.project_text for point in POINTS])
