#pragma once

#include <map>
#include <optional>

#include "FaultyStation.h"

namespace simulator {

// Datagrams that wait for their time, in its order and those of one time in the order of coming. At most
// Most; what comes when it is full is lost, as any datagram may be.
class DeliveryQueue {
public:
    static constexpr std::size_t Most = 4096;

    void Add(Delivery delivery, Moment const& now) {
        if (waiting.size() < Most) {
            waiting.emplace(now.sinceStart + delivery.delay, std::move(delivery));
        }
    }

    // The next one whose time has come.
    std::optional<Delivery> Next(Moment const& now) {
        if (waiting.empty() || waiting.begin()->first > now.sinceStart) {
            return std::nullopt;
        }
        Delivery delivery = std::move(waiting.begin()->second);
        waiting.erase(waiting.begin());
        return delivery;
    }

    // When the first one is to be sent.
    std::optional<std::chrono::milliseconds> NextTime() const {
        return waiting.empty() ? std::nullopt : std::optional(waiting.begin()->first);
    }

private:
    std::multimap<std::chrono::milliseconds, Delivery> waiting;
};

}  // namespace simulator
