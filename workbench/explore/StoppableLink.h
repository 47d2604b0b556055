#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "Link.h"

namespace workbench {

// A link that a function stops, such as one that asks for signals.
class StoppableLink : public standard::Link {
public:
    // The inner link must outlive this one.
    StoppableLink(standard::Link& innerLink, std::function<bool()> stopFunction)
        : inner(innerLink), isStopped(std::move(stopFunction)) {}

    void Send(standard::Datagram const& datagram) override { inner.Send(datagram); }
    // Notices within 100 ms that the link is stopped.
    std::optional<standard::Datagram> Receive(Time deadline) override;
    Time Now() const override { return inner.Now(); }
    bool IsStopped() const override { return inner.IsStopped() || isStopped(); }

private:
    standard::Link& inner;
    std::function<bool()> isStopped;
};

}  // namespace workbench
