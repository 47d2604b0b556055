#pragma once

#include <vector>

#include "ScheduleModel.h"

namespace workbench {

// Whether the day, which is complete, is one of the date or the period (clause 21: BACnetDate,
// BACnetDateRange, BACnetWeekNDay). An unspecified date opens its end of a range. No day is one of a calendar
// reference: the Calendar object is not known here.
bool IsDayOf(ScheduleDate const& pattern, ScheduleDate const& day);
bool IsDayOf(Period const& period, ScheduleDate const& day);

// The days of the year on which the event is in force, as complete dates in ascending order.
std::vector<ScheduleDate> DaysOf(SpecialEvent const& event, unsigned year);

// The complete date with its weekday; the day after it.
ScheduleDate CompleteDate(unsigned year, unsigned month, unsigned day);
ScheduleDate NextDay(ScheduleDate const& day);

}  // namespace workbench
