#include "Network/Message.h"

#include <cstddef>
#include <stdexcept>
#include <utility>

#include "BitConverter.h"
#include "PopFront.h"

namespace Network {

namespace {

// Message types from here on are proprietary; a vendor identifier follows them.
constexpr unsigned char FirstProprietaryType = 0x80;

// Version and control octet.
constexpr int FixedHeaderSize = 2;

unsigned char OctetAt(std::vector<char> const& npdu, std::size_t place) {
    if (place >= npdu.size()) {
        throw ParseException("message ends too early");
    }
    return static_cast<unsigned char>(npdu[place]);
}

unsigned char PopOctet(std::deque<char>& queue) {
    return static_cast<unsigned char>(PopFront(queue));
}

// Reads the fields that the flags of the control octet announce from the front of the queue.
void TakeVariableHeader(std::deque<char>& queue, ControlInformation& information) {
    if (information.hasDestination) {
        information.destination = Message::ParseAddress(queue);
    }
    if (information.hasSource) {
        information.source = Message::ParseAddress(queue);
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
}

}  // namespace

Message Message::Parse(std::vector<char> npdu) {
    if (OctetAt(npdu, 0) != ProtocolVersion) {
        throw std::runtime_error("Wrong protocol version");
    }
    unsigned char const control = OctetAt(npdu, 1);

    Message message;
    ControlInformation& information = message.controlInformation;
    information.isNetworkMessage = (control & NetworkMessageBit) != 0;
    information.hasDestination = (control & DestinationBit) != 0;
    information.hasSource = (control & SourceBit) != 0;
    information.expectingReply = (control & ExpectingReplyBit) != 0;
    npdu.erase(npdu.begin(), npdu.begin() + FixedHeaderSize);
    // Answers of the local network end their header here, so they need no queue.
    if (information.hasDestination || information.hasSource || information.isNetworkMessage) {
        std::deque<char> queue(npdu.begin(), npdu.end());
        TakeVariableHeader(queue, information);
        npdu.assign(queue.begin(), queue.end());
    }
    message.data = std::move(npdu);
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
