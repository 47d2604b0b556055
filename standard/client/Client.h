#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "MultipleRead.h"
#include "PropertyServices.h"
#include "Transaction.h"

namespace standard {

// Reads properties of BACnet/IP devices by ASHRAE 135, one request at a time. It has no operation that
// changes a device. No function throws; each ends within the limits of the settings, whatever a device or a
// stranger sends. Not for use by several threads.
class Client {
public:
    // The link must outlive the client.
    Client(Link& network, ClientSettings const& clientSettings);

    // ReadProperty. `device` is a station on the link, or one on another network with the router's endpoint.
    // With an empty address on that network the first of its stations that answers is the device.
    ReadResult Read(Peer const& device, PropertyReference const& reference);

    // ReadPropertyMultiple, for any number of properties; All, Required and Optional are not among them. The
    // results are those of the references, in the same order. Where the device rejects the service, or where
    // an answer does not fit, shorter lists and in the end single properties are read. After two properties
    // in succession without an answer the device is Silent for the rest of the list, which is not requested.
    std::vector<ReadResult> ReadMultiple(Peer const& device,
                                         std::vector<PropertyReference> const& references);

    // Is called after each request, also those of ReadMultiple: for progress, and for the time of each
    // answer.
    using Observer = std::function<void(Exchange const&)>;
    void OnExchange(Observer exchangeObserver) { observer = std::move(exchangeObserver); }

    // The last request: of ReadMultiple, its last one.
    Exchange const& LastExchange() const { return lastExchange; }
    // Requests since the construction, without their retries.
    std::size_t RequestCount() const { return requestCount; }

private:
    using FormRequest = std::function<Octets(std::uint8_t invokeId)>;

    Ack Request(Peer const& device, ServiceChoice service, PropertyReference const& first,
                FormRequest const& form);
    MultipleRead::ListAnswer ReadList(Peer const& device, std::vector<PropertyReference> const& references);

    Link& link;
    ClientSettings const settings;
    Pace pace;
    PastRequests past;
    Observer observer;
    Exchange lastExchange;
    std::uint8_t nextInvokeId = 1;
    std::size_t requestCount = 0;
    std::vector<Peer> withoutMultiple;  // devices that do not know ReadPropertyMultiple
};

}  // namespace standard
