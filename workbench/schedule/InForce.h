#pragma once

#include <optional>
#include <string>

#include "ScheduleModel.h"
#include "SchedulePlace.h"
#include "ValueNames.h"

namespace workbench {

// A local instant: the date and the time are complete.
struct ScheduleInstant {
    ScheduleDate date;
    ScheduleTime time;
};

// What a schedule has in force for some time.
struct ValueInForce {
    std::optional<ScheduleValue> value;  // none: the default of the Schedule object (Schedule_Default)
    std::string source;     // "weekly schedule, Monday", "event 2 (25 December 2026), priority 10", "default"
    std::string words;      // "21.5 °C"; "the default" without a value
    ScheduleInstant since;  // at the earliest the beginning of the day
    std::optional<ScheduleInstant> until;  // none: no change within a year, or none was found
};

struct ScheduleInForce {
    std::optional<ValueInForce> now;   // none without any schedule
    std::optional<ValueInForce> next;  // from now's "until" on
    ScheduleRemarks notes;             // calendars that are not known, times that are not complete
};

// By clause 12.24.4: each day begins without a value, and an entry of the day before does not last over
// midnight. In force is the event of this day with the highest priority, the first of those with the same,
// whose last entry up to now is not Null; then the weekly schedule; then the default. Null pointers stand for
// schedules that are not known. The Effective_Period of the object is not known here.
ScheduleInForce InForce(WeeklySchedule const* weekly, ExceptionSchedule const* exception,
                        ScheduleInstant const& now, ValueNames const& names);

// "2026-12-25T06:00:00", with hundredths if there are any.
std::string InstantText(ScheduleInstant const& instant);

}  // namespace workbench
