#pragma once

#include <functional>
#include <optional>

#include "Transaction.h"

namespace standard {

// Takes back what was commanded at a priority of an object: the one operation here that changes a device.
// It never throws and ends within the limits of the settings. Not for use by several threads.
class Relinquisher {
public:
    // The link must outlive it.
    Relinquisher(Link& network, ClientSettings const& clientSettings);

    // Writes Null to the Present_Value at that priority, 1 to 16. Returns why the device did not confirm it;
    // no value if it did. After Silent the device may have done it nevertheless: its Priority_Array shows it.
    // Another priority is a failure without a request.
    std::optional<Failure> Relinquish(Peer const& device, ObjectId const& object, std::uint32_t priority);

    // Is called after each request.
    using Observer = std::function<void(Exchange const&)>;
    void OnExchange(Observer exchangeObserver) { observer = std::move(exchangeObserver); }
    // The last request.
    Exchange const& LastExchange() const { return lastExchange; }

private:
    Link& link;
    ClientSettings const settings;
    Pace pace;
    PastRequests past;
    Observer observer;
    Exchange lastExchange;
    // Apart from those of a client that reads by the same link.
    std::uint8_t nextInvokeId = 129;
};

}  // namespace standard
