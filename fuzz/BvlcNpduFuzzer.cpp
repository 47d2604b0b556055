// A datagram as the driver reads it: the BVLC header, then the NPDU.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>

#include "Network/Message.h"
#include "Octets.h"
#include "Require.h"
#include "VirtualDataLink/Framing.h"

using fuzz::Require;

namespace {

std::size_t Octet(Octets const& octets, std::size_t index) {
    return OctetValue(octets.at(index));
}

// Checks the result of Unframe against ASHRAE 135 Annex J.2.
void RequireUnframed(Octets const& datagram, Octets const& npdu) {
    Require(Octet(datagram, 0) == 0x81, "a frame is of type 81");
    Require(Octet(datagram, 1) == 0x0A || Octet(datagram, 1) == 0x0B, "a frame carries an NPDU");
    Require(Octet(datagram, 2) * 256 + Octet(datagram, 3) == datagram.size(), "a frame's length is its size");
    Require(Octets(datagram.begin() + 4, datagram.end()) == npdu, "the NPDU is what follows the header");
}

// Checks what Frame writes for an NPDU that came. The high octet of the length is compared separately: the
// driver writes it in another form than it reads it.
void RequireFramedAgain(Octets const& datagram, Octets const& npdu) {
    bool const broadcast = Octet(datagram, 1) == 0x0B;
    VirtualDataLink::Packet const packet = VirtualDataLink::Frame({VmacAddress(broadcast), npdu});
    Octets framed = packet.data;
    Require(framed.size() == datagram.size(), "a frame is the header and the NPDU");
    framed.at(2) = datagram.at(2);
    Require(framed == datagram, "the frame is written as it came, except for the high octet of the length");
    Require(Octet(packet.data, 2) == (datagram.size() >> 4 & 0xF0),
            "the length is written in the driver's form");
}

// The octets that GetBytes does not write: message type and vendor of a network-layer message.
std::size_t MessageOctets(Network::ControlInformation const& information) {
    return information.isNetworkMessage ? (information.messageType >= 0x80 ? 2 : 1) : 0;
}

void RequireParsed(Octets const& npdu, Network::Message const& message) {
    Network::ControlInformation information = message.controlInformation;
    // A parse drops the priority and the reserved bits. With them the header is what came.
    constexpr unsigned notKept = 0x53;
    Require(information.priority == 0, "a parse drops the priority");
    information.priority = static_cast<std::uint32_t>(Octet(npdu, 1)) & notKept;
    Octets const header = information.GetBytes();
    Require(header.size() + MessageOctets(information) + message.data.size() == npdu.size(),
            "header and data are the whole NPDU");
    Require(std::equal(header.begin(), header.end(), npdu.begin()), "the header is written as it came");
    Require(std::equal(message.data.rbegin(), message.data.rend(), npdu.rbegin()),
            "the data is what follows the header");
    Require(information.hasDestination || information.destination.bytes.empty(),
            "without its flag there is no destination");
    Require(information.hasSource || information.source.bytes.empty(), "without its flag there is no source");
}

void ParseNpdu(Octets const& npdu) {
    try {
        RequireParsed(npdu, Network::Message::Parse(npdu));
    } catch (std::runtime_error const&) {
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Octets const datagram(data, data + size);
    ParseNpdu(datagram);
    try {
        if (auto const npdu = VirtualDataLink::Unframe(datagram)) {
            RequireUnframed(datagram, *npdu);
            RequireFramedAgain(datagram, *npdu);
            ParseNpdu(*npdu);
        }
    } catch (std::runtime_error const&) {
    }
    return 0;
}
