#pragma once

#include <cctype>
#include <string>
#include <string_view>
#include <vector>

#include "Seeds.h"

namespace test {

using Octets = std::vector<char>;

// The octets of a text of hexadecimal digit pairs. All other characters are separators, so "81 0A" and "810A"
// are the same.
inline Octets Hex(std::string_view text) {
    Octets octets;
    int nibbles = 0;
    unsigned value = 0;
    for (unsigned char const c : text) {
        if (!std::isxdigit(c)) {
            continue;
        }
        value = value * 16 + static_cast<unsigned>(std::isdigit(c) ? c - '0' : std::tolower(c) - 'a' + 10);
        if (++nibbles == 2) {
            octets.push_back(static_cast<char>(value));
            nibbles = 0;
            value = 0;
        }
    }
    RecordSeed("octets", octets);
    return octets;
}

// The octets as "81 0A 00", for the messages of failed comparisons.
inline std::string ToHex(Octets const& octets) {
    static char const digits[] = "0123456789ABCDEF";
    std::string text;
    for (unsigned char const octet : octets) {
        if (!text.empty()) {
            text += ' ';
        }
        text += digits[octet >> 4];
        text += digits[octet & 15];
    }
    return text;
}

inline Octets operator+(Octets left, Octets const& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

}  // namespace test
