#include "Bvlc.h"

#include "HexText.h"
#include "OctetReader.h"
#include "OctetWriter.h"

namespace standard::bvlc {

namespace {

constexpr std::uint8_t BacnetIp = 0x81;

enum Function : std::uint8_t {
    BvlcResult = 0x00,
    WriteBroadcastDistributionTable = 0x01,
    ReadBroadcastDistributionTable = 0x02,
    ForwardedNpdu = 0x04,
    RegisterForeignDeviceRequest = 0x05,
    ReadForeignDeviceTable = 0x06,
    DeleteForeignDeviceTableEntry = 0x08,
    DistributeBroadcastToNetwork = 0x09,
    OriginalUnicastNpdu = 0x0A,
    OriginalBroadcastNpdu = 0x0B
};

// The functions of a BBMD, and the result code with which other devices answer them (J.2.1).
struct Nak {
    std::uint8_t function;
    ResultCode code;
    char const* name;
};

constexpr Nak Naks[] = {
    {WriteBroadcastDistributionTable, WriteTableNak, "Write-Broadcast-Distribution-Table"},
    {ReadBroadcastDistributionTable, ReadTableNak, "Read-Broadcast-Distribution-Table"},
    {RegisterForeignDeviceRequest, RegisterForeignDeviceNak, "Register-Foreign-Device"},
    {ReadForeignDeviceTable, ReadForeignDevicesNak, "Read-Foreign-Device-Table"},
    {DeleteForeignDeviceTableEntry, DeleteForeignDeviceNak, "Delete-Foreign-Device-Table-Entry"},
    {DistributeBroadcastToNetwork, DistributeBroadcastNak, "Distribute-Broadcast-To-Network"},
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
            return {std::nullopt, ResultOf(nak.code)};
        }
    }
    return {};
}

Octets FrameOfNumber(std::uint8_t function, std::uint16_t number) {
    OctetWriter writer;
    writer.U16(number);
    return Frame(function, writer.GetOctets());
}

// What follows the header of a datagram with that function and a right length.
std::optional<Octets> ContentOf(Octets const& datagram, std::uint8_t function) {
    constexpr std::size_t head = 4;
    if (datagram.size() < head) {
        return std::nullopt;
    }
    OctetReader reader(datagram);
    bool const isMeant =
        reader.U8() == BacnetIp && reader.U8() == function && reader.U16() == datagram.size();
    return isMeant ? std::optional<Octets>(reader.Rest()) : std::nullopt;
}

std::optional<std::uint16_t> NumberOf(Octets const& datagram, std::uint8_t function) {
    auto const content = ContentOf(datagram, function);
    return content && content->size() == 2 ? std::optional<std::uint16_t>(OctetReader(*content).U16())
                                           : std::nullopt;
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

Octets Broadcast(Octets const& npdu) {
    return Frame(OriginalBroadcastNpdu, npdu);
}

Octets Forwarded(Endpoint const& originator, Octets const& npdu) {
    OctetWriter writer;
    writer.U32(originator.address);
    writer.U16(originator.port);
    writer.Append(npdu);
    return Frame(ForwardedNpdu, writer.GetOctets());
}

Octets RegisterForeignDevice(std::uint16_t seconds) {
    return FrameOfNumber(RegisterForeignDeviceRequest, seconds);
}

Octets DistributeBroadcast(Octets const& npdu) {
    return Frame(DistributeBroadcastToNetwork, npdu);
}

Octets ResultOf(std::uint16_t code) {
    return FrameOfNumber(BvlcResult, code);
}

std::optional<std::uint16_t> ResultCodeOf(Octets const& datagram) {
    return NumberOf(datagram, BvlcResult);
}

std::string ResultText(std::uint16_t code) {
    if (code == Success) {
        return "success";
    }
    for (Nak const& nak : Naks) {
        if (nak.code == code) {
            return std::string(nak.name) + " NAK";
        }
    }
    OctetWriter writer;
    writer.U16(code);
    return "result code 0x" + tools::HexText(writer.GetOctets(), tools::HexDigits::Upper);
}

std::optional<std::uint16_t> RegisteredSeconds(Octets const& datagram) {
    return NumberOf(datagram, RegisterForeignDeviceRequest);
}

std::optional<Octets> DistributedNpdu(Octets const& datagram) {
    return ContentOf(datagram, DistributeBroadcastToNetwork);
}

}  // namespace standard::bvlc
