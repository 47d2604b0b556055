#pragma once

#include <deque>
#include <vector>

#include "Network/Address.h"
#include "Network/ControlInformation.h"

namespace Network {

// A parsed NPDU: its header and all that follows.
struct Message {
    ControlInformation controlInformation;
    // The APDU, or the content of a network-layer message: the two are not told apart here.
    std::vector<char> data;

    // Parses an NPDU. The priority bits are dropped, reserved bits are ignored, and the destination is
    // compared with nothing. Throws std::runtime_error "Wrong protocol version" for a first octet other than
    // 1, and ParseException for an NPDU that ends before its header does.
    static Message Parse(std::vector<char> npdu);

    // Takes network number, length and MAC from the front of the queue; ParseException if it runs out.
    static Address ParseAddress(std::deque<char>& queue);
};

}  // namespace Network
