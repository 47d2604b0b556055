#pragma once

#include <deque>
#include <vector>

#include "Network/Address.h"
#include "Network/ControlInformation.h"

namespace Network {

// A parsed NPDU: its header and the octets after it.
struct Message {
    ControlInformation controlInformation;
    // The APDU, or the content of a network-layer message: `isNetworkMessage` distinguishes them.
    std::vector<char> data;

    // Parses an NPDU. Priority bits and reserved bits are dropped, and the destination is not checked. Throws
    // std::runtime_error "Wrong protocol version" for a first octet other than 1, and ParseException for an
    // NPDU that ends within its header.
    static Message Parse(std::vector<char> npdu);

    // Takes network number, length and MAC from the front of the queue. Throws ParseException if the queue
    // ends first.
    static Address ParseAddress(std::deque<char>& queue);
};

}  // namespace Network
