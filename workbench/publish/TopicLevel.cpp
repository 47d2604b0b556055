#include "TopicLevel.h"

#include <cstdint>

#include "Printable.h"
#include "Utf8.h"

namespace workbench {

namespace {

constexpr std::size_t LengthOfBeginning = 150;
constexpr char Digits[] = "0123456789ABCDEF";

// Brokers end the connection of a client whose topic has one of these.
bool IsForbidden(long codePoint) {
    bool const isControl = codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0);
    bool const isNoCharacter = (codePoint >= 0xFDD0 && codePoint <= 0xFDEF) || (codePoint & 0xFFFE) == 0xFFFE;
    return isControl || isNoCharacter;  // also -1, an octet that is not UTF-8
}

bool IsEscaped(long codePoint, bool isFirst) {
    switch (codePoint) {
        case '/':
        case '+':
        case '#':
        case '%':
        case '~':
            return true;
        case '$':
            return isFirst;
        default:
            return IsForbidden(codePoint);
    }
}

std::string Escape(std::string_view octets) {
    std::string escape;
    for (char const octet : octets) {
        auto const number = static_cast<unsigned char>(octet);
        escape += {'%', Digits[number >> 4], Digits[number & 0xF]};
    }
    return escape;
}

}  // namespace

std::string EscapedLevel(std::string_view name) {
    std::string level;
    std::size_t beginning = 0;  // the length of what stays if the level is too long
    for (std::size_t place = 0; place < name.size() && level.size() <= LongestLevel;) {
        tools::Character const character = tools::CharacterAt(name, place);
        std::string_view const octets = name.substr(place, character.length);
        level += IsEscaped(character.codePoint, place == 0) ? Escape(octets) : std::string(octets);
        beginning = level.size() <= LengthOfBeginning ? level.size() : beginning;
        place += character.length;
    }
    if (level.size() > LongestLevel) {
        return level.substr(0, beginning) + "~" + NameHash(name);
    }
    return level.empty() ? "%" : level;
}

std::string NameHash(std::string_view name) {
    std::uint64_t hash = 14695981039346656037U;
    for (char const octet : name) {
        hash = (hash ^ static_cast<unsigned char>(octet)) * 1099511628211U;
    }
    std::string text;
    for (int shift = 60; shift >= 0; shift -= 4) {
        text += Digits[hash >> shift & 0xF];
    }
    return text;
}

std::string PrefixMistake(std::string const& prefix) {
    std::string const text = tools::Quoted(prefix);
    if (prefix.empty() || prefix.front() == '$' || prefix.back() == '/') {
        return text + " cannot begin topics; allowed is a text that does not begin with $ or end with /, " +
               "such as \"plant/ahu-1\"";
    }
    if (prefix.size() > LongestPrefix) {
        return text + " has " + std::to_string(prefix.size()) + " octets; allowed are at most " +
               std::to_string(LongestPrefix);
    }
    for (std::size_t place = 0; place < prefix.size();) {
        tools::Character const character = tools::CharacterAt(prefix, place);
        if (character.codePoint == '+' || character.codePoint == '#' || IsForbidden(character.codePoint)) {
            return text + " has " + tools::Quoted(std::string_view(prefix).substr(place, character.length)) +
                   " in it; allowed is UTF-8 without +, # and control characters";
        }
        place += character.length;
    }
    return {};
}

}  // namespace workbench
