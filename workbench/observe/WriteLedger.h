#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "Endpoint.h"
#include "Npdu.h"
#include "ObjectId.h"

namespace workbench {

// A priority of a property, in a device.
struct WriteTarget {
    standard::Endpoint peer;
    std::optional<standard::NetworkAddress> station;  // of a device behind a router
    standard::ObjectId object;
    std::uint32_t property = 0;
    std::uint32_t priority = 0;
};

bool operator<(WriteTarget const& left, WriteTarget const& right);

// A write that the device has acknowledged, or that has no answer: then the device may hold the value.
struct SentWrite {
    std::string variable;   // "Block.Variable"
    std::string reference;  // "analog-value 3 present-value"
    std::string value;
    bool isDefaultPriority = false;  // the request names none
    unsigned long long number = 0;   // of the request, in its block
    long long time = 0;              // when it was sent, by the monotonic clock
    bool isAcknowledged = false;
};

// What the devices hold at a priority, as far as the answers tell. Memory is bounded by the targets.
class WriteLedger {
public:
    // Of each target the latest writes, in order. All but the first have no answer, or came after it.
    using Writes = std::map<WriteTarget, std::vector<SentWrite>>;

    // More writes of one target without an answer are forgotten, the oldest first.
    static constexpr std::size_t Most = 8;

    void Sent(WriteTarget const& target, SentWrite write);
    // The answer to a request, also a late one: the writes before it are overwritten.
    void Acknowledged(WriteTarget const& target, unsigned long long number);
    void Refused(WriteTarget const& target, unsigned long long number);

    // Adds the writes of another block, which may be to the same targets.
    void Add(WriteLedger const& other);

    Writes const& All() const { return writes; }

private:
    static void DropOverwritten(std::vector<SentWrite>& list);

    Writes writes;
};

}  // namespace workbench
