#pragma once

#include <optional>
#include <string>

#include "PagePlant.h"
#include "ReadSchedule.h"

namespace workbench {

constexpr unsigned FirstYear = 1900;
constexpr unsigned LastYear = 2154;

// The text that the driver has read last; none before the first.
std::optional<std::string> ScheduleTextNow(PagePlant const& plant, PageVariable const& variable);

// The JSON of a schedule for people (docs/page.md), with the days of its events in a year; 0 for the current
// one. What is in force is by the local time of this machine.
std::string ScheduleAnswer(PagePlant const& plant, PageVariable const& variable, unsigned year);

}  // namespace workbench
