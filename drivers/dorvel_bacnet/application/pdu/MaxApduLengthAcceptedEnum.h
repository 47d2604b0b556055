#pragma once

// The max-APDU-length-accepted field of a confirmed request (ASHRAE 135 clause 20.1.2.5): four bits, of which
// 6 to 15 are reserved. Each name has the length in octets.
enum class MaxApduLengthAcceptedEnum : int {
    Octets50 = 0,
    Octets128 = 1,
    Octets206 = 2,
    Octets480 = 3,
    Octets1024 = 4,
    Octets1476 = 5,
};
