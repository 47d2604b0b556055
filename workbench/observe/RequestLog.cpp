#include "RequestLog.h"

#include <algorithm>
#include <utility>

#include "AnswerPdu.h"
#include "ConfirmedRequest.h"
#include "Frame.h"

namespace workbench {

using standard::ServiceChoice;

namespace {

constexpr unsigned ConfirmedRequestType = 0;

bool ReadParameters(SeenRequest& request, standard::Octets const& apdu, std::size_t at) {
    if (request.serviceChoice == static_cast<std::uint8_t>(ServiceChoice::WriteProperty)) {
        request.write = standard::parameters::OfWriteProperty(apdu, at);
        if (request.write) {
            request.object = request.write->reference.object;
        }
        return request.write.has_value();
    }
    if (request.serviceChoice != static_cast<std::uint8_t>(ServiceChoice::ReadPropertyMultiple)) {
        return false;
    }
    auto const references = standard::parameters::OfReadPropertyMultiple(apdu, at);
    if (!references || references->empty()) {
        return false;
    }
    request.object = references->front().object;
    for (standard::PropertyReference const& reference : *references) {
        request.properties.push_back(reference.property);
    }
    return true;
}

}  // namespace

std::optional<SeenRequest> SeenRequest::Decode(standard::Octets const& datagram) {
    std::optional<standard::Npdu> const npdu = standard::Npdu::Decode(NpduOf(datagram));
    if (!npdu || npdu->isNetworkMessage || npdu->content.empty() ||
        standard::OctetValue(npdu->content.front()) >> 4 != ConfirmedRequestType) {
        return std::nullopt;
    }
    auto const header = standard::ConfirmedRequest::Decode(npdu->content);
    if (!header || header->isSegmented) {
        return std::nullopt;
    }
    SeenRequest request;
    request.destination = npdu->destination;
    request.invokeId = header->invokeId;
    request.serviceChoice = header->serviceChoice;
    request.maxApduLength = header->maxApduLength;
    return ReadParameters(request, npdu->content, header->parametersAt) ? std::optional(std::move(request))
                                                                        : std::nullopt;
}

SeenRequest& RequestLog::Add(SeenRequest request) {
    SeenRequest& latest = requests[count++ % Kept];
    latest = std::move(request);
    latest.number = count;
    return latest;
}

SeenRequest* RequestLog::Latest() {
    return count == 0 ? nullptr : &requests[(count - 1) % Kept];
}

SeenRequest* RequestLog::FindEarlier(std::uint8_t invokeId) {
    for (std::size_t back = 2; back <= std::min(count, Kept); ++back) {
        SeenRequest& request = requests[(count - back) % Kept];
        if (request.invokeId == invokeId) {
            return &request;
        }
    }
    return nullptr;
}

RequestLog::Open RequestLog::OpenSince(unsigned long long cycle, long long steady) const {
    Open open;
    for (std::size_t back = 1; back <= std::min(count, Kept); ++back) {
        SeenRequest const& request = requests[(count - back) % Kept];
        if (request.cycle != cycle || !request.isTimedOut || request.isAnswered) {
            continue;
        }
        if (request.steady >= steady) {
            ++open.count;
        } else if (!open.latestOther) {
            open.latestOther = &request;
        }
    }
    return open;
}

}  // namespace workbench
