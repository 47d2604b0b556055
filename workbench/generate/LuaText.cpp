#include "LuaText.h"

#include <algorithm>
#include <cmath>

#include "NumberText.h"
#include "Printable.h"

namespace workbench {

namespace {

bool IsAscii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}

std::string OctetEscape(char c) {
    static constexpr char digits[] = "0123456789ABCDEF";
    auto const octet = static_cast<unsigned char>(c);
    return {'\\', 'x', digits[octet / 16], digits[octet % 16]};
}

std::string AsciiText(char c) {
    switch (c) {
        case '"':
            return "\\\"";
        case '\\':
            return "\\\\";
        case '\n':
            return "\\n";
        default:
            return c < 0x20 || c == 0x7F ? OctetEscape(c) : std::string(1, c);
    }
}

// Characters beyond ASCII, all of them as they are or none.
std::string OtherText(std::string_view run) {
    if (tools::Printable(run) == run) {
        return std::string(run);
    }
    std::string text;
    for (char const octet : run) {
        text += OctetEscape(octet);
    }
    return text;
}

// Lua has no names for them; these expressions have their values.
template <typename Number>
std::string Text(Number number) {
    if (std::isnan(number)) {
        return std::signbit(number) ? "0/0" : "-(0/0)";
    }
    if (std::isinf(number)) {
        return number < 0 ? "-1e999" : "1e999";
    }
    return tools::NumberText(number);
}

}  // namespace

std::string LuaString(std::string_view text) {
    std::string literal = "\"";
    for (std::size_t at = 0; at < text.size();) {
        if (IsAscii(text[at])) {
            literal += AsciiText(text[at++]);
            continue;
        }
        std::size_t end = at;
        while (end < text.size() && !IsAscii(text[end])) {
            ++end;
        }
        literal += OtherText(text.substr(at, end - at));
        at = end;
    }
    return literal + '"';
}

std::string LuaComment(std::string_view text, std::size_t indent) {
    std::string comment;
    for (std::size_t at = 0; at <= text.size();) {
        std::size_t const end = std::min(text.find('\n', at), text.size());
        std::string const line = tools::Printable(text.substr(at, end - at));
        comment += std::string(indent, ' ') + (line.empty() ? "--" : "-- ") + line + '\n';
        at = end + 1;
    }
    return comment;
}

std::string LuaNumber(float number) {
    return Text(number);
}

std::string LuaNumber(double number) {
    return Text(number);
}

}  // namespace workbench
