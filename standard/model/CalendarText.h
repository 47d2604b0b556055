#pragma once

#include <optional>
#include <string>

#include "Calendar.h"

namespace standard {

// Dates and times as people write them; nothing for what is neither. "*" in place of a number means any.

// "2024-03-15", whose weekday is worked out, or "*-12-25", whose weekday is any.
std::optional<CalendarDate> DateOfText(std::string const& text);
// "08:00", "08:00:30" or "08:00:30.50".
std::optional<TimeOfDay> TimeOfText(std::string const& text);

}  // namespace standard
