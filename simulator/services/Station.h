#pragma once

#include <vector>

#include "ApplicationLayer.h"
#include "Endpoint.h"
#include "Standard.h"

namespace simulator {

// A device on the link, without its socket: datagrams in, datagrams out, and nothing else happens. No
// datagram makes it throw or crash. Whatever is to disturb the exchange belongs around this class.
class Station {
public:
    explicit Station(Device device)
        : m_device(std::move(device)), m_network(m_device.settings().position), m_application(m_device) {}
    Station(Station const&) = delete;
    Station& operator=(Station const&) = delete;

    // Each gives the datagrams to be sent now, in their order. `tick` is to be called every now and then:
    // it repeats what was not acknowledged.
    std::vector<Datagram> receive(Datagram const& datagram, Moment const& now);
    std::vector<Datagram> tick(Moment const& now) { return framed(m_application.tick(now)); }

    Device const& device() const { return m_device; }
    void onAck(ApplicationLayer::AckFilter filter) { m_application.onAck(std::move(filter)); }
    void onWrite(Device::WriteObserver observer) { m_device.onWrite(std::move(observer)); }

private:
    std::vector<Datagram> framed(std::vector<Answer> const& answers) const;

    Device m_device;
    NetworkLayer m_network;
    ApplicationLayer m_application;
};

}  // namespace simulator
