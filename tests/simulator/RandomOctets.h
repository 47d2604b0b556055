#pragma once

#include <cstddef>
#include <random>

#include "Hex.h"

namespace test {

// Octets at random, the same ones for the same seed.
class RandomOctets {
public:
    explicit RandomOctets(unsigned seed) : m_random(seed) {}

    // 0 to limit - 1.
    unsigned pick(std::size_t limit) {
        return std::uniform_int_distribution<unsigned>(0, static_cast<unsigned>(limit) - 1)(m_random);
    }

    Octets noise(std::size_t length) {
        Octets octets;
        while (octets.size() < length) {
            octets.push_back(static_cast<char>(pick(256)));
        }
        return octets;
    }

    // Replaces, changes, takes out and repeats octets and cuts the rest, up to four times.
    Octets mutated(Octets octets) {
        for (unsigned i = 0; i <= pick(4) && !octets.empty(); ++i) {
            auto const place = octets.begin() + pick(octets.size());
            switch (pick(5)) {
                case 0:
                    *place = static_cast<char>(pick(256));
                    break;
                case 1:
                    *place = static_cast<char>(*place ^ (1 << pick(8)));
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
    std::mt19937 m_random;
};

}  // namespace test
