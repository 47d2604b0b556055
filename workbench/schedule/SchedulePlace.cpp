#include "SchedulePlace.h"

#include "ScheduleNames.h"
#include "ScheduleParts.h"

namespace workbench {

std::string RemarkText(ScheduleRemark const& remark) {
    return remark.place.empty() ? remark.reason : remark.place + ": " + remark.reason;
}

std::string DayPlace(std::size_t day) {
    return WeekdayName(static_cast<unsigned>(day) + 1);
}

std::string DayPlace(std::size_t day, ScheduleTime const& time) {
    return DayPlace(day) + " " + PartText(time);
}

std::string EventPlace(std::size_t event) {
    return "event " + std::to_string(event + 1);
}

std::string EventPlace(std::size_t event, ScheduleTime const& time) {
    return EventPlace(event) + ", " + PartText(time);
}

}  // namespace workbench
