#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "SchedulePlace.h"
#include "ValueNames.h"

namespace workbench {

// Schedules as people type them (docs/schedules.md, "A schedule for people"):
//
//     Mon 06:00 21.5 °C, 20:00 17 °C; Tue-Fri 06:00 21.5, 20:00 17
//     2026-12-25 (priority 10) 00:00 16 °C; last Friday in December 12:00 null
//
// A value of another type than that of the names has the type's name before it: "06:00 unsigned 2".

// One line. What is written is read as the same schedule with the same names.
std::string WeeklyForPeople(WeeklySchedule const& schedule, ValueNames const& names);
std::string ExceptionForPeople(ExceptionSchedule const& schedule, ValueNames const& names);

// The mistake names the part of the text, what is allowed, and an example.
template <typename Schedule>
struct TypedSchedule {
    std::optional<Schedule> schedule;
    std::string mistake;
};

TypedSchedule<WeeklySchedule> WeeklyOfPeople(std::string_view text, ValueNames const& names);
TypedSchedule<ExceptionSchedule> ExceptionOfPeople(std::string_view text, ValueNames const& names);

// Whether a text that is set for a schedule is meant in the form of the driver: it begins like one.
bool IsDriverText(std::string_view text);

}  // namespace workbench
