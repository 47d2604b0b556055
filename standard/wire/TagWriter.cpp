#include "TagWriter.h"

namespace standard {

namespace {

constexpr std::uint8_t kContextClass = 0x08;

// The first octet's upper half has no room for numbers from 15 up: they follow in an octet of their own.
std::uint8_t upperHalf(std::uint8_t number) {
    return static_cast<std::uint8_t>((number < 15 ? number : 15) << 4);
}

}  // namespace

void TagWriter::application(ApplicationTag tag, Octets const& content) {
    header(static_cast<std::uint8_t>(tag), 0, content.size());
    m_writer.append(content);
}

void TagWriter::context(std::uint8_t number, Octets const& content) {
    header(number, kContextClass, content.size());
    m_writer.append(content);
}

void TagWriter::header(std::uint8_t number, std::uint8_t classBit, std::size_t length) {
    std::size_t const inFirst = length < 5 ? length : 5;
    m_writer.u8(static_cast<std::uint8_t>(upperHalf(number) | classBit | inFirst));
    if (number >= 15) {
        m_writer.u8(number);
    }
    if (length < 5) {
        return;
    }
    if (length < 254) {
        m_writer.u8(static_cast<std::uint8_t>(length));
    } else if (length < 65536) {
        m_writer.u8(254);
        m_writer.u16(static_cast<std::uint16_t>(length));
    } else {
        m_writer.u8(255);
        m_writer.u32(static_cast<std::uint32_t>(length));
    }
}

void TagWriter::bracket(std::uint8_t number, std::uint8_t kind) {
    m_writer.u8(static_cast<std::uint8_t>(upperHalf(number) | kContextClass | kind));
    if (number >= 15) {
        m_writer.u8(number);
    }
}

}  // namespace standard
