#include "ScheduleLosses.h"

#include <cstddef>
#include <optional>

#include "DriverFields.h"
#include "PeriodWords.h"
#include "ScheduleParts.h"
#include "SchedulePlace.h"
#include "ScheduleValues.h"
#include "SixDecimals.h"

namespace workbench {

namespace {

struct Loss {
    LossKind kind;
    std::string reason;
};

char const* NumberWord(ScheduleValueType type) {
    return type == ScheduleValueType::Unsigned ? "Unsigned" : "Signed";
}

std::optional<Loss> LossOfDate(ScheduleDate const& date) {
    ScheduleDate const delivered = DeliveredDate(date);
    if (WithWeekday(delivered) == WithWeekday(date)) {
        return std::nullopt;
    }
    return Loss{LossKind::Reading, "the device receives " + PeriodWords(Period(date)) +
                                       "; when it is read again, the driver's text looks like " +
                                       PeriodWords(Period(delivered))};
}

std::optional<Loss> LossOfDecimals(ScheduleValueType type, std::string const& usual) {
    std::string const written = SixDecimals(NumberOf({type, usual}), type);
    auto const received = UsualText(type, written);
    if (received == usual) {
        return std::nullopt;
    }
    return Loss{LossKind::Decimals,
                "the driver writes six decimals: the device receives " + received.value_or(written)};
}

std::optional<Loss> LossOfValue(ScheduleValue const& value, bool isWeekly) {
    auto const usual = UsualText(value.type, value.text);
    if (!usual) {
        return std::nullopt;
    }
    switch (value.type) {
        case ScheduleValueType::Null:
            return isWeekly
                       ? std::optional(Loss{LossKind::Reading,
                                            "the device receives Null, but the driver leaves it out when it "
                                            "reads the schedule"})
                       : std::nullopt;
        case ScheduleValueType::Unsigned:
        case ScheduleValueType::Signed:
            return *usual == "0" || *usual == "1"
                       ? std::nullopt
                       : std::optional(
                             Loss{LossKind::Number, std::string("the driver writes only 0 or 1 as ") +
                                                        NumberWord(value.type) +
                                                        ": the device receives 1 instead of " + *usual});
        case ScheduleValueType::Real:
        case ScheduleValueType::Double:
            return LossOfDecimals(value.type, *usual);
        case ScheduleValueType::Date:
            return LossOfDate(*DateIn(*usual));
        default:
            return std::nullopt;
    }
}

std::optional<Loss> LossOfDays(WeekAndDay const& days) {
    if (days.month && days.week && days.weekday) {
        return std::nullopt;
    }
    return Loss{
        LossKind::Wildcard,
        "the device receives 0 for an unspecified month, week or weekday, where the standard has 255"};
}

std::vector<Loss> LossesOfPeriod(Period const& period) {
    std::vector<Loss> losses;
    auto const add = [&](std::optional<Loss> loss) {
        if (loss) {
            losses.push_back(std::move(*loss));
        }
    };
    if (auto const* const date = std::get_if<ScheduleDate>(&period)) {
        add(LossOfDate(*date));
    } else if (auto const* const range = std::get_if<DateRange>(&period)) {
        add(LossOfDate(range->from));
        add(LossOfDate(range->to));
    } else if (auto const* const days = std::get_if<WeekAndDay>(&period)) {
        add(LossOfDays(*days));
    }
    return losses;
}

template <typename Place>
void AddEntries(std::vector<ScheduleLoss>& losses, std::vector<ScheduleEntry> const& entries, bool isWeekly,
                Place place) {
    for (ScheduleEntry const& entry : entries) {
        if (auto const loss = LossOfValue(entry.value, isWeekly)) {
            losses.push_back({loss->kind, place(entry.time), loss->reason});
        }
    }
}

}  // namespace

std::vector<ScheduleLoss> Losses(WeeklySchedule const& schedule) {
    std::vector<ScheduleLoss> losses;
    for (std::size_t day = 0; day < DaysOfWeek; ++day) {
        AddEntries(losses, schedule.days[day], true,
                   [day](ScheduleTime const& time) { return DayPlace(day, time); });
    }
    return losses;
}

std::vector<ScheduleLoss> Losses(ExceptionSchedule const& schedule) {
    std::vector<ScheduleLoss> losses;
    for (std::size_t number = 0; number < schedule.events.size(); ++number) {
        SpecialEvent const& event = schedule.events[number];
        if (MistakeOf(event.period).empty()) {
            for (Loss const& loss : LossesOfPeriod(event.period)) {
                losses.push_back({loss.kind, EventPlace(number), loss.reason});
            }
        }
        AddEntries(losses, event.entries, false,
                   [number](ScheduleTime const& time) { return EventPlace(number, time); });
    }
    return losses;
}

}  // namespace workbench
