#pragma once

#include <algorithm>
#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "DeviceFile.h"
#include "FaultyStation.h"
#include "Link.h"
#include "Npdu.h"

namespace test {

// A network in virtual time with the devices of a device file, each at an address of its
// own: 10.0.0.1, 10.0.0.2 and so on. A datagram to any other address reaches all of them.
class SimulatedLink : public standard::Link {
public:
    static constexpr std::uint32_t FirstAddress = 0x0A000001;

    explicit SimulatedLink(std::string const& deviceFile) {
        for (simulator::Device& device : simulator::ParseDeviceFile("test", deviceFile)) {
            stations.emplace_back(std::move(device));
        }
    }

    // The address of a device, by its position in the file.
    static standard::Peer At(std::uint32_t position, std::optional<standard::NetworkAddress> remote = {}) {
        return {{FirstAddress + position, 47808}, std::move(remote)};
    }

    void Send(standard::Datagram const& datagram) override {
        sent.push_back(datagram);
        sentAt.push_back(now);
        if (onSend) {
            onSend(datagram);
        }
        std::uint32_t const position = datagram.peer.address - FirstAddress;
        for (std::uint32_t i = 0; i < stations.size(); ++i) {
            if (position == i || position >= stations.size()) {
                Queue(i, stations[i].Receive({Own, datagram.octets}, AsMoment()));
            }
        }
    }

    std::optional<standard::Datagram> Receive(Time deadline) override {
        while (!IsStopped()) {
            Time const until = std::min(deadline, nextTick);
            if (!arriving.empty() && arriving.begin()->first <= until) {
                auto const next = arriving.begin();
                now = std::max(now, next->first);
                standard::Datagram datagram = next->second;
                arriving.erase(next);
                return datagram;
            }
            now = std::max(now, until);
            if (deadline <= now) {
                return std::nullopt;
            }
            Tick();
        }
        return std::nullopt;
    }

    Time Now() const override { return now; }
    bool IsStopped() const override { return stopAfter != 0 && sent.size() >= stopAfter; }

    std::chrono::milliseconds Elapsed() const {
        return std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch());
    }
    // How often each confirmed service was requested, by its number.
    std::map<int, int> Services() const {
        std::map<int, int> services;
        for (standard::Datagram const& datagram : sent) {
            auto const npdu = standard::Npdu::Decode({datagram.octets.begin() + 4, datagram.octets.end()});
            if (npdu && npdu->content.size() > 3 && (npdu->content[0] & 0xF0) == 0) {
                ++services[npdu->content[3]];
            }
        }
        return services;
    }

    simulator::FaultyStation& Station(std::size_t position) { return stations[position]; }

    std::vector<standard::Datagram> sent;
    std::vector<Time> sentAt;
    std::size_t stopAfter = 0;  // stops the link once that many datagrams are sent; 0 never
    std::function<void(standard::Datagram const&)> onSend;
    // What a device takes to answer.
    std::chrono::milliseconds latency{1};

private:
    static constexpr standard::Endpoint Own{0x0A0000FE, 50000};

    simulator::Moment AsMoment() const {
        return {std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()),
                std::chrono::milliseconds(0)};
    }
    void Queue(std::uint32_t position, std::vector<simulator::Delivery> deliveries) {
        for (simulator::Delivery& delivery : deliveries) {
            standard::Endpoint const from{FirstAddress + position + (delivery.fromElsewhere ? 100 : 0),
                                          47808};
            arriving.emplace(now + latency + delivery.delay,
                             standard::Datagram{from, std::move(delivery.datagram.octets)});
        }
    }
    void Tick() {
        nextTick = now + std::chrono::milliseconds(100);
        for (std::uint32_t i = 0; i < stations.size(); ++i) {
            Queue(i, stations[i].Tick(AsMoment()));
        }
    }

    std::deque<simulator::FaultyStation> stations;
    Time now{};
    Time nextTick{};
    std::multimap<Time, standard::Datagram> arriving;
};

}  // namespace test
