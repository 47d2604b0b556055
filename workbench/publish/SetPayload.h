#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace workbench {

// What a command in JSON has: {"value": 21.5, "id": "a", "time": "2024-03-15T12:34:56Z"}, or the value alone,
// as JSON or as plain text: 21.5, "manual", manual.
struct SetPayload {
    static constexpr std::size_t Longest = 64 << 10;  // octets
    static constexpr std::size_t LongestId = 200;     // octets, as JSON
    static constexpr unsigned Deepest = 8;            // objects and lists in one another

    std::string value;              // as MakeSetRequest takes it; numbers with the digits that they had
    std::string id;                 // as JSON: a text or a number; empty without one
    std::optional<long long> time;  // a file time
    std::string mistake;            // empty if the payload is a command
};

// Reads without recursion, and not beyond the limits. Where there is a mistake, id is known if it came first.
// An id or a value that comes twice is a mistake; members of other names are not.
SetPayload ReadSetPayload(std::string const& payload);

}  // namespace workbench
