"""The part of BACnet/IP that a fake device needs, by ASHRAE 135 and independent of the driver."""

import socket
import struct
import threading


class Request:
    """A received confirmed request: the datagram and its APDU, with or without a destination in the NPDU."""

    def __init__(self, datagram):
        self.datagram = datagram
        control = datagram[5]
        begin = 6
        if control & 0x20:
            begin += 3 + datagram[begin + 2] + 1
        self.apdu = datagram[begin:]
        self.invoke_id = self.apdu[2]


def frame(apdu, npdu=b"\x01\x00", function=0x0A):
    """An APDU as a datagram."""
    return struct.pack(">BBH", 0x81, function, 4 + len(npdu) + len(apdu)) + npdu + apdu


def real_answer(request, value):
    """The answer to a request for Present_Value and Status_Flags of one object: a Real, and no flag set."""
    object_id = request.apdu[5:9]
    return frame(
        bytes([0x30, request.invoke_id, 14, 0x0C]) + object_id
        + b"\x1e\x29\x55\x4e\x44" + struct.pack(">f", value) + b"\x4f\x29\x6f\x4e\x82\x04\x00\x4f\x1f")


class FakeDevice:
    """A UDP socket on a free port of 127.0.0.1. The function answer returns the datagrams to send for each one received.

    They are sent to the sender of the request; a pair of a datagram and an address is sent to that address."""

    def __init__(self, answer=lambda datagram: []):
        self._answer = answer
        self._socket = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self._socket.bind(("127.0.0.1", 0))
        self._socket.settimeout(0.1)
        self._stop = threading.Event()
        self._thread = threading.Thread(target=self._serve, daemon=True)
        self.received = []
        self.senders = []
        self.failure = None

    @property
    def address(self):
        return "127.0.0.1:%d" % self._socket.getsockname()[1]

    def _serve(self):
        while not self._stop.is_set():
            try:
                datagram, sender = self._socket.recvfrom(2048)
                self.received.append(datagram)
                self.senders.append(sender)
                for reply in self._answer(datagram):
                    self._socket.sendto(*(reply if isinstance(reply, tuple) else (reply, sender)))
            except socket.timeout:
                continue
            except Exception as failure:  # a mistake in the test, raised again at its end
                self.failure = failure
                return

    def __enter__(self):
        self._thread.start()
        return self

    def __exit__(self, *_):
        self._stop.set()
        self._thread.join()
        self._socket.close()
        if self.failure:
            raise self.failure


# The octets of object types in an object identifier, of those that tests write.
ANALOG_VALUE = 2


def write_real(address, instance, value, object_type=ANALOG_VALUE, client=None):
    """Writes Present_Value of an object of a device, as another client does. `client` is a UDP socket for many writes."""
    host, port = address.split(":")
    object_id = struct.pack(">I", object_type << 22 | instance)
    request = frame(b"\x00\x05\x01\x0f\x0c" + object_id + b"\x19\x55\x3e\x44" + struct.pack(">f", value) + b"\x3f",
                    npdu=b"\x01\x04")
    own = None if client else socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
    try:
        (client or own).settimeout(5)
        (client or own).sendto(request, (host, int(port)))
        answer, _ = (client or own).recvfrom(2048)
    finally:
        if own:
            own.close()
    if answer[6] & 0xF0 != 0x20:
        raise AssertionError(f"the device refuses {value} for object {object_type}, {instance}: {answer.hex()}")
