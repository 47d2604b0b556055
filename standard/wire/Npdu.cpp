#include "Npdu.h"

#include "OctetReader.h"
#include "OctetWriter.h"

namespace standard {

namespace {

constexpr std::uint8_t Version = 1;

// The bits of the control octet (clause 6.2.2).
enum Control : std::uint8_t {
    IsNetworkMessage = 0x80,
    HasDestination = 0x20,
    HasSource = 0x08,
    ExpectsReply = 0x04,
    PriorityMask = 0x03
};

NetworkAddress ReadAddress(OctetReader& reader) {
    NetworkAddress address;
    address.network = reader.U16();
    address.mac = reader.Take(reader.U8());
    return address;
}

void WriteAddress(OctetWriter& writer, NetworkAddress const& address) {
    writer.U16(address.network);
    writer.U8(static_cast<std::uint8_t>(address.mac.size()));
    writer.Append(address.mac);
}

// A source is one station on one network. A destination may be all stations of a network, but not of network
// 0.
bool IsValid(Npdu const& npdu) {
    if (npdu.destination && npdu.destination->network == 0) {
        return false;
    }
    return !npdu.source || (npdu.source->network != 0 && npdu.source->network != GlobalBroadcast &&
                            !npdu.source->mac.empty());
}

}  // namespace

std::optional<Npdu> Npdu::Decode(Octets const& octets) try {
    OctetReader reader(octets);
    if (reader.U8() != Version) {
        return std::nullopt;
    }
    Npdu npdu;
    std::uint8_t const control = reader.U8();
    npdu.isNetworkMessage = (control & IsNetworkMessage) != 0;
    npdu.expectsReply = (control & ExpectsReply) != 0;
    npdu.priority = control & PriorityMask;
    if ((control & HasDestination) != 0) {
        npdu.destination = ReadAddress(reader);
    }
    if ((control & HasSource) != 0) {
        npdu.source = ReadAddress(reader);
    }
    if (npdu.destination) {
        npdu.hopCount = reader.U8();
    }
    npdu.content = reader.Rest();
    return IsValid(npdu) ? std::optional<Npdu>(npdu) : std::nullopt;
} catch (EndOfOctets const&) {
    return std::nullopt;
}

Octets Npdu::Encode() const {
    OctetWriter writer;
    writer.U8(Version);
    writer.U8(static_cast<std::uint8_t>((isNetworkMessage ? IsNetworkMessage : 0) |
                                        (destination ? HasDestination : 0) | (source ? HasSource : 0) |
                                        (expectsReply ? ExpectsReply : 0) | (priority & PriorityMask)));
    if (destination) {
        WriteAddress(writer, *destination);
    }
    if (source) {
        WriteAddress(writer, *source);
    }
    if (destination) {
        writer.U8(hopCount);
    }
    writer.Append(content);
    return writer.Take();
}

}  // namespace standard
