#include "Bvlc.h"

#include "OctetReader.h"
#include "OctetWriter.h"

namespace standard::bvlc {

namespace {

constexpr std::uint8_t kBacnetIp = 0x81;

enum Function : std::uint8_t {
    kResult = 0x00,
    kForwardedNpdu = 0x04,
    kOriginalUnicastNpdu = 0x0A,
    kOriginalBroadcastNpdu = 0x0B
};

// Functions that only a BBMD serves, and the result code with which others refuse them (J.2.1).
struct Nak {
    std::uint8_t function;
    std::uint16_t resultCode;
};

constexpr Nak kNaks[] = {
    {0x01, 0x0010},  // Write-Broadcast-Distribution-Table
    {0x02, 0x0020},  // Read-Broadcast-Distribution-Table
    {0x05, 0x0030},  // Register-Foreign-Device
    {0x06, 0x0040},  // Read-Foreign-Device-Table
    {0x08, 0x0050},  // Delete-Foreign-Device-Table-Entry
    {0x09, 0x0060},  // Distribute-Broadcast-To-Network
};

Octets frame(std::uint8_t function, Octets const& content) {
    OctetWriter writer;
    writer.u8(kBacnetIp);
    writer.u8(function);
    writer.u16(static_cast<std::uint16_t>(content.size() + 4));
    writer.append(content);
    return writer.take();
}

Result refuse(std::uint8_t function) {
    for (Nak const& nak : kNaks) {
        if (nak.function == function) {
            OctetWriter code;
            code.u16(nak.resultCode);
            return {std::nullopt, frame(kResult, code.octets())};
        }
    }
    return {};
}

}  // namespace

Result receive(Datagram const& datagram) try {
    OctetReader reader(datagram.octets);
    if (reader.u8() != kBacnetIp) {
        return {};
    }
    std::uint8_t const function = reader.u8();
    if (reader.u16() != datagram.octets.size()) {
        return {};
    }
    Message message{datagram.peer, function != kOriginalUnicastNpdu, {}};
    if (function == kForwardedNpdu) {
        message.source.address = reader.u32();
        message.source.port = reader.u16();
    } else if (function != kOriginalUnicastNpdu && function != kOriginalBroadcastNpdu) {
        return refuse(function);
    }
    message.npdu = reader.rest();
    return {message, std::nullopt};
} catch (EndOfOctets const&) {
    return {};
}

Octets unicast(Octets const& npdu) {
    return frame(kOriginalUnicastNpdu, npdu);
}

}  // namespace standard::bvlc
