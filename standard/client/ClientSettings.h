#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace standard {

// How long a client waits, and how much it accepts. The limits hold for one request with all its retries, so
// a device that answers without end cannot hold the client.
struct ClientSettings {
    // APDU_Timeout: the wait after each sending of a request.
    std::chrono::milliseconds timeout{3000};
    // Number_Of_APDU_Retries: sendings after the first one.
    unsigned retries = 3;
    // APDU_Segment_Timeout. Four of them without a segment end a segmented answer (clause 5.4.4.3).
    std::chrono::milliseconds segmentTimeout{2000};
    // The largest window of segments, 1 to 127. The window that a device proposes counts if it is smaller.
    std::uint8_t windowSize = 16;
    // Octets of a ReadPropertyMultiple request; longer lists are several requests. MS/TP devices accept 480.
    // A device that accepts less aborts, and gets shorter lists.
    std::size_t longestRequest = 480;

    // The least time between two sendings of requests, retries too, to the same station; and to the stations
    // behind the same router. A time-out that is shorter is as long as it. SpacingOfRate gives it for a
    // number of requests a second.
    std::chrono::microseconds spacing{0};
    std::chrono::microseconds routedSpacing{0};

    std::chrono::milliseconds longestExchange{60000};
    // Octets of an answer, all segments together.
    std::size_t longestAnswer = 1 << 20;
    // Datagrams received, whoever sent them.
    std::size_t mostDatagrams = 65536;
};

}  // namespace standard
