#include "ScheduleModel.h"

#include <tuple>

namespace workbench {

bool operator==(ScheduleTime const& left, ScheduleTime const& right) {
    return std::tie(left.hour, left.minute, left.second, left.hundredths) ==
           std::tie(right.hour, right.minute, right.second, right.hundredths);
}

bool operator==(ScheduleDate const& left, ScheduleDate const& right) {
    return std::tie(left.year, left.month, left.day, left.weekday) ==
           std::tie(right.year, right.month, right.day, right.weekday);
}

bool operator==(ScheduleValue const& left, ScheduleValue const& right) {
    return left.type == right.type && left.text == right.text;
}

bool operator==(ScheduleEntry const& left, ScheduleEntry const& right) {
    return left.time == right.time && left.value == right.value;
}

bool operator==(DateRange const& left, DateRange const& right) {
    return left.from == right.from && left.to == right.to;
}

bool operator==(WeekAndDay const& left, WeekAndDay const& right) {
    return std::tie(left.month, left.week, left.weekday) == std::tie(right.month, right.week, right.weekday);
}

bool operator==(CalendarReference const& left, CalendarReference const& right) {
    return left.instance == right.instance;
}

bool operator==(SpecialEvent const& left, SpecialEvent const& right) {
    return left.period == right.period && left.priority == right.priority && left.entries == right.entries;
}

bool operator==(WeeklySchedule const& left, WeeklySchedule const& right) {
    return left.days == right.days;
}

bool operator==(ExceptionSchedule const& left, ExceptionSchedule const& right) {
    return left.events == right.events;
}

}  // namespace workbench
