#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>

#include "Printable.h"
#include "ScheduleForPeople.h"
#include "ScheduleNames.h"
#include "ScheduleParts.h"
#include "TypedPeriod.h"
#include "TypedValue.h"

namespace workbench {

namespace {

constexpr std::size_t LongestText = 100000;
constexpr char WeeklyExample[] = "; example: Mon-Fri 06:00 21.5, 20:00 17; Sat 08:00 19";
constexpr char ExceptionExample[] =
    "; example: 2026-12-25 (priority 10) 00:00 16; last Friday in December 12:00 null";

bool IsNone(std::string_view text) {
    return text == "none" || text == "-";
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

ScheduleEntry EntryOf(std::string_view part, ValueNames const& names) {
    std::string_view const text = WithoutBlanks(part);
    std::size_t const blank = std::min(text.find(' '), text.size());
    auto const time = TimeOfDayIn(text.substr(0, blank));
    if (!time) {
        throw TypingMistake(
            tools::Quoted(text.substr(0, blank)) +
            (text.size() == blank ? "" : " in " + tools::Quoted(text)) +
            " is not a time; expected an entry such as 06:00 21.5, with \",\" between entries" +
            (!text.empty() && IsDigit(text.front()) && text.find(':') == text.npos
                 ? " and \".\" before decimals"
                 : ""));
    }
    std::string_view const value = WithoutBlanks(text.substr(blank));
    if (value.empty()) {
        throw TypingMistake(tools::Quoted(text) + " has no value; expected an entry such as 06:00 21.5");
    }
    return {*time, TypedValueOf(value, names)};
}

std::vector<ScheduleEntry> EntriesOf(std::string_view text, ValueNames const& names) {
    std::vector<ScheduleEntry> entries;
    if (IsNone(WithoutBlanks(text))) {
        return entries;
    }
    if (WithoutBlanks(text).empty()) {
        throw TypingMistake("no entries after the days; expected entries such as 06:00 21.5, or none");
    }
    for (std::string_view const part : SplitOutsideQuotes(text, ',')) {
        entries.push_back(EntryOf(part, names));
    }
    return entries;
}

// The names of days at the beginning of a part.
class DayReader {
public:
    explicit DayReader(std::string_view part) : text(WithoutBlanks(part)) {}

    // The days, counted from 0.
    std::vector<std::size_t> Days() {
        std::vector<std::size_t> days;
        if (TakeWord("daily")) {
            return {0, 1, 2, 3, 4, 5, 6};
        }
        do {
            std::size_t const first = Day();
            std::size_t const last = TakeTo() ? Day() : first;
            if (last < first) {
                throw TypingMistake(WeekdayName(static_cast<unsigned>(first) + 1) + " to " +
                                    WeekdayName(static_cast<unsigned>(last) + 1) +
                                    " goes over the end of the week; name both parts, such as Fri-Sun, Mon");
            }
            for (std::size_t day = first; day <= last; ++day) {
                days.push_back(day);
            }
        } while (TakeComma());
        return days;
    }

    std::string_view Rest() const { return text; }

private:
    std::string_view Word() const {
        auto const isLetter = [](unsigned char c) { return std::isalpha(c) != 0; };
        auto const end = std::find_if_not(text.begin(), text.end(), isLetter);
        return text.substr(0, static_cast<std::size_t>(end - text.begin()));
    }

    void Skip(std::size_t count) { text = WithoutBlanks(text.substr(count)); }

    bool TakeWord(std::string_view word) {
        bool const isNext = Word() == word;
        Skip(isNext ? word.size() : 0);
        return isNext;
    }

    std::size_t Day() {
        std::string_view const word = Word();
        auto const weekday = WeekdayOfName(word);
        if (!weekday) {
            std::string_view const found = word.empty() ? text.substr(0, text.find(' ')) : word;
            throw TypingMistake(tools::Quoted(found) +
                                " is not a day; expected days such as Mon, Mon-Fri or Sat, Sun, or daily");
        }
        Skip(word.size());
        return *weekday - 1;
    }

    // "-" alone means no entries.
    bool TakeTo() {
        bool const isRange = text.size() > 1 && text.front() == '-';
        Skip(isRange ? 1 : 0);
        return isRange || TakeWord("to");
    }

    bool TakeComma() {
        bool const isNext = !text.empty() && text.front() == ',';
        Skip(isNext ? 1 : 0);
        return isNext;
    }

    std::string_view text;
};

WeeklySchedule Weekly(std::string_view text, ValueNames const& names) {
    WeeklySchedule schedule;
    std::array<bool, DaysOfWeek> isGiven{};
    for (std::string_view const part : SplitOutsideQuotes(text, ';')) {
        if (WithoutBlanks(part).empty()) {
            continue;
        }
        DayReader reader(part);
        std::vector<std::size_t> const days = reader.Days();
        std::vector<ScheduleEntry> const entries = EntriesOf(reader.Rest(), names);
        for (std::size_t const day : days) {
            if (isGiven[day]) {
                throw TypingMistake(WeekdayName(static_cast<unsigned>(day) + 1) +
                                    " is there twice; write all its entries after it, with \",\" between");
            }
            isGiven[day] = true;
            schedule.days[day] = entries;
        }
    }
    if (std::find(isGiven.begin(), isGiven.end(), true) == isGiven.end()) {
        throw TypingMistake("the text names no day; expected days and entries, or Mon-Sun none");
    }
    return schedule;
}

// Where the entries begin that follow a period without a priority.
std::size_t BeginOfEntries(std::string_view text) {
    for (std::size_t begin = 0; begin < text.size();) {
        std::size_t const end = std::min(text.find(' ', begin), text.size());
        std::string_view const word = text.substr(begin, end - begin);
        bool const hasTime = word.find(':') != std::string_view::npos;
        if (hasTime || IsNone(word)) {
            return begin;
        }
        begin = end + 1;
    }
    return text.size();
}

unsigned PriorityOf(std::string_view text) {
    std::string const digits(WithoutBlanks(text));
    bool const isNumber =
        !digits.empty() && digits.size() <= 2 && digits.find_first_not_of("0123456789") == std::string::npos;
    unsigned const priority = isNumber ? static_cast<unsigned>(std::stoul(digits)) : 0;
    if (!MistakeOfPriority(priority).empty()) {
        throw TypingMistake(tools::Quoted(digits) +
                            " is not a priority; expected (priority 1), the highest, to "
                            "(priority 16)");
    }
    return priority;
}

SpecialEvent EventOf(std::string_view text, ValueNames const& names) {
    constexpr std::string_view opening = "(priority ";
    SpecialEvent event;
    std::size_t const entries = BeginOfEntries(text);
    std::size_t const bracket = text.substr(0, entries).find(opening);
    std::string_view const period = WithoutBlanks(text.substr(0, std::min(entries, bracket)));
    event.period = TypedPeriodOf(period);
    if (bracket != std::string_view::npos) {
        std::size_t const end = text.find(')', bracket);
        std::size_t const begin = bracket + opening.size();
        if (end == std::string_view::npos || end > entries ||
            !WithoutBlanks(text.substr(end + 1, entries - end - 1)).empty()) {
            throw TypingMistake(tools::Quoted(text) + " has a \"(\" without \")\" before its entries");
        }
        event.priority = PriorityOf(text.substr(begin, end - begin));
    }
    if (entries == text.size()) {
        throw TypingMistake(tools::Quoted(text) +
                            " has no entries; expected a time and a value after the period");
    }
    event.entries = EntriesOf(text.substr(entries), names);
    return event;
}

ExceptionSchedule Exception(std::string_view text, ValueNames const& names) {
    ExceptionSchedule schedule;
    if (IsNone(WithoutBlanks(text))) {
        return schedule;
    }
    for (std::string_view const part : SplitOutsideQuotes(text, ';')) {
        if (!WithoutBlanks(part).empty()) {
            schedule.events.push_back(EventOf(WithoutBlanks(part), names));
        }
    }
    if (schedule.events.empty()) {
        throw TypingMistake("the text has no event; expected a period and entries");
    }
    return schedule;
}

template <typename Schedule, typename Reader>
TypedSchedule<Schedule> Typed(std::string_view text, ValueNames const& names, Reader reader,
                              char const* example) {
    TypedSchedule<Schedule> result;
    try {
        if (text.size() > LongestText) {
            throw TypingMistake("the text is longer than " + std::to_string(LongestText) + " octets");
        }
        result.schedule = reader(text, names);
    } catch (TypingMistake const& mistake) {
        result.mistake = std::string(mistake.what()) + example;
    }
    return result;
}

}  // namespace

TypedSchedule<WeeklySchedule> WeeklyOfPeople(std::string_view text, ValueNames const& names) {
    return Typed<WeeklySchedule>(text, names, Weekly, WeeklyExample);
}

TypedSchedule<ExceptionSchedule> ExceptionOfPeople(std::string_view text, ValueNames const& names) {
    return Typed<ExceptionSchedule>(text, names, Exception, ExceptionExample);
}

}  // namespace workbench
