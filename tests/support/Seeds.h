#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

// What the tests feed is what the fuzzers start from. With DORVEL_RECORD_SEEDS naming a folder, a test
// program records each input in a sub-folder of it, the input's pool, as Suite.Test-N; else nothing is done.
// scripts/fuzz seeds makes the corpora of the pools:
//
//   octets      whatever a test writes in hexadecimal
//   datagrams   what goes over a test's network, both ways
//   apdus       the APDUs of those, and what is given to the APDU parser
//   texts       schedules and addresses
namespace test {

using SeedRecorder = void (*)(char const* pool, std::string_view content);

// Null where nothing is recorded. RecordSeeds.cpp sets it, which unit tests are linked with.
inline SeedRecorder seedRecorder = nullptr;

inline void RecordSeed(char const* pool, std::string_view content) {
    if (seedRecorder) {
        seedRecorder(pool, content);
    }
}

inline void RecordSeed(char const* pool, std::vector<char> const& octets) {
    RecordSeed(pool, std::string_view(octets.data(), octets.size()));
}

// A datagram, and its APDU if it is to or from the local network.
inline void RecordDatagram(std::vector<char> const& datagram) {
    constexpr std::size_t headers = 6;
    RecordSeed("datagrams", datagram);
    constexpr unsigned messageOrAddress = 0xA8;
    if (datagram.size() > headers && (static_cast<unsigned char>(datagram[5]) & messageOrAddress) == 0) {
        RecordSeed("apdus", std::string_view(datagram.data(), datagram.size()).substr(headers));
    }
}

}  // namespace test
