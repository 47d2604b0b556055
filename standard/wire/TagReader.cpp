#include "TagReader.h"

#include "Refusal.h"

namespace standard {

ObjectId TagReader::objectIdentifier(std::uint8_t contextNumber) {
    if (contextLength(contextNumber) != 4) {
        throw Reject{RejectReason::InvalidParameterDataType};
    }
    return ObjectId::of(m_reader.u32());
}

std::uint32_t TagReader::unsignedNumber(std::uint8_t contextNumber) {
    std::uint32_t const count = contextLength(contextNumber);
    if (count == 0) {
        throw Reject{RejectReason::InvalidParameterDataType};
    }
    if (count > 4) {
        throw Reject{RejectReason::ParameterOutOfRange};
    }
    return static_cast<std::uint32_t>(m_reader.bigEndian(count));
}

std::optional<std::uint32_t> TagReader::optionalUnsigned(std::uint8_t contextNumber) {
    if (!nextIsContext(contextNumber)) {
        return std::nullopt;
    }
    return unsignedNumber(contextNumber);
}

void TagReader::opening(std::uint8_t number) {
    if (atEnd()) {
        throw Reject{RejectReason::MissingRequiredParameter};
    }
    Tag const tag = next();
    if (tag.kind != Kind::Opening || tag.number != number) {
        throw Reject{RejectReason::InvalidTag};
    }
}

bool TagReader::closes(std::uint8_t number) {
    std::size_t const before = m_reader.position();
    if (atEnd()) {
        throw Reject{RejectReason::MissingRequiredParameter};
    }
    Tag const tag = next();
    if (tag.kind == Kind::Closing && tag.number == number) {
        return true;
    }
    m_reader.rewind(before);
    return false;
}

Octets TagReader::contextOctets(std::uint8_t number) {
    return m_reader.take(contextLength(number));
}

Primitive TagReader::application() {
    if (atEnd()) {
        throw Reject{RejectReason::MissingRequiredParameter};
    }
    Any tag = any();
    if (tag.isContext || tag.number > static_cast<std::uint8_t>(ApplicationTag::ObjectIdentifier)) {
        throw Reject{RejectReason::InvalidTag};
    }
    return {static_cast<ApplicationTag>(tag.number), std::move(tag.content)};
}

TagReader::Any TagReader::any() {
    Tag const tag = next();
    Any found{tag.number, tag.isContext, tag.kind, {}};
    if (!tag.isContext && tag.number == static_cast<std::uint8_t>(ApplicationTag::Boolean)) {
        found.content.push_back(static_cast<char>(tag.length != 0));
        return found;
    }
    if (tag.length > m_reader.left()) {
        throw Reject{RejectReason::InvalidTag};
    }
    found.content = m_reader.take(tag.length);
    return found;
}

Octets TagReader::enclosed(std::uint8_t number) {
    opening(number);
    OctetReader start = m_reader;
    std::size_t end = m_reader.position();
    std::vector<std::uint8_t> open{number};
    while (!open.empty()) {
        if (atEnd()) {
            throw Reject{RejectReason::MissingRequiredParameter};
        }
        end = m_reader.position();
        Any const tag = any();
        if (tag.kind == Kind::Opening) {
            open.push_back(tag.number);
        } else if (tag.kind == Kind::Closing && tag.number != open.back()) {
            throw Reject{RejectReason::InvalidTag};
        } else if (tag.kind == Kind::Closing) {
            open.pop_back();
        }
    }
    return start.take(end - start.position());
}

void TagReader::expectEnd() const {
    if (!atEnd()) {
        throw Reject{RejectReason::TooManyArguments};
    }
}

// A tag that the request is too short for is no tag.
TagReader::Tag TagReader::next() {
    try {
        std::uint8_t const first = m_reader.u8();
        Tag tag{static_cast<std::uint8_t>(first >> 4), (first & 0x08) != 0, Kind::Primitive, 0};
        if (tag.number == 15) {
            tag.number = m_reader.u8();
        }
        std::uint8_t const lower = first & 0x07;
        if (lower >= 6) {
            if (!tag.isContext) {
                throw Reject{RejectReason::InvalidTag};
            }
            tag.kind = lower == 6 ? Kind::Opening : Kind::Closing;
            return tag;
        }
        tag.length = length(lower);
        return tag;
    } catch (EndOfOctets const&) {
        throw Reject{RejectReason::InvalidTag};
    }
}

std::uint32_t TagReader::length(std::uint8_t firstOctet) {
    if (firstOctet < 5) {
        return firstOctet;
    }
    std::uint8_t const extended = m_reader.u8();
    if (extended < 254) {
        return extended;
    }
    return extended == 254 ? m_reader.u16() : m_reader.u32();
}

// Takes the head of a primitive context tag and gives how many octets follow; those are there.
std::uint32_t TagReader::contextLength(std::uint8_t number) {
    if (atEnd()) {
        throw Reject{RejectReason::MissingRequiredParameter};
    }
    Tag const tag = next();
    if (tag.kind == Kind::Closing) {
        throw Reject{RejectReason::MissingRequiredParameter};
    }
    if (!tag.isContext || tag.kind != Kind::Primitive || tag.number != number ||
        tag.length > m_reader.left()) {
        throw Reject{RejectReason::InvalidTag};
    }
    return tag.length;
}

bool TagReader::nextIsOpening(std::uint8_t number) const {
    return !atEnd() && m_reader.peek() == (number << 4 | 0x0E);
}

bool TagReader::nextIsContext(std::uint8_t number) const {
    return !atEnd() && (m_reader.peek() & 0xF8) == (number << 4 | 0x08) && (m_reader.peek() & 0x07) < 6;
}

}  // namespace standard
