#pragma once

#include <string>
#include <vector>

#include "Datum.h"

namespace workbench {

// A schedule of a device in the driver's grammar (docs/schedules.md), and what that grammar cannot hold of
// it.
struct ScheduleWords {
    std::string text;
    std::string lost;  // in words; empty for nothing
};

// The values of Weekly_Schedule and of Exception_Schedule (clause 21: BACnetDailySchedule and
// BACnetSpecialEvent). Values of another structure give the text "?", which no driver delivers.
ScheduleWords WeeklyWords(std::vector<standard::Datum> const& values);
ScheduleWords ExceptionWords(std::vector<standard::Datum> const& values);

}  // namespace workbench
