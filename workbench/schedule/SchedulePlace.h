#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "ScheduleModel.h"

namespace workbench {

// What is to be said of a place in a schedule.
struct ScheduleRemark {
    std::string place;   // "Monday 06:00", "event 2, 06:00", "event 2"; empty for the whole schedule
    std::string reason;  // one line
};
using ScheduleRemarks = std::vector<ScheduleRemark>;

// "Monday 06:00: the reason", or the reason alone without a place.
std::string RemarkText(ScheduleRemark const& remark);

// Days and events are counted from 0, and named from "Monday" and "event 1".
std::string DayPlace(std::size_t day);
std::string DayPlace(std::size_t day, ScheduleTime const& time);
std::string EventPlace(std::size_t event);
std::string EventPlace(std::size_t event, ScheduleTime const& time);

}  // namespace workbench
