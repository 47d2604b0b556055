#pragma once

#include <optional>
#include <string>

#include "Calendar.h"

namespace standard {

// Reads dates and times as texts. No value for any other text. "*" instead of a number means "any".

// "2024-03-15", with its weekday, or "*-12-25", with any weekday.
std::optional<CalendarDate> DateOfText(std::string const& text);
// "08:00", "08:00:30" or "08:00:30.50".
std::optional<TimeOfDay> TimeOfText(std::string const& text);

}  // namespace standard
