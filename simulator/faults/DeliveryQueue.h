#pragma once

#include <map>
#include <optional>

#include "FaultyStation.h"

namespace simulator {

// Delayed datagrams in the order of their times; those of the same time in the order of Add. The queue holds
// at most Most, and a further one is lost.
class DeliveryQueue {
public:
    static constexpr std::size_t Most = 4096;

    void Add(Delivery delivery, Moment const& now) {
        if (waiting.size() < Most) {
            waiting.emplace(now.sinceStart + delivery.delay, std::move(delivery));
        }
    }

    // Removes and returns the next datagram that is due.
    std::optional<Delivery> Next(Moment const& now) {
        if (waiting.empty() || waiting.begin()->first > now.sinceStart) {
            return std::nullopt;
        }
        Delivery delivery = std::move(waiting.begin()->second);
        waiting.erase(waiting.begin());
        return delivery;
    }

    // The time of the next datagram.
    std::optional<std::chrono::milliseconds> NextTime() const {
        return waiting.empty() ? std::nullopt : std::optional(waiting.begin()->first);
    }

private:
    std::multimap<std::chrono::milliseconds, Delivery> waiting;
};

}  // namespace simulator
