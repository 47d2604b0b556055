#include "ScheduleChanges.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <tuple>
#include <utility>

#include "PeriodWords.h"
#include "ScheduleNames.h"
#include "ScheduleParts.h"
#include "SchedulePlace.h"
#include "ScheduleValues.h"

namespace workbench {

namespace {

using Entries = std::vector<ScheduleEntry>;

bool IsEarlier(ScheduleTime const& left, ScheduleTime const& right) {
    return std::tie(left.hour, left.minute, left.second, left.hundredths) <
           std::tie(right.hour, right.minute, right.second, right.hundredths);
}

void Normalise(Entries& entries) {
    for (ScheduleEntry& entry : entries) {
        if (auto usual = UsualText(entry.value.type, entry.value.text)) {
            entry.value.text = std::move(*usual);
        }
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](ScheduleEntry const& left, ScheduleEntry const& right) {
                         return IsEarlier(left.time, right.time);
                     });
}

void Normalise(Period& period) {
    if (auto* const date = std::get_if<ScheduleDate>(&period)) {
        *date = WithWeekday(*date);
    } else if (auto* const range = std::get_if<DateRange>(&period)) {
        range->from = WithWeekday(range->from);
        range->to = WithWeekday(range->to);
    }
}

// What is said of the entries of one day or event; the name of that comes before each.
class EntryChanges {
public:
    EntryChanges(Entries const& before, Entries const& after, ValueNames const& valueNames)
        : names(valueNames) {
        auto left = before.begin();
        auto right = after.begin();
        while (left != before.end() || right != after.end()) {
            bool const isRemoved =
                right == after.end() || (left != before.end() && IsEarlier(left->time, right->time));
            bool const isAdded = !isRemoved && (left == before.end() || IsEarlier(right->time, left->time));
            if (isRemoved) {
                removed.push_back(&*left++);
            } else if (isAdded) {
                added.push_back(&*right++);
            } else {
                Compare(*left++, *right++);
            }
        }
        DescribeRest();
    }

    std::vector<std::string> texts;

private:
    void Compare(ScheduleEntry const& before, ScheduleEntry const& after) {
        if (!(before.value == after.value)) {
            bool const isOtherType = before.value.type != after.value.type;
            texts.push_back(" " + PartText(before.time) + ": " + Words(before.value, isOtherType) +
                            " becomes " + Words(after.value, isOtherType));
        }
    }

    std::string Words(ScheduleValue const& value, bool withType) const {
        bool const isNull = value.type == ScheduleValueType::Null;
        return (withType && !isNull ? TypeWord(value.type) + " " : "") + ValueWords(value, names);
    }

    // A value that is removed at one time and added at another one is moved.
    void DescribeRest() {
        std::multimap<std::pair<ScheduleValueType, std::string>, ScheduleEntry const*> gone;
        for (ScheduleEntry const* entry : removed) {
            gone.emplace(std::make_pair(entry->value.type, entry->value.text), entry);
        }
        std::vector<std::string> news;
        for (ScheduleEntry const* entry : added) {
            auto const moved = gone.find({entry->value.type, entry->value.text});
            if (moved == gone.end()) {
                news.push_back(": " + EntryWords(*entry, names) + " added");
                continue;
            }
            news.push_back(": " + EntryWords(*moved->second, names) + " moved to " + PartText(entry->time));
            gone.erase(moved);
        }
        for (auto const& [value, entry] : gone) {
            texts.push_back(": " + EntryWords(*entry, names) + " removed");
        }
        texts.insert(texts.end(), news.begin(), news.end());
    }

    ValueNames const& names;
    std::vector<ScheduleEntry const*> removed;
    std::vector<ScheduleEntry const*> added;
};

std::string EventName(std::size_t number, SpecialEvent const& event) {
    return EventPlace(number) + " (" + PeriodWords(event.period) + ")";
}

std::string EntryList(Entries const& entries, ValueNames const& names) {
    std::string text;
    for (ScheduleEntry const& entry : entries) {
        text += (text.empty() ? "" : ", ") + EntryWords(entry, names);
    }
    return text.empty() ? "no entries" : text;
}

class EventChanges {
public:
    EventChanges(ExceptionSchedule const& schedule, ExceptionSchedule const& changed,
                 ValueNames const& valueNames)
        : before(schedule), after(changed), names(valueNames) {}

    std::vector<std::string> Texts() {
        Match([](SpecialEvent const& event) { return PeriodText(event.period); });
        // What is left has another period now.
        Match([this](SpecialEvent const& event) {
            return std::to_string(event.priority) + " " + EntryList(event.entries, names);
        });
        for (std::size_t i = 0; i < before.events.size(); ++i) {
            if (partners.count(i) == 0) {
                texts.push_back(EventName(i, before.events[i]) + " removed");
            }
        }
        bool isInOrder = true;
        std::size_t last = 0;
        for (auto const& [left, right] : partners) {
            Compare(left, right);
            isInOrder = isInOrder && right >= last;
            last = right;
        }
        for (std::size_t i = 0; i < after.events.size(); ++i) {
            if (!taken[i]) {
                SpecialEvent const& event = after.events[i];
                texts.push_back(EventName(i, event) + " added: priority " + std::to_string(event.priority) +
                                ", " + EntryList(event.entries, names));
            }
        }
        if (!isInOrder) {
            texts.emplace_back("the order of the events is changed; it decides between equal priorities");
        }
        return std::move(texts);
    }

private:
    // Makes partners of the events that have the same key, in their order.
    template <typename Key>
    void Match(Key key) {
        taken.resize(after.events.size());
        std::multimap<std::string, std::size_t> candidates;
        for (std::size_t i = 0; i < after.events.size(); ++i) {
            if (!taken[i]) {
                candidates.emplace(key(after.events[i]), i);
            }
        }
        for (std::size_t i = 0; i < before.events.size(); ++i) {
            if (partners.count(i) != 0) {
                continue;
            }
            auto const found = candidates.lower_bound(key(before.events[i]));
            if (found != candidates.end() && found->first == key(before.events[i])) {
                partners[i] = found->second;
                taken[found->second] = true;
                candidates.erase(found);
            }
        }
    }

    void Compare(std::size_t left, std::size_t right) {
        SpecialEvent const& old = before.events[left];
        SpecialEvent const& event = after.events[right];
        std::string const name = EventName(right, event);
        if (!(old.period == event.period)) {
            texts.push_back(name + ": was " + PeriodWords(old.period));
        }
        if (old.priority != event.priority) {
            texts.push_back(name + ": priority " + std::to_string(old.priority) + " becomes " +
                            std::to_string(event.priority));
        }
        for (std::string const& text : EntryChanges(old.entries, event.entries, names).texts) {
            texts.push_back(name + text);
        }
    }

    ExceptionSchedule const& before;
    ExceptionSchedule const& after;
    ValueNames const& names;
    std::map<std::size_t, std::size_t> partners;
    std::vector<bool> taken;
    std::vector<std::string> texts;
};

}  // namespace

WeeklySchedule Normalised(WeeklySchedule schedule) {
    for (Entries& day : schedule.days) {
        Normalise(day);
    }
    return schedule;
}

ExceptionSchedule Normalised(ExceptionSchedule schedule) {
    for (SpecialEvent& event : schedule.events) {
        Normalise(event.period);
        Normalise(event.entries);
    }
    return schedule;
}

bool SameSchedule(WeeklySchedule const& left, WeeklySchedule const& right) {
    return Normalised(left) == Normalised(right);
}

bool SameSchedule(ExceptionSchedule const& left, ExceptionSchedule const& right) {
    return Normalised(left) == Normalised(right);
}

std::vector<std::string> Changes(WeeklySchedule const& before, WeeklySchedule const& after,
                                 ValueNames const& names) {
    WeeklySchedule const old = Normalised(before);
    WeeklySchedule const changed = Normalised(after);
    std::array<std::vector<std::string>, DaysOfWeek> days;
    for (std::size_t day = 0; day < DaysOfWeek; ++day) {
        days[day] = EntryChanges(old.days[day], changed.days[day], names).texts;
    }
    std::vector<std::string> sentences;
    for (std::size_t first = 0, next = 0; first < DaysOfWeek; first = next) {
        for (next = first + 1; next < DaysOfWeek && days[next] == days[first]; ++next) {
        }
        std::string const name =
            DayPlace(first) +
            (next - first == 1 ? "" : (next - first == 2 ? " and " : " to ") + DayPlace(next - 1));
        for (std::string const& text : days[first]) {
            sentences.push_back(name + text);
        }
    }
    return sentences;
}

std::vector<std::string> Changes(ExceptionSchedule const& before, ExceptionSchedule const& after,
                                 ValueNames const& names) {
    ExceptionSchedule const old = Normalised(before);
    ExceptionSchedule const changed = Normalised(after);
    return EventChanges(old, changed, names).Texts();
}

}  // namespace workbench
