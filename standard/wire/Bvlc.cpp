#include "Bvlc.h"

#include "OctetReader.h"
#include "OctetWriter.h"

namespace standard::bvlc {

namespace {

constexpr std::uint8_t BacnetIp = 0x81;

enum Function : std::uint8_t {
    BvlcResult = 0x00,
    ForwardedNpdu = 0x04,
    OriginalUnicastNpdu = 0x0A,
    OriginalBroadcastNpdu = 0x0B
};

// The functions of a BBMD, and the result code with which other devices answer them (J.2.1).
struct Nak {
    std::uint8_t function;
    std::uint16_t resultCode;
};

constexpr Nak Naks[] = {
    {0x01, 0x0010},  // Write-Broadcast-Distribution-Table
    {0x02, 0x0020},  // Read-Broadcast-Distribution-Table
    {0x05, 0x0030},  // Register-Foreign-Device
    {0x06, 0x0040},  // Read-Foreign-Device-Table
    {0x08, 0x0050},  // Delete-Foreign-Device-Table-Entry
    {0x09, 0x0060},  // Distribute-Broadcast-To-Network
};

Octets Frame(std::uint8_t function, Octets const& content) {
    OctetWriter writer;
    writer.U8(BacnetIp);
    writer.U8(function);
    writer.U16(static_cast<std::uint16_t>(content.size() + 4));
    writer.Append(content);
    return writer.Take();
}

Result Refuse(std::uint8_t function) {
    for (Nak const& nak : Naks) {
        if (nak.function == function) {
            OctetWriter code;
            code.U16(nak.resultCode);
            return {std::nullopt, Frame(BvlcResult, code.GetOctets())};
        }
    }
    return {};
}

}  // namespace

Result Receive(Datagram const& datagram) try {
    OctetReader reader(datagram.octets);
    if (reader.U8() != BacnetIp) {
        return {};
    }
    std::uint8_t const function = reader.U8();
    if (reader.U16() != datagram.octets.size()) {
        return {};
    }
    Message message{datagram.peer, function != OriginalUnicastNpdu, {}};
    if (function == ForwardedNpdu) {
        message.source.address = reader.U32();
        message.source.port = reader.U16();
    } else if (function != OriginalUnicastNpdu && function != OriginalBroadcastNpdu) {
        return Refuse(function);
    }
    message.npdu = reader.Rest();
    return {message, std::nullopt};
} catch (EndOfOctets const&) {
    return {};
}

Octets Unicast(Octets const& npdu) {
    return Frame(OriginalUnicastNpdu, npdu);
}

}  // namespace standard::bvlc
