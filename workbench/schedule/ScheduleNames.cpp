#include "ScheduleNames.h"

#include <strings.h>

#include <cstddef>
#include <iterator>

namespace workbench {

namespace {

constexpr char const* Weekdays[] = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                    "Friday", "Saturday", "Sunday"};
constexpr char const* Months[] = {"January",  "February", "March",      "April",      "May",
                                  "June",     "July",     "August",     "September",  "October",
                                  "November", "December", "odd months", "even months"};
constexpr char const* Weeks[] = {"first", "second",         "third",         "fourth",        "fifth",
                                 "last",  "second to last", "third to last", "fourth to last"};
constexpr char const* Types[] = {"null",   "boolean",      "unsigned",         "signed",     "real",
                                 "double", "octet-string", "character-string", "bit-string", "enumerated",
                                 "date",   "time",         "object-identifier"};
static_assert(std::size(Types) == ScheduleValueTypes);

constexpr std::size_t ShortName = 3;
constexpr std::size_t NamedMonths = 12;
constexpr std::size_t OneWordWeeks = 6;

template <std::size_t Count>
std::string Named(char const* const (&names)[Count], unsigned number) {
    return number >= 1 && number <= Count ? names[number - 1] : std::to_string(number);
}

bool IsSame(std::string_view left, std::string_view right) {
    return left.size() == right.size() && strncasecmp(left.data(), right.data(), left.size()) == 0;
}

std::optional<unsigned> Find(char const* const* names, std::size_t count, std::string_view name,
                             bool mayBeShort) {
    for (std::size_t i = 0; i < count; ++i) {
        std::string_view const full = names[i];
        if (IsSame(full, name) || (mayBeShort && IsSame(full.substr(0, ShortName), name))) {
            return static_cast<unsigned>(i + 1);
        }
    }
    return std::nullopt;
}

}  // namespace

std::string WeekdayName(unsigned weekday) {
    return Named(Weekdays, weekday);
}

std::string ShortWeekdayName(unsigned weekday) {
    return WeekdayName(weekday).substr(0, ShortName);
}

std::string MonthName(unsigned month) {
    return Named(Months, month);
}

std::string WeekName(unsigned week) {
    return Named(Weeks, week);
}

std::optional<unsigned> WeekdayOfName(std::string_view name) {
    return Find(Weekdays, std::size(Weekdays), name, true);
}

std::optional<unsigned> MonthOfName(std::string_view name) {
    return Find(Months, NamedMonths, name, true);
}

std::optional<unsigned> WeekOfName(std::string_view name) {
    return Find(Weeks, OneWordWeeks, name, false);
}

std::string TypeWord(ScheduleValueType type) {
    return Types[static_cast<std::size_t>(type)];
}

std::optional<ScheduleValueType> TypeOfWord(std::string_view word) {
    auto const number = Find(Types, std::size(Types), word, false);
    return number ? std::optional(static_cast<ScheduleValueType>(*number - 1)) : std::nullopt;
}

std::vector<std::string> TypeWords() {
    return {std::begin(Types), std::end(Types)};
}

}  // namespace workbench
