#pragma once

#include <cstdint>
#include <deque>
#include <optional>

#include "Link.h"
#include "Peer.h"
#include "PropertyReference.h"

namespace standard {

// The latest requests of a client, to recognise answers that come after a request was given up.
class PastRequests {
public:
    struct Request {
        std::uint8_t invokeId;
        Peer device;
        PropertyReference first;  // its first property
        Link::Time sentAt;        // for the first time
        bool isAnswered;
    };

    // Forgets the oldest request if there are more than a few.
    void Add(Request const& request);
    // The request that an answer of that station is for.
    Request const* Find(Peer const& station, std::uint8_t invokeId) const;

private:
    static constexpr std::size_t Most = 32;

    std::deque<Request> requests;
};

}  // namespace standard
