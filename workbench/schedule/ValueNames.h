#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ScheduleModel.h"

namespace workbench {

// What the project says of the values of a schedule.
struct ValueNames {
    std::string unit;                     // as it is shown, "°C"; empty without one
    std::vector<std::string> stateTexts;  // empty without any
    // The type of a number or state text that is typed without one; none: Real for numbers.
    std::optional<ScheduleValueType> type;
};

// A value for people: "21.5 °C", "2 (automatic)", "true (on)", "\"hello\"", "null". The first state text is
// that of false and of 0 for Boolean and Enumerated, and that of 1 for numbers.
std::string ValueWords(ScheduleValue const& value, ValueNames const& names);

// "06:00 21.5 °C".
std::string EntryWords(ScheduleEntry const& entry, ValueNames const& names);

// The state text of the value; none without one.
std::optional<std::string> StateText(ScheduleValue const& value, ValueNames const& names);

// The type that all values other than Null have; none if they differ, or without a value.
std::optional<ScheduleValueType> CommonType(WeeklySchedule const& schedule);
std::optional<ScheduleValueType> CommonType(ExceptionSchedule const& schedule);

}  // namespace workbench
