#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ObjectRecord.h"

namespace workbench {

// Values in words for people, in one line each. Texts come as the device sent them.

// The unit of Present_Value: its symbol, or the number of a vendor's unit, "unit 512". Empty without one.
std::string UnitWords(ObjectRecord const& object);
// The text of the state that the number of Present_Value means; empty without one.
std::string StateWords(ObjectRecord const& object);
// Present_Value without unit and state: "21.5"; empty if it has none.
std::string PlainValue(ObjectRecord const& object);
// Present_Value: "21.5 °C", "2 (automatic)", "active (on)"; the reason in parentheses if it cannot be read:
// "(property: unknown-property)". Empty if it was not requested.
std::string ValueWords(ObjectRecord const& object);
// Status_Flags: "in-alarm, fault", "none"; empty without them.
std::string FlagWords(ObjectRecord const& object);
// Any property, in one line.
std::string PropertyWords(ObjectRecord const& object, std::uint32_t property);

// The name of a level of the priority array, 1 to 16 (clause 19.2): "Manual Operator"; empty for those
// without one.
std::string PriorityName(unsigned priority);
// The values of the levels in words; empty for those that are not commanded.
std::vector<std::string> PriorityValues(ObjectRecord const& object);
// The levels of the priority array, each with its name and value: " 8  Manual Operator  40". Only those that
// are commanded, or all of them.
std::vector<std::string> PriorityLines(ObjectRecord const& object, bool isEachShown);

}  // namespace workbench
