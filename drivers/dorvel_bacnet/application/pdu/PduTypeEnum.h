#pragma once

// The PDU types that have a class: the top four bits of the first octet of an APDU (ASHRAE 135 clause 20.1).
// A value from the wire may be any number from 0 to 15; other types have no parser.
enum class PduTypeEnum : int {
    ConfirmedRequest = 0,
    SimpleAck = 2,
    ComplexAck = 3,
    Error = 5,
    Reject = 6,
    Abort = 7,
};
