#pragma once

#include <string>
#include <vector>

#include "ScheduleModel.h"
#include "ValueNames.h"

namespace workbench {

// The schedule with values in their usual spelling ("21.50" is "21.5"), with the entries of a day in the
// order of their times, and with the weekday of complete dates. It has the same meaning.
WeeklySchedule Normalised(WeeklySchedule schedule);
ExceptionSchedule Normalised(ExceptionSchedule schedule);

// Whether both mean the same; the order of events counts.
bool SameSchedule(WeeklySchedule const& left, WeeklySchedule const& right);
bool SameSchedule(ExceptionSchedule const& left, ExceptionSchedule const& right);

// What differs, in sentences: "Monday: 06:00 21.5 °C added", "Monday 20:00: 17 °C becomes 16 °C", "event 2
// (25 December 2026) removed". Days with the same changes are one sentence ("Monday to Friday: ..."). None
// for the same schedule.
std::vector<std::string> Changes(WeeklySchedule const& before, WeeklySchedule const& after,
                                 ValueNames const& names);
std::vector<std::string> Changes(ExceptionSchedule const& before, ExceptionSchedule const& after,
                                 ValueNames const& names);

}  // namespace workbench
