#include "Frame.h"

#include <cstddef>
#include <cstdio>
#include <iterator>

#include "HexText.h"

namespace workbench {

using standard::Octets;
using standard::OctetValue;

namespace {

constexpr std::size_t HeaderLength = 4;
constexpr unsigned BacnetIp = 0x81;
constexpr unsigned OriginalUnicast = 0x0A;
constexpr unsigned OriginalBroadcast = 0x0B;

// Annex J.2, by function.
constexpr char const* Functions[] = {"BVLC-Result",
                                     "Write-Broadcast-Distribution-Table",
                                     "Read-Broadcast-Distribution-Table",
                                     "Read-Broadcast-Distribution-Table-Ack",
                                     "Forwarded-NPDU",
                                     "Register-Foreign-Device",
                                     "Read-Foreign-Device-Table",
                                     "Read-Foreign-Device-Table-Ack",
                                     "Delete-Foreign-Device-Table-Entry",
                                     "Distribute-Broadcast-To-Network"};

// Clause 6.2.4, by type.
constexpr char const* Messages[] = {"Who-Is-Router-To-Network",        "I-Am-Router-To-Network",
                                    "I-Could-Be-Router-To-Network",    "Reject-Message-To-Network",
                                    "Router-Busy-To-Network",          "Router-Available-To-Network",
                                    "Initialize-Routing-Table",        "Initialize-Routing-Table-Ack",
                                    "Establish-Connection-To-Network", "Disconnect-Connection-To-Network"};

std::string Hex(unsigned octet) {
    char text[8];
    std::snprintf(text, sizeof text, "0x%02X", octet & 0xFF);
    return text;
}

}  // namespace

Octets NpduOf(Octets const& datagram) {
    return datagram.size() < HeaderLength ? Octets()
                                          : Octets(datagram.begin() + HeaderLength, datagram.end());
}

std::string FrameMistake(Octets const& datagram) {
    if (datagram.size() < HeaderLength) {
        return "it has only " + std::to_string(datagram.size()) + " octets";
    }
    if (OctetValue(datagram[0]) != BacnetIp) {
        return "its BVLC type is " + Hex(OctetValue(datagram[0])) + ", not 0x81";
    }
    unsigned const function = OctetValue(datagram[1]);
    if (function != OriginalUnicast && function != OriginalBroadcast) {
        return "its BVLC function is " + Hex(function) +
               (function < std::size(Functions) ? std::string(" (") + Functions[function] + ")" : "");
    }
    std::size_t const length = OctetValue(datagram[2]) << 8 | OctetValue(datagram[3]);
    return length == datagram.size() ? std::string()
                                     : "its BVLC length is " + std::to_string(length) + ", but it has " +
                                           std::to_string(datagram.size()) + " octets";
}

std::string NetworkMessageText(standard::Npdu const& npdu) {
    unsigned const type = npdu.content.empty() ? 0xFF : OctetValue(npdu.content.front());
    return type < std::size(Messages) ? Messages[type] : "type " + Hex(type);
}

std::string StationText(std::string const& endpoint, std::optional<standard::NetworkAddress> const& source) {
    if (!source) {
        return endpoint;
    }
    return endpoint + ", network " + std::to_string(source->network) +
           (source->mac.empty() ? ", any station"
                                : ", station " + tools::HexText(source->mac, tools::HexDigits::Upper));
}

}  // namespace workbench
