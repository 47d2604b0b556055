#include "PollGuard.h"

#include <algorithm>
#include <utility>

#include "AnswerPdu.h"
#include "ConfirmedRequest.h"
#include "Npdu.h"
#include "Refusal.h"
#include "TagReader.h"

namespace workbench {

namespace {

constexpr long long TicksPerMillisecond = 10'000;
constexpr int BvlcHeader = 4;

// APDU types of ASHRAE 135, clause 20.1.
constexpr int ConfirmedRequestType = 0;
constexpr int SegmentAckType = 4;

// The APDU of a datagram. The length in its BVLC header is not checked: the driver's is wrong from 256 octets
// up.
std::optional<standard::Octets> ApduOf(void const* data, int length) {
    if (length <= BvlcHeader) {
        return std::nullopt;
    }
    auto const* const octets = static_cast<std::uint8_t const*>(data);
    auto npdu = standard::Npdu::Decode(standard::Octets(octets + BvlcHeader, octets + length));
    if (!npdu || npdu->isNetworkMessage || npdu->content.empty()) {
        return std::nullopt;
    }
    return std::move(npdu->content);
}

bool IsRead(std::uint8_t serviceChoice) {
    auto const service = static_cast<standard::ServiceChoice>(serviceChoice);
    return service == standard::ServiceChoice::ReadProperty ||
           service == standard::ServiceChoice::ReadPropertyMultiple;
}

// The object of a read; no value if the request is something else.
std::optional<standard::ObjectId> ObjectOfRead(standard::Octets const& apdu) {
    auto const request = standard::ConfirmedRequest::Decode(apdu);
    if (!request || request->isSegmented || !IsRead(request->serviceChoice)) {
        return std::nullopt;
    }
    try {
        return standard::TagReader(apdu, request->parametersAt).ObjectIdentifier(0);
    } catch (standard::Reject const&) {
        return std::nullopt;
    }
}

}  // namespace

PollGuard::PollGuard(dorvel::HostEnvironment& innerEnvironment, std::function<bool()> isStopped)
    : ForwardingEnvironment(innerEnvironment), stopped(std::move(isStopped)) {}

void PollGuard::BeginCycle(std::chrono::milliseconds limit) {
    end = inner.SteadyNow() + limit.count() * TicksPerMillisecond;
    isOver = false;
    lastObject.reset();
}

bool PollGuard::MayGoOn() {
    isOver = isOver || inner.SteadyNow() >= end;
    return !isOver && !stopped();
}

bool PollGuard::Send(int handle, sockaddr_in const& peer, void const* data, int length) {
    if (!MayGoOn()) {
        return false;
    }
    auto const apdu = ApduOf(data, length);
    int const type = apdu ? static_cast<std::uint8_t>(apdu->front()) >> 4 : -1;
    auto const object = type == ConfirmedRequestType ? ObjectOfRead(*apdu) : std::nullopt;
    if (!object && type != SegmentAckType) {
        ++withheld;
        return false;
    }
    lastObject = object ? object : lastObject;
    return inner.Send(handle, peer, data, length);
}

int PollGuard::Receive(int handle, sockaddr_in& sender, void* buffer, int size, int timeout) {
    if (!MayGoOn()) {
        return -1;
    }
    long long const left = (end - inner.SteadyNow()) / TicksPerMillisecond;
    return inner.Receive(handle, sender, buffer, size,
                         static_cast<int>(std::min<long long>(timeout, std::max<long long>(left, 0))));
}

}  // namespace workbench
