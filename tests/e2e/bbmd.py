"""A BBMD for foreign devices, as far as a test needs it (clause J.5): registers them, and distributes their broadcasts
to some devices, which stand for those of its subnet."""

import socket
import struct

from bacnet import FakeDevice

RESULT, FORWARDED_NPDU, REGISTER, DISTRIBUTE = 0x00, 0x04, 0x05, 0x09
SUCCESS, REGISTER_NAK, DISTRIBUTE_NAK = 0x0000, 0x0030, 0x0060


def _result(code):
    return struct.pack(">BBHH", 0x81, RESULT, 6, code)


def _address(text):
    host, port = text.split(":")
    return host, int(port)


class Bbmd(FakeDevice):
    """The devices are texts "ADDRESS:PORT". With the result code `registered` it answers a registration; only after
    a good one it distributes."""

    def __init__(self, devices=(), registered=SUCCESS, distributes=True):
        super().__init__(self._answer_bvlc)
        self._devices = [_address(device) for device in devices]
        self._registered, self._distributes = registered, distributes
        self._foreign = set()
        self.time_to_live = None

    def _answer_bvlc(self, datagram):
        sender = self.senders[-1]
        if datagram[1] == REGISTER:
            (self.time_to_live,) = struct.unpack(">H", datagram[4:6])
            if self._registered == SUCCESS:
                self._foreign.add(sender)
            return [_result(self._registered)]
        if datagram[1] == DISTRIBUTE:
            if sender not in self._foreign or not self._distributes:
                return [_result(DISTRIBUTE_NAK)]
            npdu = datagram[4:]
            origin = socket.inet_aton(sender[0]) + struct.pack(">H", sender[1])
            forwarded = struct.pack(">BBH", 0x81, FORWARDED_NPDU, 10 + len(npdu)) + origin + npdu
            return [(forwarded, device) for device in self._devices]
        return []
