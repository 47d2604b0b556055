#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace fuzz {

// Reads the octets of an input from the front. After its end every read gives 0 or nothing.
class Input {
public:
    Input(std::uint8_t const* data, std::size_t size) : next(data), end(data + size) {}

    bool IsEmpty() const { return next == end; }
    std::size_t Left() const { return static_cast<std::size_t>(end - next); }
    unsigned Octet() { return IsEmpty() ? 0 : *next++; }
    // A number below the bound, which is at most 256.
    unsigned Below(unsigned bound) { return Octet() % bound; }
    std::uint64_t Number64() {
        std::uint64_t number = 0;
        for (int i = 0; i < 8; ++i) {
            number = number << 8 | Octet();
        }
        return number;
    }
    // At most count octets.
    std::vector<char> Octets(std::size_t count) {
        std::size_t const taken = std::min(count, Left());
        std::vector<char> octets(next, next + taken);
        next += taken;
        return octets;
    }
    std::string Text(std::size_t count) {
        std::vector<char> const octets = Octets(count);
        return std::string(octets.begin(), octets.end());
    }

private:
    std::uint8_t const* next;
    std::uint8_t const* end;
};

}  // namespace fuzz
