#pragma once

// The PDU types that have a class: the top four bits of an APDU's first octet (ASHRAE 135 clause 20.1).
// An octet off the wire can hold any other value from 0 to 15; such an APDU has no parser.
enum class PduTypeEnum : int {
    ConfirmedRequest = 0,
    SimpleAck = 2,
    ComplexAck = 3,
    Error = 5,
    Reject = 6,
    Abort = 7,
};
