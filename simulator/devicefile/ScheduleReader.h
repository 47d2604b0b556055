#pragma once

#include <vector>

#include "Script.h"
#include "Value.h"

namespace simulator {

// Weekly_Schedule: the seven days, Monday first, of a table such as
//     {monday = {{"08:00", real(21.5)}, {"17:30", null()}}, saturday = {...}}
// A missing day has no entries. Throws Mistake.
std::vector<ValuePtr> ReadWeeklySchedule(ScriptValue const& value);

// Exception_Schedule: a list of events such as
//     {{date = "2024-12-25", priority = 10, entries = {{"00:00", real(16)}}}, ...}
// each with one period: date, from and to, week_n_day = {month, week, day} (a missing one means any), or
// calendar, the instance of a Calendar object. The priority is 16 by default. Throws Mistake.
std::vector<ValuePtr> ReadExceptionSchedule(ScriptValue const& value);

}  // namespace simulator
