#pragma once

#include <rapidjson/document.h>

#include <optional>
#include <string>
#include <variant>

#include "JsonFields.h"
#include "ScheduleModel.h"
#include "ValueNames.h"

namespace workbench {

// Schedules as JSON (docs/schedules.md, "The model"). "words" are written and not read.
//
//     {"kind":"weekly","days":[[{"time":"06:00","type":"real","value":"21.5","words":"21.5 °C"}],...]}
//     {"kind":"exception","events":[{"period":P,"priority":10,"words":"25 December 2026","entries":[...]}]}

void WriteSchedule(JsonWriter& writer, WeeklySchedule const& schedule, ValueNames const& names);
void WriteSchedule(JsonWriter& writer, ExceptionSchedule const& schedule, ValueNames const& names);
// The value as an entry has it: {"type":"real","value":"21.5","words":"21.5 °C"}.
void WriteScheduleValue(JsonWriter& writer, ScheduleValue const& value, ValueNames const& names);

// The mistake names the member: "days[0][2].time: \"25:00\" is not a time".
struct ScheduleOfJson {
    std::variant<std::monostate, WeeklySchedule, ExceptionSchedule> schedule;
    std::string mistake;
};

// Values are checked as lexical forms of their types, times and dates for their ranges.
ScheduleOfJson ReadScheduleJson(rapidjson::Value const& model);

// "2026-12-25" of a complete date.
std::string DayText(ScheduleDate const& day);

}  // namespace workbench
