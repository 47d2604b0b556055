#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <vector>

#include "Peer.h"
#include "PropertyReference.h"

namespace standard {

// How the answer to a request came, and what came besides.
struct Exchange {
    // The lists hold the first ones only; the counters count all.
    static constexpr std::size_t MostListed = 16;

    // An answer to an earlier request, which had been given up.
    struct Late {
        std::chrono::microseconds after;  // since that request was first sent
        PropertyReference reference;      // the first property of that request
    };

    unsigned attempts = 0;  // sendings of the request
    // The station that sent the answer or its first segment: the device, or of an address for all stations of
    // a network the one that answered first.
    std::optional<Peer> answeredBy;
    std::chrono::microseconds duration{0};   // from the first sending to the complete answer, or to the end
    std::chrono::microseconds sinceSent{0};  // the same from the last sending
    unsigned segments = 0;                   // of the answer; 0 if it was not segmented
    unsigned repeatedSegments = 0;
    unsigned lostSegments = 0;  // segments after a missing one, which is requested again

    // Late answers, which are dropped.
    std::size_t lateCount = 0;
    std::vector<Late> late;
    // Answers with the invoke id of the request from other stations than the one that was asked: from
    // another endpoint, or from another station that the router serves. They are dropped.
    std::size_t otherCount = 0;
    std::vector<Peer> others;
    // The router reported that it cannot reach the network: the reason of Reject-Message-To-Network (clause
    // 6.4.4). The client goes on waiting.
    std::optional<unsigned> routerReject;
    // All other datagrams: broadcasts, requests, repeated answers, octets that are not BACnet/IP.
    std::size_t foreignCount = 0;
};

}  // namespace standard
