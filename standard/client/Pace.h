#pragma once

#include <chrono>
#include <map>

#include "Link.h"
#include "Peer.h"

namespace standard {

// When the next request may be sent to a station. The stations of other networks share the turn of their
// router.
class Pace {
public:
    // The least times between two requests to the same station of the local network, and to the same router.
    Pace(std::chrono::microseconds localSpacing, std::chrono::microseconds routedSpacing)
        : local(localSpacing), routed(routedSpacing) {}

    // A time in the past if it may be sent now.
    Link::Time NextTurn(Peer const& station) const;
    void NoteSent(Peer const& station, Link::Time at);

private:
    // Stations that are remembered; the others have had no request for long, or come one after the other.
    static constexpr std::size_t Most = 1024;

    std::chrono::microseconds const local;
    std::chrono::microseconds const routed;
    std::map<Endpoint, Link::Time> lastSent;
};

// The time between requests of which there are so many a second; none for 0.
constexpr std::chrono::microseconds SpacingOfRate(unsigned requestsPerSecond) {
    return std::chrono::microseconds(
        requestsPerSecond == 0 ? 0 : 1000000 / requestsPerSecond + (1000000 % requestsPerSecond != 0));
}

}  // namespace standard
