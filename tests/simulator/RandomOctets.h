#pragma once

#include <cstddef>
#include <random>

#include "Hex.h"

namespace test {

// Random octets, which depend on the seed only.
class RandomOctets {
public:
    explicit RandomOctets(unsigned seed) : random(seed) {}

    // 0 to limit - 1.
    unsigned Pick(std::size_t limit) {
        return std::uniform_int_distribution<unsigned>(0, static_cast<unsigned>(limit) - 1)(random);
    }

    Octets Noise(std::size_t length) {
        Octets octets;
        while (octets.size() < length) {
            octets.push_back(static_cast<char>(Pick(256)));
        }
        return octets;
    }

    // Replaces, changes, removes or repeats octets or cuts the end, up to four times.
    Octets Mutated(Octets octets) {
        for (unsigned i = 0; i <= Pick(4) && !octets.empty(); ++i) {
            auto const place = octets.begin() + Pick(octets.size());
            switch (Pick(5)) {
                case 0:
                    *place = static_cast<char>(Pick(256));
                    break;
                case 1:
                    *place = static_cast<char>(*place ^ (1 << Pick(8)));
                    break;
                case 2:
                    octets.erase(place);
                    break;
                case 3:
                    octets.insert(place, *place);
                    break;
                default:
                    octets.erase(place + 1, octets.end());
                    break;
            }
        }
        return octets;
    }

private:
    std::mt19937 random;
};

}  // namespace test
