#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ScheduleModel.h"

namespace workbench {

// The words of schedules. A number without a name is written as a number.

std::string WeekdayName(unsigned weekday);       // "Monday" for 1
std::string ShortWeekdayName(unsigned weekday);  // "Mon"
std::string MonthName(unsigned month);           // "January"; "odd months", "even months" for 13, 14
std::string WeekName(unsigned week);             // "first" to "fifth", "last", "second to last", ...

// By the full name or its first three letters, without regard of letter case.
std::optional<unsigned> WeekdayOfName(std::string_view name);
std::optional<unsigned> MonthOfName(std::string_view name);  // 1 to 12
std::optional<unsigned> WeekOfName(std::string_view name);   // one word: 1 to 6

// "null", "boolean", ..., "object-identifier".
std::string TypeWord(ScheduleValueType type);
std::optional<ScheduleValueType> TypeOfWord(std::string_view word);
std::vector<std::string> TypeWords();

}  // namespace workbench
