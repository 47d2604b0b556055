#pragma once

#include <optional>

#include "ObjectId.h"
#include "PropertyId.h"
#include "Standard.h"
#include "TagReader.h"

namespace simulator {

// The parameters of a WriteProperty request (clause 15.9.1.1).
struct WriteRequest {
    ObjectId object;
    PropertyId property;
    std::optional<std::uint32_t> index;
    Octets value;                          // between opening and closing tag 3: whole tags
    std::optional<std::uint8_t> priority;  // 1 to 16

    // Throws Reject for an invalid request.
    static WriteRequest Decode(TagReader& reader);
};

}  // namespace simulator
