#include "TagReader.h"

#include <utility>

#include "Refusal.h"

namespace standard {

ObjectId TagReader::ObjectIdentifier(std::uint8_t contextNumber) {
    if (ContextLength(contextNumber) != 4) {
        throw Reject{RejectReason::InvalidParameterDataType};
    }
    return ObjectId::Of(reader.U32());
}

std::uint32_t TagReader::UnsignedNumber(std::uint8_t contextNumber) {
    std::uint32_t const count = ContextLength(contextNumber);
    if (count == 0) {
        throw Reject{RejectReason::InvalidParameterDataType};
    }
    if (count > 4) {
        throw Reject{RejectReason::ParameterOutOfRange};
    }
    return static_cast<std::uint32_t>(reader.BigEndian(count));
}

std::optional<std::uint32_t> TagReader::OptionalUnsigned(std::uint8_t contextNumber) {
    if (!NextIsContext(contextNumber)) {
        return std::nullopt;
    }
    return UnsignedNumber(contextNumber);
}

void TagReader::Opening(std::uint8_t number) {
    if (AtEnd()) {
        throw Reject{RejectReason::MissingRequiredParameter};
    }
    Tag const tag = Next();
    if (tag.kind != Kind::Opening || tag.number != number) {
        throw Reject{RejectReason::InvalidTag};
    }
}

bool TagReader::Closes(std::uint8_t number) {
    std::size_t const before = reader.Position();
    if (AtEnd()) {
        throw Reject{RejectReason::MissingRequiredParameter};
    }
    Tag const tag = Next();
    if (tag.kind == Kind::Closing && tag.number == number) {
        return true;
    }
    reader.Rewind(before);
    return false;
}

Octets TagReader::ContextOctets(std::uint8_t number) {
    return reader.Take(ContextLength(number));
}

Primitive TagReader::Application() {
    if (AtEnd()) {
        throw Reject{RejectReason::MissingRequiredParameter};
    }
    Any tag = TakeAny();
    if (tag.isContext || tag.number > static_cast<std::uint8_t>(ApplicationTag::ObjectIdentifier)) {
        throw Reject{RejectReason::InvalidTag};
    }
    return {static_cast<ApplicationTag>(tag.number), std::move(tag.content)};
}

Octets TagReader::ApplicationOctets(ApplicationTag tag) {
    Primitive value = Application();
    if (value.tag != tag) {
        throw Reject{RejectReason::InvalidTag};
    }
    return std::move(value.content);
}

std::uint32_t TagReader::ApplicationNumber(ApplicationTag tag) {
    constexpr std::size_t widest = sizeof(std::uint64_t);
    Octets const octets = ApplicationOctets(tag);
    if (octets.empty()) {
        throw Reject{RejectReason::InvalidParameterDataType};
    }
    std::uint64_t const number =
        octets.size() > widest ? UINT64_MAX : OctetReader(octets).BigEndian(octets.size());
    if (number > UINT32_MAX) {
        throw Reject{RejectReason::ParameterOutOfRange};
    }
    return static_cast<std::uint32_t>(number);
}

ObjectId TagReader::ApplicationObject() {
    Octets const octets = ApplicationOctets(ApplicationTag::ObjectIdentifier);
    if (octets.size() != sizeof(std::uint32_t)) {
        throw Reject{RejectReason::InvalidParameterDataType};
    }
    return ObjectId::Of(OctetReader(octets).U32());
}

TagReader::Any TagReader::TakeAny() {
    Tag const tag = Next();
    Any found{tag.number, tag.isContext, tag.kind, {}};
    if (!tag.isContext && tag.number == static_cast<std::uint8_t>(ApplicationTag::Boolean)) {
        found.content.push_back(static_cast<char>(tag.length != 0));
        return found;
    }
    if (tag.length > reader.Left()) {
        throw Reject{RejectReason::InvalidTag};
    }
    found.content = reader.Take(tag.length);
    return found;
}

Octets TagReader::Enclosed(std::uint8_t number) {
    Opening(number);
    OctetReader start = reader;
    std::size_t end = reader.Position();
    std::vector<std::uint8_t> open{number};
    while (!open.empty()) {
        if (AtEnd()) {
            throw Reject{RejectReason::MissingRequiredParameter};
        }
        end = reader.Position();
        Any const tag = TakeAny();
        if (tag.kind == Kind::Opening) {
            open.push_back(tag.number);
        } else if (tag.kind == Kind::Closing && tag.number != open.back()) {
            throw Reject{RejectReason::InvalidTag};
        } else if (tag.kind == Kind::Closing) {
            open.pop_back();
        }
    }
    return start.Take(end - start.Position());
}

void TagReader::ExpectEnd() const {
    if (!AtEnd()) {
        throw Reject{RejectReason::TooManyArguments};
    }
}

// A tag that is longer than the rest of the request is invalid.
TagReader::Tag TagReader::Next() {
    try {
        std::uint8_t const first = reader.U8();
        Tag tag{static_cast<std::uint8_t>(first >> 4), (first & 0x08) != 0, Kind::Primitive, 0};
        if (tag.number == 15) {
            tag.number = reader.U8();
        }
        std::uint8_t const lower = first & 0x07;
        if (lower >= 6) {
            if (!tag.isContext) {
                throw Reject{RejectReason::InvalidTag};
            }
            tag.kind = lower == 6 ? Kind::Opening : Kind::Closing;
            return tag;
        }
        tag.length = Length(lower);
        return tag;
    } catch (EndOfOctets const&) {
        throw Reject{RejectReason::InvalidTag};
    }
}

std::uint32_t TagReader::Length(std::uint8_t firstOctet) {
    if (firstOctet < 5) {
        return firstOctet;
    }
    std::uint8_t const extended = reader.U8();
    if (extended < 254) {
        return extended;
    }
    return extended == 254 ? reader.U16() : reader.U32();
}

// Reads the header of a primitive context tag. Returns the number of its contents octets, which are all
// there.
std::uint32_t TagReader::ContextLength(std::uint8_t number) {
    if (AtEnd()) {
        throw Reject{RejectReason::MissingRequiredParameter};
    }
    Tag const tag = Next();
    if (tag.kind == Kind::Closing) {
        throw Reject{RejectReason::MissingRequiredParameter};
    }
    if (!tag.isContext || tag.kind != Kind::Primitive || tag.number != number || tag.length > reader.Left()) {
        throw Reject{RejectReason::InvalidTag};
    }
    return tag.length;
}

bool TagReader::NextIsOpening(std::uint8_t number) const {
    return !AtEnd() && reader.Peek() == (number << 4 | 0x0E);
}

bool TagReader::NextIsContext(std::uint8_t number) const {
    return !AtEnd() && (reader.Peek() & 0xF8) == (number << 4 | 0x08) && (reader.Peek() & 0x07) < 6;
}

}  // namespace standard
