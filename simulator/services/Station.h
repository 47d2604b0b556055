#pragma once

#include <vector>

#include "ApplicationLayer.h"
#include "Endpoint.h"
#include "Standard.h"

namespace simulator {

// The receiver of a datagram that is a broadcast on the link.
constexpr Endpoint AllOfLink{0xFFFFFFFF, 0};

// A device on the link, without a socket: it takes datagrams and returns datagrams. No datagram makes it
// throw or crash. Faults are applied around this class (FaultyStation.h).
class Station {
public:
    explicit Station(Device simulatedDevice)
        : device(std::move(simulatedDevice)),
          network(device.Settings().position, device.Settings().router),
          application(device) {}
    Station(Station const&) = delete;
    Station& operator=(Station const&) = delete;

    // Each returns the datagrams to be sent now, in order. Tick repeats segments without an acknowledgement
    // and is to be called periodically.
    std::vector<Datagram> Receive(Datagram const& datagram, Moment const& now);
    std::vector<Datagram> Tick(Moment const& now) { return Framed(application.Tick(now)); }

    Device const& GetDevice() const { return device; }
    void ChangeObjectList() { device.ChangeObjectList(); }
    void OnAck(ApplicationLayer::AckFilter filter) { application.OnAck(std::move(filter)); }
    void OnWrite(Device::WriteObserver observer) { device.OnWrite(std::move(observer)); }

private:
    std::vector<Datagram> Framed(std::vector<Answer> answers) const;
    Datagram RouterAnswer(Endpoint const& sender, NetworkLayer::Result const& result) const;

    Device device;
    NetworkLayer network;
    ApplicationLayer application;
};

}  // namespace simulator
