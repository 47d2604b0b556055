#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

// The fuzzers start from the inputs of the tests. If DORVEL_RECORD_SEEDS names a folder, a test program
// writes each input to a subfolder of it, the input's pool, as the file Suite.Test-N. scripts/fuzz seeds
// makes the corpora from the pools:
//
//   octets      all that tests write in hexadecimal
//   datagrams   what tests send and receive
//   apdus       the APDUs of the datagrams, and those that tests parse
//   texts       schedules and addresses
namespace test {

using SeedRecorder = void (*)(char const* pool, std::string_view content);

// Null if nothing is recorded. RecordSeeds.cpp, which is linked with the unit tests, sets it.
inline SeedRecorder seedRecorder = nullptr;

inline void RecordSeed(char const* pool, std::string_view content) {
    if (seedRecorder) {
        seedRecorder(pool, content);
    }
}

inline void RecordSeed(char const* pool, std::vector<char> const& octets) {
    RecordSeed(pool, std::string_view(octets.data(), octets.size()));
}

// Records a datagram, and its APDU if it is to or from the local network.
inline void RecordDatagram(std::vector<char> const& datagram) {
    constexpr std::size_t headers = 6;
    RecordSeed("datagrams", datagram);
    constexpr unsigned messageOrAddress = 0xA8;
    if (datagram.size() > headers && (static_cast<unsigned char>(datagram[5]) & messageOrAddress) == 0) {
        RecordSeed("apdus", std::string_view(datagram.data(), datagram.size()).substr(headers));
    }
}

}  // namespace test
