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

// Reads the device of one block by the standard. A device that has stopped answering is not asked again: of a
// list without any answer, the Device object decides whether it is the device or only these objects.
class DeviceSource {
public:
    // The client must outlive the source.
    DeviceSource(standard::Client& standardClient, standard::Peer devicePeer);

    // The answers in the order of the references.
    std::vector<DeviceAnswerTime> Read(std::vector<standard::PropertyReference> const& references);

    // No request is sent any more: the failure of the last ones.
    std::optional<standard::Failure> const& GivenUp() const { return givenUp; }

    standard::Peer const& Device() const { return peer; }
    // Stations that have answered in place of the device, in words.
    std::set<std::string> const& Others() const { return others; }
    // The reason for which a router cannot reach the network.
    std::optional<unsigned> RouterReject() const { return routerReject; }

    // The Device object, whatever its instance is (clause 12.11).
    static standard::ObjectId AnyDevice();

private:
    void Note(standard::Exchange const& exchange);
    standard::ReadResult ReadIdentifier();
    void Judge(std::vector<standard::ReadResult> const& results);

    standard::Client& client;
    standard::Peer peer;
    std::optional<standard::Failure> givenUp;
    unsigned inSuccession = 0;  // lists without an answer
    unsigned altogether = 0;
    std::chrono::milliseconds lateAfter{0};  // of the quickest answer that was not expected any more; 0: none
    std::set<std::string> others;
    std::optional<unsigned> routerReject;
};

}  // namespace workbench
