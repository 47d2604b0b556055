#include "LeftPorts.h"

#include <algorithm>

#include "Calendar.h"

namespace dorvel {

namespace {

constexpr long long Duration = LeftPorts::Seconds * TicksPerSecond;

}  // namespace

void LeftPorts::Add(unsigned short port, long long now) {
    std::lock_guard<std::mutex> const lock(mutex);
    entries[next] = {port, now};
    next = (next + 1) % Capacity;
    count = std::min(count + 1, Capacity);
}

// Searches from the newest entry back to the first that is too old.
bool LeftPorts::Has(unsigned short port, long long now) const {
    std::lock_guard<std::mutex> const lock(mutex);
    for (std::size_t back = 1; back <= count; ++back) {
        Entry const& entry = entries[(next + Capacity - back) % Capacity];
        if (now - entry.since >= Duration) {
            return false;
        }
        if (entry.port == port) {
            return true;
        }
    }
    return false;
}

void LeftPorts::Clear() {
    std::lock_guard<std::mutex> const lock(mutex);
    count = 0;
}

LeftPorts& TheLeftPorts() {
    static LeftPorts ports;
    return ports;
}

}  // namespace dorvel
