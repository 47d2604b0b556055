#pragma once

#include <cstdint>

#include "ObjectId.h"
#include "OctetVector.h"

// The APDUs of a client that changes a device (clause 15.9).
namespace standard::requests {

constexpr std::uint32_t FirstPriority = 1;
constexpr std::uint32_t LastPriority = 16;

// WriteProperty of Null to the Present_Value: the object gives up what was commanded at that priority (clause
// 19.2). Its answer is not segmented and has up to 1476 octets.
Octets Relinquish(std::uint8_t invokeId, ObjectId const& object, std::uint32_t priority);

}  // namespace standard::requests
