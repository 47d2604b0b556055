#pragma once

#include <string>
#include <vector>

#include "Datum.h"

namespace workbench {

// Schedules for people, a line for each day or event. Values of another structure than that of clause 21 are
// one line, as DatumText writes them.

// Weekly_Schedule: "Monday     08:00 21.5, 17:30 null". A day without entries has "-".
std::vector<std::string> WeeklyLines(std::vector<standard::Datum> const& values);
// Exception_Schedule: "2026-12-25: 00:00 16 (priority 10)", "2026-07-13 to 2026-08-21: ...", "Tuesday of the
// first week of December: ...", "calendar 7: ...".
std::vector<std::string> ExceptionLines(std::vector<standard::Datum> const& values);

}  // namespace workbench
