#pragma once

#include <array>
#include <cstddef>
#include <mutex>

namespace dorvel {

// Local ports that sockets have left although an answer may still come to them. Blocks count their invoke ids
// alike, so an answer to one block could pass for the answer to another: nobody takes such a port before its
// late answers have come. Times are those of HostEnvironment::SteadyNow. For any number of threads.
class LeftPorts {
public:
    static constexpr long long Seconds = 10;
    // Of more ports that are left within that time, the oldest ones are forgotten.
    static constexpr std::size_t Room = 4096;

    void Add(unsigned short port, long long now);
    bool Has(unsigned short port, long long now) const;
    // With another environment ports and times are others.
    void Clear();

private:
    struct Entry {
        unsigned short port;
        long long since;
    };

    mutable std::mutex mutex;
    std::array<Entry, Room> entries{};  // a ring
    std::size_t next = 0;
    std::size_t count = 0;
};

LeftPorts& TheLeftPorts();

}  // namespace dorvel
