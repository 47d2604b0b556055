#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "SchedulePlace.h"

namespace workbench {

// Reads the text that the driver delivers for a schedule (docs/schedules.md). The length field of a value
// says where it ends, so that values with "," and ";" are read as they are. Any octets may come: the work and
// the memory are in proportion to the length of the text.

// Longer texts are a mistake.
constexpr std::size_t LongestScheduleText = 1 << 20;

// Without a schedule the mistake says why and where. The notes say what the text leaves open, and what was
// assumed: a part of a date that may be unspecified, entries and events that the driver leaves out.
template <typename Schedule>
struct ScheduleReading {
    std::optional<Schedule> schedule;
    ScheduleRemark mistake;
    ScheduleRemarks notes;
};

ScheduleReading<WeeklySchedule> ReadWeekly(std::string_view text);
ScheduleReading<ExceptionSchedule> ReadException(std::string_view text);

}  // namespace workbench
