#pragma once

#include <cstdint>

namespace standard {

// A BACnet object: type (10 bits) and instance (22 bits), clause 20.2.14.
struct ObjectId {
    std::uint16_t type = 0;
    std::uint32_t instance = 0;

    static ObjectId Of(std::uint32_t encoded) {
        return {static_cast<std::uint16_t>(encoded >> 22), encoded & LastInstance};
    }
    std::uint32_t Encoded() const { return static_cast<std::uint32_t>(type) << 22 | instance; }

    // The instance of the device that receives a request, whatever its own instance is (clause 12.11). No
    // object has it.
    static constexpr std::uint32_t LastInstance = 0x3FFFFF;
};

inline bool operator==(ObjectId const& left, ObjectId const& right) {
    return left.Encoded() == right.Encoded();
}
inline bool operator<(ObjectId const& left, ObjectId const& right) {
    return left.Encoded() < right.Encoded();
}

}  // namespace standard
