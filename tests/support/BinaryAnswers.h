#pragma once

#include <cstddef>

#include "Hex.h"

// Answers of a device as octets, for answers too large for hexadecimal text. They are independent of the
// driver's encoders.
namespace test {

inline void Append(Octets& octets, Octets const& more) {
    octets.insert(octets.end(), more.begin(), more.end());
}

// The datagram of a device on the local network. Its length field is cut to 16 bits.
inline Octets Datagram(Octets const& apdu) {
    std::size_t const length = apdu.size() + 6;
    Octets octets = {'\x81', '\x0A', static_cast<char>(length >> 8), static_cast<char>(length), 1, 0};
    Append(octets, apdu);
    return octets;
}

// An unsegmented ComplexACK for ReadPropertyMultiple.
inline Octets WholeAnswer(char invokeId, Octets const& payload) {
    Octets apdu = {0x30, invokeId, 0x0E};
    Append(apdu, payload);
    return Datagram(apdu);
}

// One segment of such an ack.
inline Octets SegmentAnswer(char invokeId, std::size_t number, bool moreFollows, Octets const& part) {
    Octets apdu = {static_cast<char>(moreFollows ? 0x3C : 0x38), invokeId, static_cast<char>(number), 1,
                   0x0E};
    Append(apdu, part);
    return Datagram(apdu);
}

// Fields of the driver's requests to a device on the local network.
inline bool IsSegmentAck(Octets const& request) {
    return request.at(6) == 0x40;
}
inline char InvokeIdOf(Octets const& request) {
    return request.at(IsSegmentAck(request) ? 7 : 8);
}
inline bool IsWrite(Octets const& request) {
    return !IsSegmentAck(request) && request.at(9) == 0x0F;
}
// The four octets of the object that a read or a write names.
inline Octets ObjectOf(Octets const& request) {
    return Octets(request.begin() + 11, request.begin() + 15);
}

// The payload of an ack: the results of one object.
inline Octets ResultsOf(Octets const& object, Octets const& results) {
    Octets payload = {0x0C};
    Append(payload, object);
    payload.push_back(0x1E);
    Append(payload, results);
    payload.push_back(0x1F);
    return payload;
}

// One result: a property and the tags of its value.
inline Octets ResultOf(char property, Octets const& value) {
    Octets result = {0x29, property, 0x4E};
    Append(result, value);
    result.push_back(0x4F);
    return result;
}

// Application Real 42.0, and Status_Flags without a flag.
inline Octets const& Real42Octets() {
    static Octets const octets = Hex("44 42 28 00 00");
    return octets;
}
inline Octets const& FlagsClearOctets() {
    static Octets const octets = Hex("82 04 00");
    return octets;
}

// The answer to a read of Present_Value: 42.0, no flags.
inline Octets ValueOf42(Octets const& request) {
    static Octets const results = ResultOf(85, Real42Octets()) + ResultOf(111, FlagsClearOctets());
    return WholeAnswer(InvokeIdOf(request), ResultsOf(ObjectOf(request), results));
}

// The SimpleACK of a write.
inline Octets WriteDone(Octets const& request) {
    return Datagram({0x20, InvokeIdOf(request), 0x0F});
}

}  // namespace test
