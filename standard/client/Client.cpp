#include "Client.h"

#include <algorithm>

#include "ReadRequests.h"

namespace standard {

namespace {

// A request to the wildcard instance of a Device object is answered with the device's own one
// (clause 15.5.2).
bool IsAnswerTo(PropertyReference const& asked, PropertyReference const& answered) {
    constexpr std::uint16_t deviceType = 8;
    PropertyReference expected = asked;
    if (asked.object == ObjectId{deviceType, ObjectId::LastInstance} && answered.object.type == deviceType) {
        expected.object = answered.object;
    }
    return expected == answered;
}

Failure Malformed(char const* detail) {
    return {Failure::Kind::Malformed, 0, 0, detail};
}

}  // namespace

Client::Client(Link& network, ClientSettings const& clientSettings)
    : link(network), settings(clientSettings), pace(settings.spacing, settings.routedSpacing) {}

ReadResult Client::Read(Peer const& device, PropertyReference const& reference) {
    Ack const ack = Request(device, ServiceChoice::ReadProperty, reference, [&](std::uint8_t invokeId) {
        return requests::ReadProperty(invokeId, reference);
    });
    if (ack.failure) {
        return {reference, {}, ack.failure};
    }
    auto result = parameters::OfReadPropertyAck(ack.content);
    if (!result) {
        return {reference, {}, Malformed("not the parameters of an answer to ReadProperty")};
    }
    if (!IsAnswerTo(reference, result->reference)) {
        return {reference, {}, Malformed("it is for another property")};
    }
    result->reference = reference;
    return *std::move(result);
}

std::vector<ReadResult> Client::ReadMultiple(Peer const& device,
                                             std::vector<PropertyReference> const& references) {
    bool const isKnown =
        std::find(withoutMultiple.begin(), withoutMultiple.end(), device) != withoutMultiple.end();
    MultipleRead read([&](auto const& list) { return ReadList(device, list); },
                      [&](auto const& reference) { return Read(device, reference); }, settings.longestRequest,
                      !isKnown);
    auto results = read.Run(references);
    if (read.IsWithoutLists() && !isKnown) {
        withoutMultiple.push_back(device);
    }
    return results;
}

MultipleRead::ListAnswer Client::ReadList(Peer const& device,
                                          std::vector<PropertyReference> const& references) {
    Ack const ack =
        Request(device, ServiceChoice::ReadPropertyMultiple, references.front(),
                [&](std::uint8_t invokeId) { return requests::ReadPropertyMultiple(invokeId, references); });
    if (ack.failure) {
        return {ack.failure, {}};
    }
    auto results = parameters::OfReadPropertyMultipleAck(ack.content);
    if (!results) {
        return {Malformed("not the parameters of an answer to ReadPropertyMultiple"), {}};
    }
    bool const isComplete =
        std::equal(references.begin(), references.end(), results->begin(), results->end(),
                   [](auto const& asked, auto const& result) { return IsAnswerTo(asked, result.reference); });
    if (!isComplete) {
        return {Malformed("it is for other properties"), {}};
    }
    for (std::size_t i = 0; i < references.size(); ++i) {
        (*results)[i].reference = references[i];
    }
    return {std::nullopt, *std::move(results)};
}

Ack Client::Request(Peer const& device, ServiceChoice service, PropertyReference const& first,
                    FormRequest const& form) {
    std::uint8_t const invokeId = nextInvokeId++;
    ++requestCount;
    lastExchange = Exchange();
    Link::Time const sentAt = link.Now();
    Ack ack =
        Transaction(link, settings, pace, past, device, lastExchange).Run(invokeId, service, form(invokeId));
    past.Add({invokeId, device, first, sentAt, lastExchange.answeredBy.has_value()});
    if (observer) {
        observer(lastExchange);
    }
    return ack;
}

}  // namespace standard
