#pragma once

#include <string>

#include "Hex.h"

// Answers of a device, made from hexadecimal text and independent of the driver's encoders, so that their
// mistakes cannot cancel out. They follow ASHRAE 135, including the length field.
namespace test {

inline std::string HexOctet(unsigned value) {
    return ToHex({static_cast<char>(value)}) + " ";
}

// A BVLC Original-Unicast-NPDU around an NPDU.
inline Octets BvlcFrame(std::string const& npdu) {
    auto const length = static_cast<unsigned>(Hex(npdu).size()) + 4;
    return Hex("81 0A " + HexOctet(length >> 8) + HexOctet(length) + npdu);
}

// The datagram of a device on the local network.
inline Octets AnswerDatagram(std::string const& apdu) {
    return BvlcFrame("01 00 " + apdu);
}

// The datagram of a device behind a router, whose NPDU has network and MAC of the source.
inline Octets RoutedAnswerDatagram(unsigned network, std::string const& mac, std::string const& apdu) {
    return BvlcFrame("01 08 " + HexOctet(network >> 8) + HexOctet(network) +
                     HexOctet(static_cast<unsigned>(Hex(mac).size())) + mac + " " + apdu);
}

// One result of a ReadPropertyMultiple-ACK: a property and its value's tags.
inline std::string PropertyResult(unsigned property, std::string const& value) {
    std::string const identifier =
        property < 256 ? "29 " + HexOctet(property) : "2A " + HexOctet(property >> 8) + HexOctet(property);
    return identifier + "4E " + value + " 4F ";
}

// The service payload of a ReadPropertyMultiple-ACK for one object, whose identifier is given as four octets.
inline std::string ReadResults(std::string const& object, std::string const& results) {
    return "0C " + object + " 1E " + results + "1F ";
}

// An unsegmented ComplexACK for ReadPropertyMultiple.
inline std::string ReadAck(unsigned invokeId, std::string const& object, std::string const& results) {
    return "30 " + HexOctet(invokeId) + "0E " + ReadResults(object, results);
}

// One segment of such an ack.
inline std::string ReadAckSegment(unsigned invokeId, unsigned sequenceNumber, bool moreFollows,
                                  std::string const& payload) {
    return (moreFollows ? "3C " : "38 ") + HexOctet(invokeId) + HexOctet(sequenceNumber) + "01 0E " + payload;
}

}  // namespace test
