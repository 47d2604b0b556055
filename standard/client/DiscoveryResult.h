#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "Peer.h"
#include "UnconfirmedServices.h"

namespace standard {

// A device as its I-Am states it, with the address that the I-Am came from.
struct FoundDevice {
    IAm iAm;
    Peer peer;
    std::chrono::milliseconds after{0};  // since the first question
    unsigned answers = 0;                // I-Ams of that instance from that address
    unsigned questions = 0;              // Who-Is requests that reach it
    bool usesBroadcast = false;          // at least one I-Am was a broadcast
    bool isContradictory = false;        // a later I-Am had other numbers than the first one, which is here

    std::uint32_t Instance() const { return iAm.device.instance; }
    // It answers more often than it was asked. A few programs send I-Am unasked, so this is a hint only: of a
    // loop, of two BBMDs for one subnet, of a router with two ways.
    bool AnswersTooOften() const { return answers > questions; }
};

// A router and the networks that it names, in the order of their numbers.
struct FoundRouter {
    Endpoint endpoint;
    std::vector<std::uint16_t> networks;
};

struct DiscoveryResult {
    struct Malformed {
        Peer peer;
        Octets apdu;
    };
    struct Rejected {
        Endpoint router;
        std::uint16_t network;
        std::uint8_t reason;
    };
    // The lists of what is wrong have the first ones only.
    static constexpr std::size_t MostListed = 16;

    // In the order of their instances, those with the same one in that of their addresses.
    std::vector<FoundDevice> devices;
    std::vector<FoundRouter> routers;  // in the order of their endpoints

    // I-Ams whose parameters cannot be read.
    std::vector<Malformed> malformed;
    std::size_t malformedCount = 0;
    // A router reported that it does not reach a network.
    std::vector<Rejected> rejected;
    // I-Ams of instances that were not asked for.
    std::size_t outsideCount = 0;
    // Why the registration as a foreign device, or the distribution of a question, failed; empty if it did
    // not.
    std::string failure;
    // The link was stopped, or a limit was reached: there may be more devices.
    bool isStopped = false;
    bool hasReachedLimit = false;

    // The devices with an instance that several addresses state, as indices into `devices` by instance. An
    // address is one of a device that is found in several ways if IsSameStation, otherwise there are several
    // devices with the instance, or one with several addresses.
    std::map<std::uint32_t, std::vector<std::size_t>> RepeatedInstances() const;
    // The devices whose address states several instances, as indices by the first of them.
    std::vector<std::vector<std::size_t>> SharedAddresses() const;
};

// The same station of the same network, through different routers.
bool IsSameStation(Peer const& left, Peer const& right);
// An order of addresses: by network, local ones first, then by MAC address or endpoint.
bool IsBefore(Peer const& left, Peer const& right);

}  // namespace standard
