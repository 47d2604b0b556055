#include "TagText.h"

#include <cstdio>

#include "Calendar.h"
#include "ObjectType.h"
#include "OctetReader.h"
#include "Refusal.h"
#include "WrittenPrimitive.h"

namespace simulator {

namespace {

using Tag = ApplicationTag;

// By tag number.
constexpr char const* kNames[] = {"Null",   "Boolean",     "Unsigned",        "Signed",    "Real",
                                  "Double", "OctetString", "CharacterString", "BitString", "Enumerated",
                                  "Date",   "Time",        "ObjectIdentifier"};

std::string numberText(Primitive const& primitive) {
    char text[32];
    std::snprintf(text, sizeof text, "%.9g", writtenAny(primitive)->number({}));
    return text;
}

// What is no printable character of ASCII becomes a dot.
std::string quoted(Octets const& content) {
    std::string text(1, '"');
    for (std::size_t i = 1; i < content.size(); ++i) {
        text += content[i] >= ' ' && content[i] <= '~' ? content[i] : '.';
    }
    return text + '"';
}

std::string bits(Octets const& content) {
    std::string text;
    std::size_t const count = 8 * (content.size() - 1) - static_cast<unsigned char>(content[0]);
    for (std::size_t i = 0; i < count; ++i) {
        text += (static_cast<unsigned char>(content[1 + i / 8]) >> (7 - i % 8) & 1) != 0 ? '1' : '0';
    }
    return text;
}

std::string part(char octet, unsigned base = 0) {
    unsigned const number = static_cast<unsigned char>(octet);
    if (number == kAny) {
        return "*";
    }
    return (number + base < 10 ? "0" : "") + std::to_string(number + base);
}

std::string contentText(Primitive const& primitive) {
    Octets const& content = primitive.content;
    switch (primitive.tag) {
        case Tag::Null:
            return "";
        case Tag::Boolean:
            return content[0] != 0 ? "true" : "false";
        case Tag::OctetString:
            return hexadecimal(content);
        case Tag::CharacterString:
            return quoted(content);
        case Tag::BitString:
            return bits(content);
        case Tag::Date:
            return part(content[0], 1900) + '-' + part(content[1]) + '-' + part(content[2]);
        case Tag::Time:
            return part(content[0]) + ':' + part(content[1]) + ':' + part(content[2]) + '.' +
                   part(content[3]);
        case Tag::ObjectIdentifier:
            return textOfObject(ObjectId::of(OctetReader(content).u32()));
        default:
            return numberText(primitive);
    }
}

std::string primitiveText(Primitive const& primitive) {
    std::string text = kNames[static_cast<std::size_t>(primitive.tag)];
    try {
        writtenAny(primitive);
        std::string const content = contentText(primitive);
        return content.empty() ? text : text + ' ' + content;
    } catch (ServiceError const&) {
        return text + " with contents " + hexadecimal(primitive.content);
    }
}

std::string tagText(TagReader::Any const& tag) {
    std::string const number = std::to_string(tag.number);
    if (tag.kind == TagReader::Kind::Opening) {
        return '{' + number;
    }
    if (tag.kind == TagReader::Kind::Closing) {
        return '}' + number;
    }
    if (tag.isContext || tag.number >= std::size(kNames)) {
        return '[' + number + "] " + hexadecimal(tag.content);
    }
    return primitiveText({static_cast<Tag>(tag.number), tag.content});
}

}  // namespace

std::string textOfTags(Octets const& octets) {
    TagReader reader(octets);
    std::string text;
    while (!reader.atEnd()) {
        text += (text.empty() ? "" : " ") + tagText(reader.any());
    }
    return text.empty() ? "nothing" : text;
}

std::string textOfObject(ObjectId id) {
    std::string name = "object type " + std::to_string(id.type) + " instance";
    if (id.type == deviceObjectType().code) {
        name = deviceObjectType().name;
    }
    for (ObjectType const& type : objectTypes()) {
        if (type.code == id.type) {
            name = type.name;
        }
    }
    return name + ' ' + std::to_string(id.instance);
}

std::string hexadecimal(Octets const& octets) {
    constexpr char const* digits = "0123456789ABCDEF";
    std::string text;
    for (unsigned char const octet : octets) {
        text += digits[octet >> 4];
        text += digits[octet & 15];
    }
    return text;
}

}  // namespace simulator
