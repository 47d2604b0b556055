#include "DeviceSource.h"

#include <algorithm>
#include <utility>

#include "BlockAddress.h"
#include "Judge.h"
#include "PropertyId.h"

namespace workbench {

namespace {

constexpr std::uint16_t DeviceType = 8;

// So many objects without an answer are enough, although the device answers for others.
constexpr unsigned MostInSuccession = 3;
constexpr unsigned MostAltogether = 10;

std::chrono::milliseconds Milliseconds(std::chrono::microseconds time) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(time);
}

// The answer to a repeated request may belong to the first one. It counts as late only if the last one was
// answered late too. The time in which lost segments are requested again is the network's.
std::chrono::milliseconds TimeOf(standard::Exchange const& exchange) {
    auto const last = Milliseconds(exchange.sinceSent);
    bool const isRepaired = exchange.lostSegments > 0 || exchange.repeatedSegments > 0;
    return isRepaired             ? std::chrono::milliseconds(0)
           : last > DriverTimeout ? Milliseconds(exchange.duration)
                                  : last;
}

bool IsNoAnswer(standard::ReadResult const& result) {
    return result.failure && (result.failure->kind == standard::Failure::Kind::Silent ||
                              result.failure->kind == standard::Failure::Kind::Malformed ||
                              result.failure->kind == standard::Failure::Kind::Incomplete);
}

}  // namespace

DeviceSource::DeviceSource(standard::Client& standardClient, standard::Peer devicePeer)
    : client(standardClient), peer(std::move(devicePeer)), answeredBy(peer) {}

void DeviceSource::BeginRound() {
    if (++rounds > 1) {
        givenUp.reset();
        lateAfter = {};
    }
    inSuccession = altogether = 0;
}

standard::ObjectId DeviceSource::AnyDevice() {
    return {DeviceType, standard::ObjectId::LastInstance};
}

std::vector<DeviceAnswerTime> DeviceSource::Read(std::vector<standard::PropertyReference> const& references) {
    std::vector<DeviceAnswerTime> answers;
    if (givenUp) {
        for (standard::PropertyReference const& reference : references) {
            answers.push_back({{reference, {}, givenUp}, lateAfter});
        }
        return answers;
    }
    slowest = {};
    client.OnExchange([this](standard::Exchange const& exchange) { Note(exchange); });
    std::vector<standard::ReadResult> results = client.ReadMultiple(peer, references);
    std::chrono::milliseconds const time = slowest;
    Judge(results);
    client.OnExchange({});
    for (standard::ReadResult& result : results) {
        std::chrono::milliseconds const elapsed = IsNoAnswer(result) ? lateAfter : time;
        answers.push_back({std::move(result), elapsed});
    }
    return answers;
}

void DeviceSource::Note(standard::Exchange const& exchange) {
    if (exchange.answeredBy) {
        answeredBy = *exchange.answeredBy;
        slowest = std::max(slowest, TimeOf(exchange));
    }
    for (standard::Peer const& other : exchange.others) {
        others.insert(PeerText(other));
    }
    for (standard::Exchange::Late const& late : exchange.late) {
        auto const after = Milliseconds(late.after);
        lateAfter = lateAfter.count() == 0 ? after : std::min(lateAfter, after);
    }
    routerReject = exchange.routerReject ? exchange.routerReject : routerReject;
}

void DeviceSource::Judge(std::vector<standard::ReadResult> const& results) {
    if (results.empty() || !std::all_of(results.begin(), results.end(), IsNoAnswer)) {
        inSuccession = 0;
        return;
    }
    bool const isEnough = ++inSuccession >= MostInSuccession || ++altogether >= MostAltogether;
    // A device that does not answer for its Device object may still do so for others.
    bool const isDevice = results.front().reference.object == AnyDevice();
    if (isEnough || (!isDevice && IsNoAnswer(ReadIdentifier()))) {
        GiveUp(*results.front().failure);
    }
}

void DeviceSource::GiveUp(standard::Failure const& failure) {
    givenUp = lastFailure = failure;
    ++roundsGivenUp;
}

standard::ReadResult DeviceSource::ReadIdentifier() {
    return client.Read(
        peer,
        {AnyDevice(), static_cast<std::uint32_t>(standard::PropertyId::Object_Identifier), std::nullopt});
}

}  // namespace workbench
