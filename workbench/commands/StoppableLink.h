#pragma once

#include "Signals.h"
#include "UdpLink.h"

namespace workbench {

// A UDP link with any free port of all interfaces, which a signal stops.
class StoppableLink : public standard::Link {
public:
    // The signals must outlive the link. Throws std::system_error.
    explicit StoppableLink(Signals const& stopSignals) : signals(stopSignals), inner(standard::Endpoint{}) {}

    void Send(standard::Datagram const& datagram) override { inner.Send(datagram); }
    std::optional<standard::Datagram> Receive(Time deadline) override;
    Time Now() const override { return inner.Now(); }
    bool IsStopped() const override { return signals.IsStopRequested(); }

private:
    Signals const& signals;
    standard::UdpLink inner;
};

}  // namespace workbench
