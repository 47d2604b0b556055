#include "TypedPeriod.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <string>
#include <vector>

#include "ObjectId.h"
#include "PeriodWords.h"
#include "Printable.h"
#include "ScheduleNames.h"
#include "ScheduleParts.h"
#include "TypedValue.h"

namespace workbench {

namespace {

using Words = std::vector<std::string>;

Words WordsOf(std::string_view text) {
    Words words;
    std::string word;
    for (char const c : std::string(text) + " ") {
        if (c != ' ') {
            word += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        } else if (!word.empty()) {
            words.push_back(std::move(word));
            word.clear();
        }
    }
    return words;
}

[[noreturn]] void Refuse(std::string_view text) {
    throw TypingMistake(tools::Quoted(text) +
                        " is not a period; expected a date such as 2026-12-25 or 25 December 2026, two dates "
                        "with \"to\" between, days such as last Friday in December, or calendar 7");
}

std::optional<unsigned> NumberIn(std::string const& word) {
    constexpr std::size_t mostDigits = 7;
    bool const isNumber = !word.empty() && word.size() <= mostDigits &&
                          word.find_first_not_of("0123456789") == std::string::npos;
    return isNumber ? std::optional(static_cast<unsigned>(std::stoul(word))) : std::nullopt;
}

// Reads words from the front.
class WordReader {
public:
    explicit WordReader(Words const& allWords) : words(allWords) {}

    bool IsAtEnd() const { return next == words.size(); }
    bool Take(char const* word) {
        bool const isNext = !IsAtEnd() && words[next] == word;
        next += isNext ? 1 : 0;
        return isNext;
    }
    // Takes the next word if the function has a value for it.
    template <typename Function>
    std::optional<unsigned> Take(Function function) {
        auto const value = IsAtEnd() ? std::nullopt : function(words[next]);
        next += value ? 1 : 0;
        return value;
    }

private:
    Words const& words;
    std::size_t next = 0;
};

void CheckWeekday(ScheduleDate const& date) {
    ScheduleDate const day = WithWeekday({date.year, date.month, date.day, {}});
    if (date.weekday && IsComplete(day) && day.weekday != date.weekday) {
        throw TypingMistake(PeriodWords(Period(day)) + " is a " + WeekdayName(*day.weekday) + ", not a " +
                            WeekdayName(*date.weekday));
    }
}

// "25 December 2026", "every 25 December".
std::optional<ScheduleDate> DateInWords(Words const& words) {
    WordReader reader(words);
    reader.Take("every");
    ScheduleDate date;
    date.day = reader.Take(NumberIn);
    date.month = reader.Take([](std::string const& word) { return MonthOfName(word); });
    date.year = reader.Take(NumberIn);
    if (!date.day || !date.month || !reader.IsAtEnd()) {
        return std::nullopt;
    }
    if (std::string const mistake = MistakeOf(date); !mistake.empty()) {
        throw TypingMistake(mistake);
    }
    return WithWeekday(date);
}

std::optional<ScheduleDate> TypedDate(std::string_view text) {
    Words const words = WordsOf(text);
    std::string plain;
    for (std::string const& word : words) {
        plain += (plain.empty() ? "" : " ") + word;
    }
    auto const date = DateIn(plain);
    if (date) {
        CheckWeekday(*date);
    }
    return date ? date : DateInWords(words);
}

std::optional<unsigned> MonthIn(WordReader& reader) {
    bool const isOdd = reader.Take("odd");
    if (isOdd || reader.Take("even")) {
        constexpr unsigned odd = 13;
        return reader.Take("months") ? std::optional(isOdd ? odd : odd + 1) : std::nullopt;
    }
    return reader.Take([](std::string const& word) { return MonthOfName(word); });
}

std::optional<unsigned> WeekIn(WordReader& reader) {
    return reader.Take("week") ? reader.Take(NumberIn)
                               : reader.Take([](std::string const& word) { return WeekOfName(word); });
}

// "every last Friday in December", "week 2 in odd months", "every day in June".
std::optional<Period> DaysInWords(Words const& words) {
    WordReader reader(words);
    bool const isEvery = reader.Take("every") || reader.Take("the");
    bool const hasNumber = std::find(words.begin(), words.end(), "week") != words.end();
    WeekAndDay days;
    days.week = WeekIn(reader);
    days.weekday = reader.Take([](std::string const& word) { return WeekdayOfName(word); });
    bool const isAnyDay = !days.weekday && !days.week && isEvery && reader.Take("day");
    if (!days.weekday && !isAnyDay && !(days.week && hasNumber)) {
        return std::nullopt;
    }
    if (reader.Take("in") || reader.Take("of")) {
        days.month = MonthIn(reader);
        if (!days.month) {
            return std::nullopt;
        }
    }
    if (!reader.IsAtEnd()) {
        return std::nullopt;
    }
    if (std::string const mistake = MistakeOf(Period(days)); !mistake.empty()) {
        throw TypingMistake(mistake);
    }
    return days;
}

std::optional<Period> CalendarInWords(Words const& words) {
    WordReader reader(words);
    if (reader.Take("the") && !(reader.Take("days") && reader.Take("of"))) {
        return std::nullopt;
    }
    auto const number = reader.Take("calendar") ? reader.Take(NumberIn) : std::nullopt;
    bool const isCalendar = number && reader.IsAtEnd() && *number <= standard::ObjectId::LastInstance;
    return isCalendar ? std::optional<Period>(CalendarReference{*number}) : std::nullopt;
}

void CheckOrder(DateRange const& range, std::string_view text) {
    auto const number = [](ScheduleDate const& date) {
        return (*date.year * 12 + *date.month) * 31 + *date.day;
    };
    if (IsComplete(range.from) && IsComplete(range.to) && number(range.to) < number(range.from)) {
        throw TypingMistake(tools::Quoted(text) + " ends before it begins; put the earlier date first");
    }
}

}  // namespace

Period TypedPeriodOf(std::string_view text) {
    constexpr std::size_t longest = 100;
    if (text.size() > longest) {
        Refuse(text);
    }
    constexpr std::string_view to = " to ";
    std::size_t const separator = text.find(to);
    if (separator != std::string_view::npos) {
        auto const from = TypedDate(text.substr(0, separator));
        auto const until = TypedDate(text.substr(separator + to.size()));
        if (from && until) {
            CheckOrder({*from, *until}, text);
            return DateRange{*from, *until};
        }
        Refuse(text);
    }
    if (auto const date = TypedDate(text)) {
        return *date;
    }
    Words const words = WordsOf(text);
    if (auto const days = DaysInWords(words)) {
        return *days;
    }
    if (auto const calendar = CalendarInWords(words)) {
        return *calendar;
    }
    Refuse(text);
}

}  // namespace workbench
