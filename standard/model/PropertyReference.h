#pragma once

#include <cstdint>
#include <optional>
#include <tuple>

#include "ObjectId.h"

namespace standard {

// A property of an object, or one element of it if it is an array. Index 0 is the number of elements.
struct PropertyReference {
    ObjectId object;
    std::uint32_t property = 0;
    std::optional<std::uint32_t> index;
};

inline bool operator==(PropertyReference const& left, PropertyReference const& right) {
    return left.object == right.object && left.property == right.property && left.index == right.index;
}
inline bool operator<(PropertyReference const& left, PropertyReference const& right) {
    return std::tie(left.object, left.property, left.index) <
           std::tie(right.object, right.property, right.index);
}

}  // namespace standard
