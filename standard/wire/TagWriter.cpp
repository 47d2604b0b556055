#include "TagWriter.h"

namespace standard {

namespace {

constexpr std::uint8_t ContextClass = 0x08;

// The upper half of the first octet holds numbers up to 14. Larger ones have the next octet.
std::uint8_t UpperHalf(std::uint8_t number) {
    return static_cast<std::uint8_t>((number < 15 ? number : 15) << 4);
}

}  // namespace

void TagWriter::Application(ApplicationTag tag, Octets const& content) {
    Header(static_cast<std::uint8_t>(tag), 0, content.size());
    writer.Append(content);
}

void TagWriter::Context(std::uint8_t number, Octets const& content) {
    Header(number, ContextClass, content.size());
    writer.Append(content);
}

void TagWriter::Header(std::uint8_t number, std::uint8_t classBit, std::size_t length) {
    std::size_t const inFirst = length < 5 ? length : 5;
    writer.U8(static_cast<std::uint8_t>(UpperHalf(number) | classBit | inFirst));
    if (number >= 15) {
        writer.U8(number);
    }
    if (length < 5) {
        return;
    }
    if (length < 254) {
        writer.U8(static_cast<std::uint8_t>(length));
    } else if (length < 65536) {
        writer.U8(254);
        writer.U16(static_cast<std::uint16_t>(length));
    } else {
        writer.U8(255);
        writer.U32(static_cast<std::uint32_t>(length));
    }
}

void TagWriter::Bracket(std::uint8_t number, std::uint8_t kind) {
    writer.U8(static_cast<std::uint8_t>(UpperHalf(number) | ContextClass | kind));
    if (number >= 15) {
        writer.U8(number);
    }
}

}  // namespace standard
