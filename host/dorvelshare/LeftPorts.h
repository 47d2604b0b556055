#pragma once

#include <array>
#include <cstddef>
#include <mutex>

namespace dorvel {

// Local ports that sockets have left while an answer may still come. All blocks count their invoke ids the
// same way, so a block could take a late answer to another block for its own. Sockets therefore avoid such a
// port for some seconds. Times are those of HostEnvironment::SteadyNow. Thread-safe.
class LeftPorts {
public:
    static constexpr long long Seconds = 10;
    // When more ports are left within that time, the oldest are forgotten.
    static constexpr std::size_t Capacity = 4096;

    void Add(unsigned short port, long long now);
    bool Has(unsigned short port, long long now) const;
    // Called when the environment changes, and ports and times with it.
    void Clear();

private:
    struct Entry {
        unsigned short port;
        long long since;
    };

    mutable std::mutex mutex;
    std::array<Entry, Capacity> entries{};  // a ring
    std::size_t next = 0;
    std::size_t count = 0;
};

LeftPorts& TheLeftPorts();

}  // namespace dorvel
