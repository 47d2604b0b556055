#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>

#include "ComposeSchedule.h"
#include "RandomSchedules.h"
#include "ReadSchedule.h"
#include "ScheduleChanges.h"
#include "ScheduleForPeople.h"
#include "ScheduleJson.h"
#include "ScheduleLosses.h"
#include "StandardSchedule.h"
#include "ThroughDriver.h"

// Schedules on their whole way: composed, sent and read by the driver, and read again.

using namespace workbench;
using test::RandomSchedules;

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || !defined(__OPTIMIZE__)
constexpr int RandomCount = 3000;
#else
constexpr int RandomCount = 100000;
#endif

using Places = std::multiset<std::string>;

template <typename Schedule>
Places PlacesOfLosses(Schedule const& schedule) {
    Places places;
    for (ScheduleLoss const& loss : Losses(schedule)) {
        // The device receives these otherwise, but the driver reads them back as they were.
        if (loss.kind != LossKind::Wildcard) {
            places.insert(loss.place);
        }
    }
    return places;
}

void AddDifferences(Places& places, std::vector<ScheduleEntry> sent, std::vector<ScheduleEntry> const& read,
                    bool leavesNullOut, std::function<std::string(ScheduleTime const&)> const& place) {
    auto next = read.begin();
    for (ScheduleEntry const& entry : sent) {
        if (leavesNullOut && entry.value.type == ScheduleValueType::Null) {
            places.insert(place(entry.time));
            continue;
        }
        ASSERT_NE(next, read.end());
        EXPECT_EQ(PartText(entry.time), PartText(next->time));
        EXPECT_EQ(static_cast<int>(entry.value.type), static_cast<int>(next->value.type));
        if (!(entry.value == next->value)) {
            places.insert(place(entry.time));
        }
        ++next;
    }
    EXPECT_EQ(next, read.end());
}

Places Differences(WeeklySchedule const& sent, WeeklySchedule const& read) {
    Places places;
    for (std::size_t day = 0; day < DaysOfWeek; ++day) {
        AddDifferences(places, sent.days[day], read.days[day], true,
                       [day](ScheduleTime const& time) { return DayPlace(day, time); });
    }
    return places;
}

unsigned DifferentDates(Period const& sent, Period const& read) {
    if (auto const* const range = std::get_if<DateRange>(&sent)) {
        auto const& other = std::get<DateRange>(read);
        return (range->from == other.from ? 0 : 1) + (range->to == other.to ? 0 : 1);
    }
    return sent == read ? 0 : 1;
}

Places Differences(ExceptionSchedule const& sent, ExceptionSchedule const& read) {
    Places places;
    EXPECT_EQ(sent.events.size(), read.events.size());
    for (std::size_t i = 0; i < std::min(sent.events.size(), read.events.size()); ++i) {
        EXPECT_EQ(sent.events[i].period.index(), read.events[i].period.index());
        EXPECT_EQ(sent.events[i].priority, read.events[i].priority);
        for (unsigned n = DifferentDates(sent.events[i].period, read.events[i].period); n > 0; --n) {
            places.insert(EventPlace(i));
        }
        AddDifferences(places, sent.events[i].entries, read.events[i].entries, false,
                       [i](ScheduleTime const& time) { return EventPlace(i, time); });
    }
    return places;
}

// What differs after the way through the driver is what was shown as lost, no more and no less.
template <typename Schedule, typename Way, typename Reader>
bool LosesWhatIsShown(Schedule const& schedule, Way throughDriver, Reader reader) {
    ComposedSchedule const composed = Compose(schedule);
    if (!composed.mistakes.empty()) {
        EXPECT_EQ(composed.text, "");
        return false;
    }
    std::string const back = throughDriver(composed.text);
    auto const reading = reader(back);
    EXPECT_TRUE(reading.schedule) << back << ": " << RemarkText(reading.mistake);
    if (!reading.schedule) {
        return false;
    }
    Places const lost = PlacesOfLosses(schedule);
    EXPECT_EQ(lost, Differences(Normalised(schedule), Normalised(*reading.schedule))) << composed.text;
    EXPECT_EQ(lost.empty(), SameSchedule(schedule, *reading.schedule));
    return true;
}

template <typename Schedule>
Schedule ThroughJson(Schedule const& schedule) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    WriteSchedule(writer, schedule, {});
    rapidjson::Document document;
    document.Parse(buffer.GetString());
    ScheduleOfJson const read = ReadScheduleJson(document);
    EXPECT_EQ(read.mistake, "");
    auto const* const found = std::get_if<Schedule>(&read.schedule);
    return found ? *found : Schedule();
}

std::vector<ValueNames> const& AllNames() {
    static std::vector<ValueNames> const names = {
        {},
        {"°C", {}, {}},
        {"", {"off", "on"}, ScheduleValueType::Boolean},
        {"", {"comfort", "standby", "a,b", "(x)"}, ScheduleValueType::Unsigned},
        {"kW", {"1", "true", "21.5"}, ScheduleValueType::Enumerated},
        {"", {}, ScheduleValueType::Date},
        {"", {}, ScheduleValueType::BitString},
        {"", {}, ScheduleValueType::CharacterString},
    };
    return names;
}

// Octets of random texts are not always UTF-8, and JSON has only that.
template <typename Schedule>
void ExpectSameInJson(Schedule const& schedule) {
    rapidjson::StringBuffer first;
    JsonWriter writer(first);
    WriteSchedule(writer, Normalised(schedule), {});
    rapidjson::StringBuffer second;
    JsonWriter again(second);
    WriteSchedule(again, Normalised(ThroughJson(schedule)), {});
    EXPECT_STREQ(first.GetString(), second.GetString());
}

// The places at which the device receives something else.
template <typename Schedule>
Places PlacesOfOtherOctets(Schedule const& schedule) {
    Places places;
    for (ScheduleLoss const& loss : Losses(schedule)) {
        if (loss.kind != LossKind::Reading) {
            places.insert(loss.place);
        }
    }
    return places;
}

Places OctetDifferences(WeeklySchedule const& meant, WeeklySchedule const& received) {
    Places places;
    for (std::size_t day = 0; day < DaysOfWeek; ++day) {
        AddDifferences(places, meant.days[day], received.days[day], false,
                       [day](ScheduleTime const& time) { return DayPlace(day, time); });
    }
    return places;
}

Places OctetDifferences(ExceptionSchedule const& meant, ExceptionSchedule const& received) {
    return Differences(meant, received);
}

// What a device reads by the standard is the schedule, but for what was shown as lost on the way to it.
template <typename Value, typename Schedule, typename Reader>
bool IsReceivedAsShown(Schedule const& schedule, Reader reader) {
    ComposedSchedule const composed = Compose(schedule);
    if (!composed.mistakes.empty()) {
        return false;
    }
    test::StandardSchedule octets(test::SentOctets<Value>(composed.text));
    EXPECT_EQ(PlacesOfOtherOctets(schedule),
              OctetDifferences(Normalised(schedule), Normalised((octets.*reader)())))
        << composed.text;
    return true;
}

// A person who types a complete date with another weekday, or a range that ends first, is corrected.
ExceptionSchedule SensibleWeekdays(ExceptionSchedule schedule) {
    auto const sensible = [](ScheduleDate& date) {
        ScheduleDate const day{date.year, date.month, date.day, {}};
        date = IsComplete(day) ? day : date;
    };
    for (SpecialEvent& event : schedule.events) {
        if (auto* const date = std::get_if<ScheduleDate>(&event.period)) {
            sensible(*date);
        } else if (auto* const range = std::get_if<DateRange>(&event.period)) {
            sensible(range->from);
            range->to = IsComplete(range->from) ? range->from : ScheduleDate();
        }
    }
    return schedule;
}

}  // namespace

TEST(ScheduleThroughDriver, RandomWeeklySchedulesLoseNothingButWhatIsShown) {
    RandomSchedules random(1);
    int written = 0;
    for (int i = 0; i < RandomCount && !HasFailure(); ++i) {
        written += LosesWhatIsShown(random.Weekly(), test::WeeklyThroughDriver, ReadWeekly) ? 1 : 0;
    }
    EXPECT_GT(written, RandomCount / 3);
}

TEST(ScheduleThroughDriver, RandomExceptionSchedulesLoseNothingButWhatIsShown) {
    RandomSchedules random(2);
    int written = 0;
    for (int i = 0; i < RandomCount && !HasFailure(); ++i) {
        written += LosesWhatIsShown(random.Exception(), test::ExceptionThroughDriver, ReadException) ? 1 : 0;
    }
    EXPECT_GT(written, RandomCount / 3);
}

TEST(ScheduleThroughDriver, DevicesReceiveRandomWeeklySchedulesButForWhatIsShown) {
    RandomSchedules random(5);
    int received = 0;
    for (int i = 0; i < RandomCount / 10 && !HasFailure(); ++i) {
        received += IsReceivedAsShown<WeeklyScheduleValue>(random.Weekly(), &test::StandardSchedule::Weekly);
    }
    EXPECT_GT(received, RandomCount / 30);
}

TEST(ScheduleThroughDriver, DevicesReceiveRandomExceptionSchedulesButForWhatIsShown) {
    RandomSchedules random(6);
    int received = 0;
    for (int i = 0; i < RandomCount / 10 && !HasFailure(); ++i) {
        received +=
            IsReceivedAsShown<ExceptionScheduleValue>(random.Exception(), &test::StandardSchedule::Exception);
    }
    EXPECT_GT(received, RandomCount / 30);
}

TEST(ScheduleThroughDriver, RandomSchedulesAreTheSameAsJson) {
    RandomSchedules random(3);
    for (int i = 0; i < RandomCount / 10 && !HasFailure(); ++i) {
        ExpectSameInJson(random.Weekly());
        ExpectSameInJson(random.Exception());
    }
}

TEST(ScheduleThroughDriver, RandomSchedulesAreTheSameAsTextForPeople) {
    RandomSchedules random(4);
    for (int i = 0; i < RandomCount / 10 && !HasFailure(); ++i) {
        ValueNames const& names = AllNames()[static_cast<std::size_t>(i) % AllNames().size()];
        WeeklySchedule const week = random.Weekly();
        std::string const weekText = WeeklyForPeople(Normalised(week), names);
        auto const typedWeek = WeeklyOfPeople(weekText, names);
        ASSERT_TRUE(typedWeek.schedule) << weekText << "\n" << typedWeek.mistake;
        EXPECT_TRUE(SameSchedule(week, *typedWeek.schedule)) << weekText;
        ExceptionSchedule const events = SensibleWeekdays(random.Exception());
        std::string const eventText = ExceptionForPeople(Normalised(events), names);
        auto const typedEvents = ExceptionOfPeople(eventText, names);
        ASSERT_TRUE(typedEvents.schedule) << eventText << "\n" << typedEvents.mistake;
        EXPECT_TRUE(SameSchedule(events, *typedEvents.schedule)) << eventText;
    }
}
