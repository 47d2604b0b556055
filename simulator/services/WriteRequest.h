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
    Octets value;                          // what stands between the brackets of parameter 3: whole tags
    std::optional<std::uint8_t> priority;  // 1 to 16

    // Throws Reject if the request isn't one.
    static WriteRequest Decode(TagReader& reader);
};

}  // namespace simulator
