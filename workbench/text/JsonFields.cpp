#include "JsonFields.h"

#include <string_view>

#include "Printable.h"

namespace workbench {

namespace {

// The escape of the delete character or of a control character C1 that begins there; empty for any other.
std::string EscapeAt(std::string_view text, std::size_t position) {
    static constexpr char digits[] = "0123456789abcdef";
    auto const octet = [text](std::size_t index) {
        return index < text.size() ? static_cast<unsigned char>(text[index]) : 0u;
    };
    unsigned const last = octet(position + 1);
    if (octet(position) == 0xC2 && last >= 0x80 && last < 0xA0) {
        return std::string("\\u00") + digits[last >> 4] + digits[last & 0xF];
    }
    return octet(position) == 0x7F ? "\\u007f" : std::string();
}

}  // namespace

void WriteText(JsonWriter& writer, std::string const& text) {
    std::string const valid = tools::ValidUtf8(text);
    writer.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
}

void WriteField(JsonWriter& writer, char const* name, std::string const& text) {
    writer.Key(name);
    WriteText(writer, text);
}

void WriteOptional(JsonWriter& writer, char const* name, std::string const& text) {
    writer.Key(name);
    if (text.empty()) {
        writer.Null();
    } else {
        WriteText(writer, text);
    }
}

std::string JsonText(rapidjson::StringBuffer const& buffer) {
    // RapidJSON escapes only what JSON demands; these have an effect in a terminal too.
    std::string_view const text(buffer.GetString(), buffer.GetSize());
    std::string json;
    json.reserve(text.size() + 1);
    std::size_t begin = 0;  // of what needs no escape and is not yet in the JSON
    for (std::size_t i = 0; i < text.size(); ++i) {
        bool const isLikely = text[i] == '\x7F' || text[i] == '\xC2';
        std::string const escape = isLikely ? EscapeAt(text, i) : std::string();
        if (!escape.empty()) {
            json.append(text.substr(begin, i - begin)).append(escape);
            begin = i + (text[i] == '\x7F' ? 1 : 2);
        }
    }
    json.append(text.substr(begin));
    return json;
}

std::string JsonLine(rapidjson::StringBuffer const& buffer) {
    std::string line = JsonText(buffer);
    line += '\n';
    return line;
}

}  // namespace workbench
