#pragma once

#include <map>
#include <optional>

#include "FaultyStation.h"

namespace simulator {

// Datagrams that wait for their time, in its order and those of one time in the order of coming. At most
// kMost; what comes when it is full is lost, as any datagram may be.
class DeliveryQueue {
public:
    static constexpr std::size_t kMost = 4096;

    void add(Delivery delivery, Moment const& now) {
        if (m_waiting.size() < kMost) {
            m_waiting.emplace(now.sinceStart + delivery.delay, std::move(delivery));
        }
    }

    // The next one whose time has come.
    std::optional<Delivery> next(Moment const& now) {
        if (m_waiting.empty() || m_waiting.begin()->first > now.sinceStart) {
            return std::nullopt;
        }
        Delivery delivery = std::move(m_waiting.begin()->second);
        m_waiting.erase(m_waiting.begin());
        return delivery;
    }

    // When the first one is to be sent.
    std::optional<std::chrono::milliseconds> nextTime() const {
        return m_waiting.empty() ? std::nullopt : std::optional(m_waiting.begin()->first);
    }

private:
    std::multimap<std::chrono::milliseconds, Delivery> m_waiting;
};

}  // namespace simulator
