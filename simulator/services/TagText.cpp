#include "TagText.h"

#include <cstdio>

#include "Calendar.h"
#include "HexText.h"
#include "ObjectType.h"
#include "OctetReader.h"
#include "Printable.h"
#include "Refusal.h"
#include "WrittenPrimitive.h"

namespace simulator {

namespace {

using Tag = ApplicationTag;

// By tag number.
constexpr char const* Names[] = {"Null",   "Boolean",     "Unsigned",        "Signed",    "Real",
                                 "Double", "OctetString", "CharacterString", "BitString", "Enumerated",
                                 "Date",   "Time",        "ObjectIdentifier"};

std::string NumberText(Primitive const& primitive) {
    char text[32];
    std::snprintf(text, sizeof text, "%.9g", WrittenAny(primitive)->Number({}));
    return text;
}

std::string Hexadecimal(Octets const& octets) {
    return tools::HexText(octets, tools::HexDigits::Upper);
}

// The first octet of the content is the character set.
std::string Quoted(Octets const& content) {
    std::string_view const text(content.data(), content.size());
    return '"' + tools::Printable(text.substr(text.empty() ? 0 : 1)) + '"';
}

std::string Bits(Octets const& content) {
    std::string text;
    std::size_t const count = 8 * (content.size() - 1) - OctetValue(content[0]);
    for (std::size_t i = 0; i < count; ++i) {
        text += (OctetValue(content[1 + i / 8]) >> (7 - i % 8) & 1) != 0 ? '1' : '0';
    }
    return text;
}

std::string Part(char octet, unsigned base = 0) {
    unsigned const number = OctetValue(octet);
    if (number == Unspecified) {
        return "*";
    }
    return (number + base < 10 ? "0" : "") + std::to_string(number + base);
}

std::string ContentText(Primitive const& primitive) {
    Octets const& content = primitive.content;
    switch (primitive.tag) {
        case Tag::Null:
            return "";
        case Tag::Boolean:
            return content[0] != 0 ? "true" : "false";
        case Tag::OctetString:
            return Hexadecimal(content);
        case Tag::CharacterString:
            return Quoted(content);
        case Tag::BitString:
            return Bits(content);
        case Tag::Date:
            return Part(content[0], 1900) + '-' + Part(content[1]) + '-' + Part(content[2]);
        case Tag::Time:
            return Part(content[0]) + ':' + Part(content[1]) + ':' + Part(content[2]) + '.' +
                   Part(content[3]);
        case Tag::ObjectIdentifier:
            return TextOfObject(ObjectId::Of(OctetReader(content).U32()));
        default:
            return NumberText(primitive);
    }
}

std::string PrimitiveText(Primitive const& primitive) {
    std::string text = Names[static_cast<std::size_t>(primitive.tag)];
    try {
        WrittenAny(primitive);
        std::string const content = ContentText(primitive);
        return content.empty() ? text : text + ' ' + content;
    } catch (ServiceError const&) {
        return text + " with contents " + Hexadecimal(primitive.content);
    }
}

std::string TagText(TagReader::Any const& tag) {
    std::string const number = std::to_string(tag.number);
    if (tag.kind == TagReader::Kind::Opening) {
        return '{' + number;
    }
    if (tag.kind == TagReader::Kind::Closing) {
        return '}' + number;
    }
    if (tag.isContext || tag.number >= std::size(Names)) {
        return '[' + number + "] " + Hexadecimal(tag.content);
    }
    return PrimitiveText({static_cast<Tag>(tag.number), tag.content});
}

}  // namespace

std::string TextOfTags(Octets const& octets) {
    TagReader reader(octets);
    std::string text;
    while (!reader.AtEnd()) {
        text += (text.empty() ? "" : " ") + TagText(reader.TakeAny());
    }
    return text.empty() ? "nothing" : text;
}

std::string TextOfObject(ObjectId id) {
    std::string name = "object type " + std::to_string(id.type) + " instance";
    if (id.type == DeviceObjectType().code) {
        name = DeviceObjectType().name;
    }
    for (ObjectType const& type : AllObjectTypes()) {
        if (type.code == id.type) {
            name = type.name;
        }
    }
    return name + ' ' + std::to_string(id.instance);
}

}  // namespace simulator
