#include "UnconfirmedServices.h"

#include "CharacterSets.h"
#include "Content.h"
#include "TotalRead.h"

namespace standard {

namespace {

constexpr std::uint8_t UnconfirmedRequest = 0x10;
constexpr std::uint16_t DeviceType = 8;
constexpr std::size_t Head = 2;

// BACnetUnconfirmedServiceChoice (clause 21)
enum class Choice : std::uint8_t { IAm = 0, IHave = 1, WhoHas = 7, WhoIs = 8 };

bool Is(Octets const& apdu, Choice choice) {
    return apdu.size() >= Head && OctetValue(apdu[0]) == UnconfirmedRequest &&
           OctetValue(apdu[1]) == static_cast<std::uint8_t>(choice);
}

template <class Read>
auto Parameters(Octets const& apdu, Choice choice, Read read) {
    using Result = decltype(TotalRead(apdu, Head, read));
    return Is(apdu, choice) ? TotalRead(apdu, Head, read) : Result();
}

Octets Request(Choice choice, Octets const& parameters) {
    OctetWriter writer;
    writer.U8(UnconfirmedRequest);
    writer.U8(static_cast<std::uint8_t>(choice));
    writer.Append(parameters);
    return writer.Take();
}

// Both limits or neither are given.
std::optional<InstanceRange> ReadRange(TagReader& reader) {
    if (!reader.NextIsContext(0)) {
        return std::nullopt;
    }
    std::uint32_t const low = reader.UnsignedNumber(0);
    std::uint32_t const high = reader.UnsignedNumber(1);
    if (low > high || high > ObjectId::LastInstance) {
        throw Reject{RejectReason::ParameterOutOfRange};
    }
    return InstanceRange{low, high};
}

void WriteRange(TagWriter& writer, std::optional<InstanceRange> const& range) {
    if (range) {
        writer.Context(0, content::UnsignedNumber(range->low));
        writer.Context(1, content::UnsignedNumber(range->high));
    }
}

ObjectId ReadDevice(TagReader& reader) {
    ObjectId const device = reader.ApplicationObject();
    if (device.type != DeviceType) {
        throw Reject{RejectReason::ParameterOutOfRange};
    }
    return device;
}

std::string ReadText(Octets const& content) {
    auto text = TextOfCharacterString(content);
    if (!text) {
        throw Reject{RejectReason::InvalidParameterDataType};
    }
    return *std::move(text);
}

void WriteObject(TagWriter& writer, ObjectId const& object) {
    writer.Application(ApplicationTag::ObjectIdentifier, content::ObjectIdentifier(object));
}

void WriteNumber(TagWriter& writer, ApplicationTag tag, std::uint32_t number) {
    writer.Application(tag, content::UnsignedNumber(number));
}

}  // namespace

std::optional<WhoIs> WhoIs::Decode(Octets const& apdu) {
    return Parameters(apdu, Choice::WhoIs, [](TagReader& reader) { return WhoIs{ReadRange(reader)}; });
}

Octets WhoIs::Encode() const {
    TagWriter writer;
    WriteRange(writer, range);
    return Request(Choice::WhoIs, writer.Take());
}

std::optional<IAm> IAm::Decode(Octets const& apdu) {
    return Parameters(apdu, Choice::IAm, [](TagReader& reader) {
        IAm result;
        result.device = ReadDevice(reader);
        result.maxApdu = reader.ApplicationNumber(ApplicationTag::Unsigned);
        result.segmentation = reader.ApplicationNumber(ApplicationTag::Enumerated);
        result.vendor = reader.ApplicationNumber(ApplicationTag::Unsigned);
        return result;
    });
}

Octets IAm::Encode() const {
    TagWriter writer;
    WriteObject(writer, device);
    WriteNumber(writer, ApplicationTag::Unsigned, maxApdu);
    WriteNumber(writer, ApplicationTag::Enumerated, segmentation);
    WriteNumber(writer, ApplicationTag::Unsigned, vendor);
    return Request(Choice::IAm, writer.Take());
}

std::optional<WhoHas> WhoHas::Decode(Octets const& apdu) {
    return Parameters(apdu, Choice::WhoHas, [](TagReader& reader) {
        WhoHas result;
        result.range = ReadRange(reader);
        if (reader.NextIsContext(2)) {
            result.object = reader.ObjectIdentifier(2);
        } else {
            result.name = ReadText(reader.ContextOctets(3));
        }
        return result;
    });
}

Octets WhoHas::Encode() const {
    TagWriter writer;
    WriteRange(writer, range);
    if (object) {
        writer.Context(2, content::ObjectIdentifier(*object));
    } else {
        writer.Context(3, content::CharacterString(name));
    }
    return Request(Choice::WhoHas, writer.Take());
}

std::optional<IHave> IHave::Decode(Octets const& apdu) {
    return Parameters(apdu, Choice::IHave, [](TagReader& reader) {
        IHave result;
        result.device = ReadDevice(reader);
        result.object = reader.ApplicationObject();
        result.name = ReadText(reader.ApplicationOctets(ApplicationTag::CharacterString));
        return result;
    });
}

Octets IHave::Encode() const {
    TagWriter writer;
    WriteObject(writer, device);
    WriteObject(writer, object);
    writer.Application(ApplicationTag::CharacterString, content::CharacterString(name));
    return Request(Choice::IHave, writer.Take());
}

bool IsIAm(Octets const& apdu) {
    return Is(apdu, Choice::IAm);
}

}  // namespace standard
