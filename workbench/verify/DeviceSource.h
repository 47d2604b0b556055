#pragma once

#include <chrono>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Client.h"

namespace workbench {

// The answer to one property, and how long the device took for it.
struct DeviceAnswerTime {
    standard::ReadResult result;
    std::chrono::milliseconds elapsed{0};
};

// Reads the device of one block by the standard, round after round. A device that has stopped answering is
// not asked again in the same round: of a list without any answer, the Device object decides whether it is
// the device or only these objects.
class DeviceSource {
public:
    // The client must outlive the source.
    DeviceSource(standard::Client& standardClient, standard::Peer devicePeer);

    // The first round includes what is read before it. In each further one the device is asked again,
    // although it was given up.
    void BeginRound();

    // The answers in the order of the references.
    std::vector<DeviceAnswerTime> Read(std::vector<standard::PropertyReference> const& references);

    // No request is sent any more in this round: the failure of the last ones.
    std::optional<standard::Failure> const& GivenUp() const { return givenUp; }

    // The rounds that have begun, how many of them gave the device up, and the failure of the latest of
    // those.
    unsigned long long Rounds() const { return rounds; }
    unsigned long long RoundsGivenUp() const { return roundsGivenUp; }
    standard::Failure const& LastFailure() const { return lastFailure; }

    standard::Peer const& Device() const { return peer; }
    // The station that has answered; the device itself if none has.
    standard::Peer const& AnsweredBy() const { return answeredBy; }
    // Stations that have answered in place of the device, in words.
    std::set<std::string> const& Others() const { return others; }
    // The reason for which a router cannot reach the network.
    std::optional<unsigned> RouterReject() const { return routerReject; }

    // The Device object, whatever its instance is (clause 12.11).
    static standard::ObjectId AnyDevice();

private:
    // Of each request that a list takes.
    void Note(standard::Exchange const& exchange);
    void GiveUp(standard::Failure const& failure);
    standard::ReadResult ReadIdentifier();
    void Judge(std::vector<standard::ReadResult> const& results);

    standard::Client& client;
    standard::Peer peer;
    standard::Peer answeredBy;
    std::optional<standard::Failure> givenUp;
    standard::Failure lastFailure;
    unsigned long long rounds = 0;
    unsigned long long roundsGivenUp = 0;
    unsigned inSuccession = 0;  // lists without an answer in this round
    unsigned altogether = 0;
    std::chrono::milliseconds slowest{0};    // answer to one of the requests of a list
    std::chrono::milliseconds lateAfter{0};  // of the quickest answer that was not expected any more; 0: none
    std::set<std::string> others;
    std::optional<unsigned> routerReject;
};

}  // namespace workbench
