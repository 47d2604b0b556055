#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "ScheduleModel.h"

namespace workbench {

// Times and dates as texts, and what is wrong with them.

// "06:00", "06:00:30", "06:00:30.50"; "*" for an unspecified part: "*:30".
std::string PartText(ScheduleTime const& time);
std::optional<ScheduleTime> TimeOfDayIn(std::string_view text);

// "2026-12-25", "*-12-25", "2026-odd-last", "*-even-*". A weekday that does not follow from the date is in
// front: "Friday 2026-12-*". A complete date without one is read with its weekday.
std::string PartText(ScheduleDate const& date);
std::optional<ScheduleDate> DateIn(std::string_view text);

// Whether year, month and day are those of one day.
bool IsComplete(ScheduleDate const& date);
// Whether all parts are there and in their ranges.
bool IsComplete(ScheduleTime const& time);
// The date with the weekday that it has, if it is complete and has no weekday.
ScheduleDate WithWeekday(ScheduleDate date);

// Why the standard does not allow it: "hour 24 is not one of 0 to 23". Empty if it does.
std::string MistakeOf(ScheduleTime const& time);
std::string MistakeOf(ScheduleDate const& date);
std::string MistakeOf(Period const& period);
std::string MistakeOfPriority(unsigned priority);

}  // namespace workbench
