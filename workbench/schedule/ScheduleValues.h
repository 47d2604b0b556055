#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "ObjectId.h"
#include "ScheduleModel.h"

namespace workbench {

// The lexical forms of values (ScheduleModel.h).

// The usual spelling of the text: "21.50" is "21.5", "0AFF" "0aff", "007" "7". No value if the text is not a
// value of the type, or one that does not fit into the 32 bits of the driver's texts or into a Real.
std::optional<std::string> UsualText(ScheduleValueType type, std::string_view text);

// What UsualText accepts: "a number such as 21.5".
std::string FormOf(ScheduleValueType type);

// The number of a value with the usual spelling; of a Boolean 0 or 1.
double NumberOf(ScheduleValue const& value);
bool IsNumber(ScheduleValueType type);  // Unsigned, Signed, Real, Double, Enumerated

std::optional<standard::ObjectId> ObjectIn(std::string_view text);

}  // namespace workbench
