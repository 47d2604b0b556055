#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "Endpoint.h"
#include "Npdu.h"
#include "Project.h"
#include "PropertyServices.h"

namespace workbench {

// A request of the driver, decoded by the standard.
struct SeenRequest {
    int handle = -1;  // of the socket
    standard::Endpoint peer;
    std::optional<standard::NetworkAddress> destination;  // of a device behind a router
    std::uint8_t invokeId = 0;
    std::uint8_t serviceChoice = 0;
    std::uint32_t maxApduLength = 0;
    standard::ObjectId object;
    std::vector<std::uint32_t> properties;           // of a read
    std::optional<standard::WriteParameters> write;  // of a write
    long long steady = 0;                            // when it was sent, by the monotonic clock
    unsigned long long number = 0;                   // of the requests of the block, from 1
    unsigned long long cycle = 0;                    // in which it was sent
    VariableConfig const* variable = nullptr;        // of a write, where it is known
    bool isAnswered = false;
    bool isTimedOut = false;  // the wait for its answer has ended

    bool IsWrite() const { return write.has_value(); }

    // A request that reads or writes properties of one object. No value for any other datagram.
    static std::optional<SeenRequest> Decode(standard::Octets const& datagram);
};

// The latest requests of a block, in constant memory.
class RequestLog {
public:
    static constexpr std::size_t Kept = 32;

    SeenRequest& Add(SeenRequest request);
    // Null before the first request.
    SeenRequest* Latest();
    // The latest request before Latest with that invoke id, null for none.
    SeenRequest* FindEarlier(std::uint8_t invokeId);
    // Of the requests of a cycle that have timed out and have no answer: how many are sent at that time or
    // later, and the latest of the others, null for none.
    struct Open {
        unsigned long long count = 0;
        SeenRequest const* latestOther = nullptr;
    };
    Open OpenSince(unsigned long long cycle, long long steady) const;

private:
    std::array<SeenRequest, Kept> requests;
    std::size_t count = 0;
};

}  // namespace workbench
