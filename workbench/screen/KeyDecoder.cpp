#include "KeyDecoder.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <utility>

#include "Printable.h"

namespace workbench {

namespace {

constexpr std::size_t LongestSequence = 64;
constexpr char EscapeOctet = '\x1B';
constexpr std::size_t Incomplete = 0;

struct Octets {
    std::size_t length;  // Incomplete: more are needed
    std::optional<Key> key;
};

struct Name {
    std::string_view octets;
    KeyKind kind;
};

// What follows "ESC [" or "ESC O", without parameters that say which other keys are held.
constexpr Name Finals[] = {{"A", KeyKind::Up},   {"B", KeyKind::Down}, {"C", KeyKind::Right},
                           {"D", KeyKind::Left}, {"H", KeyKind::Home}, {"F", KeyKind::End},
                           {"M", KeyKind::Enter}};
// The first parameter of "ESC [ n ~".
constexpr Name Numbers[] = {{"1", KeyKind::Home},    {"7", KeyKind::Home},   {"4", KeyKind::End},
                            {"8", KeyKind::End},     {"3", KeyKind::Delete}, {"5", KeyKind::PageUp},
                            {"6", KeyKind::PageDown}};
constexpr Name Controls[] = {
    {"\r", KeyKind::Enter},     {"\n", KeyKind::Enter},       {"\t", KeyKind::Tab},
    {"\b", KeyKind::Backspace}, {"\x7F", KeyKind::Backspace}, {"\x15", KeyKind::DeleteLine},
    {"\x01", KeyKind::Home},    {"\x05", KeyKind::End},       {"\x0C", KeyKind::Redraw}};

template <std::size_t Count>
std::optional<Key> Find(Name const (&names)[Count], std::string_view octets) {
    auto const found = std::find_if(std::begin(names), std::end(names),
                                    [=](Name const& name) { return name.octets == octets; });
    return found == std::end(names) ? std::nullopt : std::optional(Key{found->kind});
}

// "<64;12;7M": button, column and line of a mouse event; a button that is released ends with "m".
std::optional<Key> Mouse(std::string_view parameters, char final) {
    std::string const text(parameters.substr(1));
    char* end = nullptr;
    unsigned long const button = std::strtoul(text.c_str(), &end, 10);
    unsigned long const column = *end == ';' ? std::strtoul(end + 1, &end, 10) : 0;
    unsigned long const line = *end == ';' ? std::strtoul(end + 1, &end, 10) : 0;
    if (final != 'M' || column == 0 || line == 0 || line > 100000) {
        return std::nullopt;
    }
    switch (button) {
        case 0:
            return Key{KeyKind::Click, {}, line - 1};
        case 64:
            return Key{KeyKind::WheelUp};
        case 65:
            return Key{KeyKind::WheelDown};
        default:
            return std::nullopt;
    }
}

std::optional<Key> Sequence(std::string_view parameters, char final) {
    if (!parameters.empty() && parameters.front() == '<') {
        return Mouse(parameters, final);
    }
    return final == '~' ? Find(Numbers, parameters.substr(0, parameters.find(';')))
                        : Find(Finals, std::string_view(&final, 1));
}

// A control sequence, from its ESC.
Octets ControlSequence(std::string_view text) {
    std::size_t end = 2;
    while (end < text.size() && text[end] >= ' ' && text[end] <= '?') {
        ++end;
    }
    if (end >= text.size()) {
        return {Incomplete, {}};
    }
    if (text[end] < '@' || text[end] > '~') {
        return {end, {}};  // something else begins inside of it
    }
    // The older form of a mouse event has three octets after the final one.
    std::size_t const more = end == 2 && text[2] == 'M' ? 3 : 0;
    if (end + more >= text.size()) {
        return {Incomplete, {}};
    }
    return {end + 1 + more, more > 0 ? std::nullopt : Sequence(text.substr(2, end - 2), text[end])};
}

Octets AfterEscape(std::string_view text) {
    if (text.size() == 1) {
        return {Incomplete, {}};
    }
    if (text[1] == '[') {
        return ControlSequence(text);
    }
    if (text[1] != 'O') {
        return {1, Key{KeyKind::Escape}};
    }
    return text.size() == 2 ? Octets{Incomplete, {}} : Octets{3, Find(Finals, text.substr(2, 1))};
}

std::size_t AnnouncedLength(char first) {
    auto const octet = static_cast<unsigned char>(first);
    return octet < 0xC0 ? 1 : octet < 0xE0 ? 2 : octet < 0xF0 ? 3 : 4;
}

Octets Character(std::string_view text) {
    std::size_t const length = AnnouncedLength(text.front());
    std::string const character(text.substr(0, length));
    bool const isWhole = tools::ValidUtf8(character) == character;
    if (text.size() < length && !isWhole) {
        return {Incomplete, {}};
    }
    // A control character of C1 is not printable either.
    return isWhole && tools::Printable(character) == character ? Octets{length, Key{KeyKind::Text, character}}
                                                               : Octets{1, {}};
}

Octets Next(std::string_view text) {
    if (text.front() == EscapeOctet) {
        return AfterEscape(text);
    }
    bool const isControl = static_cast<unsigned char>(text.front()) < ' ' || text.front() == '\x7F';
    return isControl ? Octets{1, Find(Controls, text.substr(0, 1))} : Character(text);
}

}  // namespace

std::vector<Key> KeyDecoder::Feed(std::string_view octets) {
    std::string const all = std::exchange(waiting, {}).append(octets);
    std::string_view left = all;
    std::vector<Key> keys;
    while (!left.empty()) {
        Octets next = Next(left);
        if (next.length == Incomplete) {
            if (left.size() < LongestSequence) {
                waiting = left;
                break;
            }
            next.length = left.size();
        }
        if (next.key) {
            keys.push_back(std::move(*next.key));
        }
        left.remove_prefix(next.length);
    }
    return keys;
}

std::vector<Key> KeyDecoder::Flush() {
    bool const isEscape = waiting.size() == 1 && waiting.front() == EscapeOctet;
    waiting.clear();
    return isEscape ? std::vector<Key>{{KeyKind::Escape}} : std::vector<Key>();
}

}  // namespace workbench
