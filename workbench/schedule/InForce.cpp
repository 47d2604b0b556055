#include "InForce.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <tuple>
#include <vector>

#include "PeriodWords.h"
#include "ScheduleCalendar.h"
#include "ScheduleParts.h"
#include "ScheduleValues.h"

namespace workbench {

namespace {

// How far a change is looked for, and how many events and entries are looked at.
constexpr int MostDays = 366;
constexpr std::size_t MostSteps = 200000;
constexpr std::size_t MostNotes = 50;

constexpr unsigned Hundredth = 1;
constexpr unsigned Second = 100 * Hundredth;
constexpr unsigned Minute = 60 * Second;
constexpr unsigned Hour = 60 * Minute;

unsigned Clock(ScheduleTime const& time) {
    return *time.hour * Hour + *time.minute * Minute + *time.second * Second + *time.hundredths * Hundredth;
}

ScheduleTime TimeOfClock(unsigned clock) {
    return {clock / Hour, clock / Minute % 60, clock / Second % 60, clock / Hundredth % 100};
}

// A schedule of a day; ranks are in the order of precedence. The rank of the weekly schedule is after those
// of all events, and that of the default after it.
using Rank = std::tuple<unsigned, std::size_t>;
constexpr Rank WeeklyRank{1u << 31, 0};
constexpr Rank DefaultRank{1u << 31, 1};

struct Point {
    unsigned clock;
    Rank rank;
    ScheduleValue const* value;
};

// What is in force from a time of a day on.
struct Stretch {
    ScheduleDate date;
    unsigned clock = 0;
    Rank rank = DefaultRank;
    ScheduleValue const* value = nullptr;  // null for the default
};

bool IsSame(Stretch const& left, Stretch const& right) {
    return left.rank == right.rank &&
           (left.value == right.value || (left.value && right.value && *left.value == *right.value));
}

class Search {
public:
    Search(WeeklySchedule const* weeklySchedule, ExceptionSchedule const* exceptionSchedule)
        : weekly(weeklySchedule), exception(exceptionSchedule) {}

    // What is in force at the instant, and the stretches after it until two changes are known.
    std::vector<Stretch> From(ScheduleInstant const& now) {
        std::vector<Stretch> found;
        unsigned const clock = Clock(now.time);
        ScheduleDate date = now.date;
        constexpr std::size_t wanted = 3;
        for (int day = 0; day < MostDays && found.size() < wanted && steps < MostSteps; ++day) {
            for (Stretch const& stretch : StretchesOf(date)) {
                if (day == 0 && stretch.clock <= clock) {
                    found = {stretch};
                } else if (!IsSame(found.back(), stretch) && found.size() < wanted) {
                    found.push_back(stretch);
                }
            }
            date = NextDay(date);
        }
        return found;
    }

private:
    void AddPoints(std::vector<Point>& points, std::vector<ScheduleEntry> const& entries, Rank rank) {
        steps += entries.size();
        for (ScheduleEntry const& entry : entries) {
            if (IsComplete(entry.time)) {
                points.push_back({Clock(entry.time), rank, &entry.value});
            }
        }
    }

    std::vector<Point> PointsOf(ScheduleDate const& date) {
        std::vector<Point> points;
        if (weekly) {
            AddPoints(points, weekly->days[*date.weekday - 1], WeeklyRank);
        }
        for (std::size_t i = 0; exception && i < exception->events.size(); ++i) {
            SpecialEvent const& event = exception->events[i];
            ++steps;
            if (IsDayOf(event.period, date)) {
                AddPoints(points, event.entries, {event.priority, i});
            }
        }
        std::stable_sort(points.begin(), points.end(),
                         [](Point const& left, Point const& right) { return left.clock < right.clock; });
        return points;
    }

    // From the beginning of the day, with a stretch for each change.
    std::vector<Stretch> StretchesOf(ScheduleDate const& date) {
        std::vector<Stretch> stretches{{date}};
        std::map<Rank, ScheduleValue const*> active;
        std::vector<Point> const points = PointsOf(date);
        for (std::size_t i = 0; i < points.size(); ++i) {
            Point const& point = points[i];
            if (point.value->type == ScheduleValueType::Null) {
                active.erase(point.rank);
            } else {
                active[point.rank] = point.value;
            }
            if (i + 1 < points.size() && points[i + 1].clock == point.clock) {
                continue;
            }
            Stretch next{date, point.clock};
            if (!active.empty()) {
                std::tie(next.rank, next.value) = *active.begin();
            }
            if (point.clock == 0) {
                stretches.back() = next;
            } else if (!IsSame(stretches.back(), next)) {
                stretches.push_back(next);
            }
        }
        return stretches;
    }

    WeeklySchedule const* weekly;
    ExceptionSchedule const* exception;
    std::size_t steps = 0;
};

std::string SourceOf(Stretch const& stretch, ExceptionSchedule const* exception) {
    if (stretch.rank == DefaultRank) {
        return "default";
    }
    if (stretch.rank == WeeklyRank) {
        return "weekly schedule, " + DayPlace(*stretch.date.weekday - 1);
    }
    auto const [priority, number] = stretch.rank;
    return EventPlace(number) + " (" + PeriodWords(exception->events[number].period) + "), priority " +
           std::to_string(priority);
}

ScheduleInstant Beginning(Stretch const& stretch) {
    return {stretch.date, TimeOfClock(stretch.clock)};
}

ValueInForce Described(std::vector<Stretch> const& found, std::size_t place,
                       ExceptionSchedule const* exception, ValueNames const& names) {
    Stretch const& stretch = found[place];
    ValueInForce value;
    value.source = SourceOf(stretch, exception);
    value.words = stretch.value ? ValueWords(*stretch.value, names) : "the default";
    value.since = Beginning(stretch);
    if (stretch.value) {
        value.value = *stretch.value;
    }
    if (place + 1 < found.size()) {
        value.until = Beginning(found[place + 1]);
    }
    return value;
}

void Note(ScheduleRemarks& notes, std::string place, char const* reason) {
    if (notes.size() < MostNotes) {
        notes.push_back({std::move(place), reason});
    }
}

template <typename Place>
void NoteTimes(ScheduleRemarks& notes, std::vector<ScheduleEntry> const& entries, Place place) {
    for (ScheduleEntry const& entry : entries) {
        if (!IsComplete(entry.time)) {
            Note(notes, place(entry.time),
                 "what is in force leaves this entry out: its time is not complete");
        }
    }
}

// Whether an end of a range is neither a complete date nor unspecified, which the standard does not allow
// (clause 21: BACnetDateRange).
bool HasPartOfDate(Period const& period) {
    auto const isPart = [](ScheduleDate const& date) {
        return !IsComplete(date) && (date.year || date.month || date.day);
    };
    auto const* const range = std::get_if<DateRange>(&period);
    return range && (isPart(range->from) || isPart(range->to));
}

ScheduleRemarks NotesOf(WeeklySchedule const* weekly, ExceptionSchedule const* exception) {
    ScheduleRemarks notes;
    if (!weekly) {
        Note(notes, "", "the weekly schedule is not known, and is left out");
    }
    if (!exception) {
        Note(notes, "", "the exception schedule is not known, and is left out");
    }
    for (std::size_t day = 0; weekly && day < DaysOfWeek; ++day) {
        NoteTimes(notes, weekly->days[day], [day](ScheduleTime const& time) { return DayPlace(day, time); });
    }
    for (std::size_t i = 0; exception && i < exception->events.size(); ++i) {
        SpecialEvent const& event = exception->events[i];
        if (std::holds_alternative<CalendarReference>(event.period)) {
            Note(notes, EventPlace(i),
                 "the days of the calendar are not known; on them this event is in force by its priority");
        }
        if (HasPartOfDate(event.period)) {
            Note(
                notes, EventPlace(i),
                "the standard has only complete dates in a range; the device may find other days than these");
        }
        NoteTimes(notes, event.entries, [i](ScheduleTime const& time) { return EventPlace(i, time); });
    }
    return notes;
}

}  // namespace

ScheduleInForce InForce(WeeklySchedule const* weekly, ExceptionSchedule const* exception,
                        ScheduleInstant const& now, ValueNames const& names) {
    ScheduleInForce result;
    if (!weekly && !exception) {
        return result;
    }
    result.notes = NotesOf(weekly, exception);
    ScheduleInstant complete = now;
    complete.date = CompleteDate(*now.date.year, *now.date.month, *now.date.day);
    std::vector<Stretch> const found = Search(weekly, exception).From(complete);
    result.now = Described(found, 0, exception, names);
    if (found.size() > 1) {
        result.next = Described(found, 1, exception, names);
    }
    return result;
}

std::string InstantText(ScheduleInstant const& instant) {
    auto const two = [](unsigned number) { return (number < 10 ? "0" : "") + std::to_string(number); };
    std::string const text =
        PartText(ScheduleDate{instant.date.year, instant.date.month, instant.date.day, {}}) + "T" +
        two(*instant.time.hour) + ":" + two(*instant.time.minute) + ":" + two(*instant.time.second);
    return *instant.time.hundredths == 0 ? text : text + "." + two(*instant.time.hundredths);
}

}  // namespace workbench
