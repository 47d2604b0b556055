"""Reads a capture with tshark: for each frame a dictionary of its fields."""

import json
import os
import shutil
import subprocess

FIELDS = [
    "frame.number", "udp.srcport", "udp.dstport", "bvlc.function", "bacnet.version", "bacnet.control", "bacnet.dnet",
    "bacnet.dlen", "bacnet.dadr_mstp", "bacnet.dadr_eth", "bacnet.dadr_tmp", "bacnet.snet", "bacnet.hopc", "bacapp.type",
    "bacapp.invoke_id", "bacapp.confirmed_service", "bacapp.objectType", "bacapp.instance_number",
    "bacapp.property_identifier", "bacapp.segmented_request", "bacapp.more_segments", "bacapp.SA",
    "bacapp.response_segments", "bacapp.max_adpu_size", "bacapp.sequence_number", "bacapp.window_size", "bacapp.NAK",
    "bacapp.SRV", "bacapp.present_value.real", "_ws.malformed", "_ws.expert.message"]

# tshark 4.0 prints 1 and 0 for these, tshark 4.4 True and False.
BOOLEAN_FIELDS = {"bacapp.segmented_request", "bacapp.more_segments", "bacapp.SA", "bacapp.NAK", "bacapp.SRV"}
BOOLEANS = {"0": "0", "1": "1", "False": "0", "True": "1"}

READ_REQUEST, SEGMENT_ACK, COMPLEX_ACK = "0", "4", "3"


def tshark_is_missing():
    return "" if shutil.which("tshark") else "tshark is missing"


def tshark(capture, ports, *options):
    command = ["tshark", "-r", capture]
    for port in sorted(ports):
        command += ["-d", f"udp.port=={port},bvlc"]
    # An empty home folder, so that no user's settings apply.
    environment = dict(os.environ, HOME=os.path.dirname(capture), XDG_CONFIG_HOME=os.path.dirname(capture))
    return subprocess.run(command + list(options), stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
                          check=True, env=environment).stdout


def frames(capture, ports):
    """The frames, each a dictionary from field to the list of its values, without the fields that a frame lacks.
    A boolean is "1" or "0", however this version of tshark prints it."""
    options = [word for field in FIELDS for word in ("-e", field)]
    dissected = json.loads(tshark(capture, ports, "-T", "json", *options))
    layers = [frame["_source"]["layers"] for frame in dissected]
    for frame in layers:
        for field in BOOLEAN_FIELDS & frame.keys():
            frame[field] = [BOOLEANS[value] for value in frame[field]]
    return layers


def only(frame, field):
    """The value of a field that has exactly one."""
    values = frame.get(field, [])
    assert len(values) == 1, (field, frame)
    return values[0]


def requests_to(captured, port):
    """The frames that were sent to a device, in order."""
    return [frame for frame in captured if only(frame, "udp.dstport") == str(port)]
