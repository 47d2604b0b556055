#include "Npdu.h"

#include "OctetReader.h"
#include "OctetWriter.h"

namespace standard {

namespace {

constexpr std::uint8_t kVersion = 1;

// The bits of the control octet (clause 6.2.2).
enum Control : std::uint8_t {
    kNetworkMessage = 0x80,
    kHasDestination = 0x20,
    kHasSource = 0x08,
    kExpectsReply = 0x04,
    kPriority = 0x03
};

NetworkAddress readAddress(OctetReader& reader) {
    NetworkAddress address;
    address.network = reader.u16();
    address.mac = reader.take(reader.u8());
    return address;
}

void writeAddress(OctetWriter& writer, NetworkAddress const& address) {
    writer.u16(address.network);
    writer.u8(static_cast<std::uint8_t>(address.mac.size()));
    writer.append(address.mac);
}

// A source is one station on one network; a destination may be all stations, but not on network 0.
bool isValid(Npdu const& npdu) {
    if (npdu.destination && npdu.destination->network == 0) {
        return false;
    }
    return !npdu.source || (npdu.source->network != 0 && npdu.source->network != kGlobalBroadcast &&
                            !npdu.source->mac.empty());
}

}  // namespace

std::optional<Npdu> Npdu::decode(Octets const& octets) try {
    OctetReader reader(octets);
    if (reader.u8() != kVersion) {
        return std::nullopt;
    }
    Npdu npdu;
    std::uint8_t const control = reader.u8();
    npdu.isNetworkMessage = (control & kNetworkMessage) != 0;
    npdu.expectsReply = (control & kExpectsReply) != 0;
    npdu.priority = control & kPriority;
    if ((control & kHasDestination) != 0) {
        npdu.destination = readAddress(reader);
    }
    if ((control & kHasSource) != 0) {
        npdu.source = readAddress(reader);
    }
    if (npdu.destination) {
        npdu.hopCount = reader.u8();
    }
    npdu.content = reader.rest();
    return isValid(npdu) ? std::optional<Npdu>(npdu) : std::nullopt;
} catch (EndOfOctets const&) {
    return std::nullopt;
}

Octets Npdu::encode() const {
    OctetWriter writer;
    writer.u8(kVersion);
    writer.u8(static_cast<std::uint8_t>((isNetworkMessage ? kNetworkMessage : 0) |
                                        (destination ? kHasDestination : 0) | (source ? kHasSource : 0) |
                                        (expectsReply ? kExpectsReply : 0) | (priority & kPriority)));
    if (destination) {
        writeAddress(writer, *destination);
    }
    if (source) {
        writeAddress(writer, *source);
    }
    if (destination) {
        writer.u8(hopCount);
    }
    writer.append(content);
    return writer.take();
}

}  // namespace standard
