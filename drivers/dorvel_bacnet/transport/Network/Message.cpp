#include "Network/Message.h"

#include <stdexcept>

#include "BitConverter.h"
#include "PopFront.h"

namespace Network {

namespace {

// Message types from here on are proprietary, and a vendor identifier follows them.
constexpr unsigned char FirstProprietaryType = 0x80;

unsigned char PopOctet(std::deque<char>& queue) {
    return static_cast<unsigned char>(PopFront(queue));
}

}  // namespace

Message Message::Parse(std::vector<char> npdu) {
    std::deque<char> queue(npdu.begin(), npdu.end());
    if (PopOctet(queue) != ProtocolVersion) {
        throw std::runtime_error("Wrong protocol version");
    }
    unsigned char const control = PopOctet(queue);

    Message message;
    ControlInformation& information = message.controlInformation;
    information.isNetworkMessage = (control & NetworkMessageBit) != 0;
    information.hasDestination = (control & DestinationBit) != 0;
    information.hasSource = (control & SourceBit) != 0;
    information.expectingReply = (control & ExpectingReplyBit) != 0;
    if (information.hasDestination) {
        information.destination = ParseAddress(queue);
    }
    if (information.hasSource) {
        information.source = ParseAddress(queue);
    }
    if (information.hasDestination) {
        information.hopCount = PopOctet(queue);
    }
    if (information.isNetworkMessage) {
        information.messageType = PopOctet(queue);
        if (information.messageType >= FirstProprietaryType) {
            information.vendor = PopOctet(queue);
        }
    }
    message.data.assign(queue.begin(), queue.end());
    return message;
}

Address Message::ParseAddress(std::deque<char>& queue) {
    char const high = PopFront(queue);
    char const low = PopFront(queue);
    Address address;
    address.network = BitConverter::ToUInt16({high, low}, 0);
    for (int left = PopOctet(queue); left > 0; --left) {
        address.bytes.push_back(PopFront(queue));
    }
    return address;
}

}  // namespace Network
