#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <random>

#include "Hex.h"

namespace test {

// Calls total(octets) with the octets cut off at each length, which must have no value, except at the lengths
// that are complete too.
template <class Total>
void ExpectNoneWhenCutOff(std::string_view text, std::initializer_list<std::size_t> complete, Total total) {
    Octets octets = Hex(text);
    EXPECT_TRUE(total(octets)) << text;
    while (!octets.empty()) {
        octets.pop_back();
        bool const isComplete = std::find(complete.begin(), complete.end(), octets.size()) != complete.end();
        EXPECT_EQ(total(octets).has_value(), isComplete) << ToHex(octets);
    }
}

// Octets that the seed chooses, often beginning with those of the text.
inline Octets RandomOctets(std::mt19937& random, std::string_view text, std::size_t longest = 40) {
    Octets octets = random() % 4 == 0 ? Octets() : Hex(text);
    octets.resize(random() % (longest + 1));
    for (std::size_t changes = random() % 4; changes > 0 && !octets.empty(); --changes) {
        octets[random() % octets.size()] = static_cast<char>(random());
    }
    return octets;
}

}  // namespace test
