#pragma once

#include <cstdint>

namespace standard {

// BACnetEngineeringUnits (clause 21) from 0 on, such as "degrees-celsius".
constexpr std::uint32_t UnitNameCount = 255;
extern char const* const UnitNames[UnitNameCount];

}  // namespace standard
