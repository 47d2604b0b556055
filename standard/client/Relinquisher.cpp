#include "Relinquisher.h"

#include "PropertyId.h"
#include "WriteRequests.h"

namespace standard {

Relinquisher::Relinquisher(Link& network, ClientSettings const& clientSettings)
    : link(network), settings(clientSettings), pace(settings.spacing, settings.routedSpacing) {}

std::optional<Failure> Relinquisher::Relinquish(Peer const& device, ObjectId const& object,
                                                std::uint32_t priority) {
    lastExchange = Exchange();
    if (priority < requests::FirstPriority || priority > requests::LastPriority) {
        return Failure{
            Failure::Kind::Malformed, 0, 0,
            "not requested: the priority \"" + std::to_string(priority) + "\" is not one of 1 to 16"};
    }
    std::uint8_t const invokeId = nextInvokeId++;
    Link::Time const sentAt = link.Now();
    Ack const ack =
        Transaction(link, settings, pace, past, device, lastExchange)
            .Run(invokeId, ServiceChoice::WriteProperty, requests::Relinquish(invokeId, object, priority));
    past.Add({invokeId,
              device,
              {object, static_cast<std::uint32_t>(PropertyId::Present_Value), {}},
              sentAt,
              lastExchange.answeredBy.has_value()});
    if (observer) {
        observer(lastExchange);
    }
    return ack.failure;
}

}  // namespace standard
