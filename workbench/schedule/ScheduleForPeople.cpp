#include "ScheduleForPeople.h"

#include <cstddef>

#include "PeriodWords.h"
#include "ScheduleNames.h"
#include "ScheduleParts.h"
#include "TypedValue.h"

namespace workbench {

namespace {

std::string EntriesText(std::vector<ScheduleEntry> const& entries, ValueNames const& names) {
    std::string text;
    for (ScheduleEntry const& entry : entries) {
        text += (text.empty() ? "" : ", ") + PartText(entry.time) + " " + TypedText(entry.value, names);
    }
    return text.empty() ? "none" : text;
}

// "Mon-Wed, Sat" for the days whose entries are those of the first.
std::string DaysText(WeeklySchedule const& schedule, std::size_t first) {
    std::string text;
    for (std::size_t day = first; day < DaysOfWeek; ++day) {
        if (!(schedule.days[day] == schedule.days[first])) {
            continue;
        }
        std::size_t last = day;
        while (last + 1 < DaysOfWeek && schedule.days[last + 1] == schedule.days[first]) {
            ++last;
        }
        text += (text.empty() ? "" : ", ") + ShortWeekdayName(static_cast<unsigned>(day) + 1);
        text += last == day ? "" : "-" + ShortWeekdayName(static_cast<unsigned>(last) + 1);
        day = last;
    }
    return text;
}

bool IsFirstOfItsKind(WeeklySchedule const& schedule, std::size_t day) {
    for (std::size_t earlier = 0; earlier < day; ++earlier) {
        if (schedule.days[earlier] == schedule.days[day]) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::string WeeklyForPeople(WeeklySchedule const& schedule, ValueNames const& names) {
    std::string text;
    for (std::size_t day = 0; day < DaysOfWeek; ++day) {
        if (!schedule.days[day].empty() && IsFirstOfItsKind(schedule, day)) {
            text += (text.empty() ? "" : "; ") + DaysText(schedule, day) + " " +
                    EntriesText(schedule.days[day], names);
        }
    }
    return text.empty() ? "Mon-Sun none" : text;
}

std::string ExceptionForPeople(ExceptionSchedule const& schedule, ValueNames const& names) {
    std::string text;
    for (SpecialEvent const& event : schedule.events) {
        text += (text.empty() ? "" : "; ") + PeriodText(event.period) + " (priority " +
                std::to_string(event.priority) + ") " + EntriesText(event.entries, names);
    }
    return text.empty() ? "none" : text;
}

bool IsDriverText(std::string_view text) {
    std::size_t const end = text.find_first_not_of("0123456789");
    if (end == std::string_view::npos) {
        return false;
    }
    // A period of people begins with a year, "*" or a word.
    bool const isWeekly = text[end] == ';' || (text[end] == ',' && (end == 0 || end >= 8));
    return isWeekly || (text[end] == ',' && end == 1);
}

}  // namespace workbench
