#pragma once

#include <string>

#include "ScheduleModel.h"

namespace workbench {

// A period in words: "25 December 2026", "every 25 December", "every Friday in December 2026", "13 July 2026
// to 21 August 2026", "every last Friday in December", "days 8 to 14 of odd months", "every day", "the days
// of calendar 7".
std::string PeriodWords(Period const& period);

// The same for text that is typed: "2026-12-25", "*-12-25", "2026-07-13 to 2026-08-21", "last Friday in
// December", "calendar 7". A weekday that does not follow from the date is in front: "Friday 2026-12-*".
std::string PeriodText(Period const& period);

}  // namespace workbench
