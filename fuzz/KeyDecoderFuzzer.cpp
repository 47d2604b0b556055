// What a terminal sends, as the keys of the screen: whole, octet by octet, and divided at a place of the
// input.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "KeyDecoder.h"
#include "Printable.h"
#include "Require.h"

using fuzz::Require;
using workbench::Key;
using workbench::KeyDecoder;
using workbench::KeyKind;

namespace {

constexpr std::size_t LongestSequence = 64;

void Append(std::vector<Key>& keys, std::vector<Key> const& more) {
    keys.insert(keys.end(), more.begin(), more.end());
}

std::vector<Key> InParts(std::string_view octets, std::size_t part) {
    KeyDecoder decoder;
    std::vector<Key> keys;
    for (std::size_t begin = 0; begin < octets.size(); begin += part) {
        Append(keys, decoder.Feed(octets.substr(begin, part)));
    }
    Append(keys, decoder.Flush());
    Require(!decoder.IsWaiting(), "nothing waits after the end");
    return keys;
}

void RequireKey(Key const& key) {
    bool const isText = key.kind == KeyKind::Text;
    Require(isText != key.text.empty(), "a text key has a character, and no other key has one");
    Require(key.text.size() <= 4, "a character has at most four octets");
    Require(tools::Printable(key.text) == key.text, "a character can be printed");
    Require(key.kind == KeyKind::Click ? key.line < 100000 : key.line == 0,
            "a click is on a line of a screen");
}

bool AreSame(Key const& left, Key const& right) {
    return left.kind == right.kind && left.text == right.text && left.line == right.line;
}

// Longer sequences are dropped when they are too long, which is sooner if they come in parts.
bool HasLongSequence(std::string_view octets) {
    std::size_t length = 0;
    for (char const octet : octets) {
        length = octet >= ' ' && octet <= '?' ? length + 1 : 0;
        if (length + 4 >= LongestSequence) {
            return true;
        }
    }
    return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    // The first octet is the length of the parts.
    std::string_view const octets(reinterpret_cast<char const*>(data) + 1, size - 1);
    std::vector<Key> const keys = InParts(octets, std::max<std::size_t>(octets.size(), 1));
    Require(keys.size() <= octets.size(), "each key takes an octet at least");
    std::for_each(keys.begin(), keys.end(), RequireKey);
    for (std::size_t const part : {std::size_t{1}, std::size_t{data[0]} + 1}) {
        std::vector<Key> const others = InParts(octets, part);
        std::for_each(others.begin(), others.end(), RequireKey);
        Require(HasLongSequence(octets) ||
                    std::equal(keys.begin(), keys.end(), others.begin(), others.end(), AreSame),
                "the keys do not depend on the parts in which they come");
    }
    return 0;
}
