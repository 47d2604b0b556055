// The exchange: all datagrams pass the socket layer of the host here.

#include <optional>
#include <stdexcept>
#include <utility>

#include "Network/Message.h"
#include "TBACnet.h"
#include "VirtualDataLink/Framing.h"

namespace dorvel::BACnet {

namespace {

// The largest datagram, in octets.
constexpr int BufferSize = 1500;

// A block asks its own device only.
constexpr bool IsBroadcast = false;

// Arguments of the host's socket call: the host sends each datagram once and waits for an answer.
constexpr int HostRetries = 0;
constexpr int WaitForAnswer = 1;

// A frame of another BVLC function ends the exchange, as any datagram without an NPDU does.
std::vector<char> Unwrap(std::vector<char> datagram) {
    std::optional<std::vector<char>> npdu = VirtualDataLink::Unframe(std::move(datagram));
    if (!npdu) {
        throw std::runtime_error("packet format error");
    }
    return Network::Message::Parse(std::move(*npdu)).data;
}

}  // namespace

int TBACnet::SendAndReceive(Network::NDataUnitRequest const& request, std::vector<char>& apdu) {
    return Exchange(VirtualDataLink::FrameNpdu(IsBroadcast, Network::ToNpdu(request)), apdu);
}

int TBACnet::Receive(std::vector<char>& apdu) {
    return Exchange({}, apdu);
}

int TBACnet::Exchange(std::vector<char> const& frame, std::vector<char>& apdu) {
    char buffer[BufferSize];
    // Without data the host only receives.
    void const* const data = frame.empty() ? nullptr : frame.data();
    int const received = NLSendReceive(socket, peer.get(), data, static_cast<int>(frame.size()), buffer,
                                       BufferSize, receiveTimeout, HostRetries, WaitForAnswer, taskParam);
    if (received > 0) {
        apdu = Unwrap(std::vector<char>(buffer, buffer + received));
    }
    return received;
}

}  // namespace dorvel::BACnet
