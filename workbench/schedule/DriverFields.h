#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "ScheduleModel.h"

namespace workbench {

// Single fields of the texts of docs/schedules.md. The driver writes an unspecified part as the digits of
// 255, in a date cut to the width of the part; so some texts can mean two things. A reading has the likelier
// one, and the note says what else it can be.

template <typename Part>
struct FieldReading {
    std::optional<Part> part;  // none: the text is not such a field
    std::string note = {};     // empty: there is nothing else that it can mean
};

// The time of an entry: two digits each, three for 255.
FieldReading<ScheduleTime> EntryTimeOf(std::string_view field);
// A value of type 11: all but the last part are cut to two digits.
FieldReading<ScheduleTime> TimeValueOf(std::string_view field);
// Nine characters: weekday, day, month, year; "*" at the start of a part that is unspecified.
FieldReading<ScheduleDate> DateOf(std::string_view field);
// Month, week and weekday: "**" and "*" for 0, the digits of 255.
FieldReading<WeekAndDay> WeekAndDayOf(std::string_view field);

// As the driver accepts them. The parts are those of the standard; a time is complete.
std::string TimeField(ScheduleTime const& time);
std::string DateField(ScheduleDate const& date);
std::string WeekAndDayField(WeekAndDay const& days);

// The date as it is read again after the driver has delivered it.
ScheduleDate DeliveredDate(ScheduleDate const& date);

}  // namespace workbench
