#include "StoppableLink.h"

#include <algorithm>

namespace workbench {

namespace {

constexpr std::chrono::milliseconds StopSlice{100};

}  // namespace

std::optional<standard::Datagram> StoppableLink::Receive(Time deadline) {
    std::optional<standard::Datagram> datagram;
    while (!datagram && !IsStopped() && Now() < deadline) {
        datagram = inner.Receive(std::min(deadline, Now() + StopSlice));
    }
    return datagram;
}

}  // namespace workbench
