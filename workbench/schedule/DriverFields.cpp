#include "DriverFields.h"

#include <array>
#include <cstddef>
#include <vector>

#include "PeriodWords.h"
#include "ScheduleParts.h"

namespace workbench {

namespace {

// 255, and what remains of it in two digits and in one.
constexpr std::string_view Any = "255";
constexpr unsigned CutDay = 25;
constexpr unsigned CutWeekday = 2;
constexpr unsigned AnyYear = 1900 + 255;
constexpr unsigned Tuesday = 2;

using Number = std::optional<unsigned>;

bool AreDigits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

unsigned NumberOfDigits(std::string_view digits) {
    unsigned number = 0;
    for (char const c : digits) {
        number = number * 10 + static_cast<unsigned>(c - '0');
    }
    return number;
}

std::string Digits(unsigned number, std::size_t width) {
    std::string const text = std::to_string(number);
    return std::string(width > text.size() ? width - text.size() : 0, '0') + text;
}

// How the parts of a field can be written, from which one part is taken at a time.
struct PartForm {
    std::size_t width;
    unsigned low;
    unsigned high;
    std::string_view zero;  // what stands for 0, which is "any"; empty if 0 is a number
};

// All ways to divide the text into the parts; at most 2 to the power of their number.
void Divide(std::string_view text, PartForm const* forms, std::size_t count, std::vector<Number>& taken,
            std::vector<std::vector<Number>>& found) {
    if (count == 0) {
        if (text.empty()) {
            found.push_back(taken);
        }
        return;
    }
    PartForm const& form = *forms;
    auto const take = [&](std::size_t length, Number part) {
        taken.push_back(part);
        Divide(text.substr(length), forms + 1, count - 1, taken, found);
        taken.pop_back();
    };
    std::string_view const digits = text.substr(0, form.width);
    if (!form.zero.empty() && text.substr(0, form.zero.size()) == form.zero) {
        take(form.zero.size(), std::nullopt);
    } else if (digits.size() == form.width && AreDigits(digits) && NumberOfDigits(digits) >= form.low &&
               NumberOfDigits(digits) <= form.high) {
        take(form.width, NumberOfDigits(digits));
    }
    if (text.substr(0, Any.size()) == Any) {
        take(Any.size(), std::nullopt);
    }
}

std::vector<std::vector<Number>> Divisions(std::string_view text, std::vector<PartForm> const& forms) {
    std::vector<Number> taken;
    std::vector<std::vector<Number>> found;
    Divide(text, forms.data(), forms.size(), taken, found);
    return found;
}

std::vector<PartForm> TimeForms(bool isStrict) {
    return {{2, 0, isStrict ? 23u : 99u, ""},
            {2, 0, isStrict ? 59u : 99u, ""},
            {2, 0, isStrict ? 59u : 99u, ""},
            {2, 0, 99, ""}};
}

ScheduleTime TimeOf(std::vector<Number> const& parts) {
    return {parts[0], parts[1], parts[2], parts[3]};
}

// A part of a date: unspecified at "*".
FieldReading<Number> DatePart(std::string_view text) {
    if (text.front() == '*') {
        return {Number()};
    }
    return AreDigits(text) ? FieldReading<Number>{Number(NumberOfDigits(text))} : FieldReading<Number>{};
}

constexpr char SameForBoth[] = ": the driver's text is the same for both";

// The day 25 may be the cut 255. It is the 25th if its weekday fits or is open.
bool IsDay25(ScheduleDate const& date, bool isWeekdayOpen) {
    ScheduleDate const complete = WithWeekday({date.year, date.month, date.day, {}});
    bool const fits = IsComplete(complete) && (isWeekdayOpen || complete.weekday == date.weekday);
    return fits || (date.month && isWeekdayOpen);
}

// The weekday 2 may be the cut 255. It is Tuesday for a day that is one; for another day it says nothing.
bool IsTuesday(ScheduleDate const& date) {
    ScheduleDate const complete = WithWeekday({date.year, date.month, date.day, {}});
    return IsComplete(complete) && complete.weekday == Tuesday;
}

// A day that has another weekday never comes.
bool Comes(ScheduleDate const& date) {
    ScheduleDate const complete = WithWeekday({date.year, date.month, date.day, {}});
    return !IsComplete(complete) || !date.weekday || complete.weekday == date.weekday;
}

// What the text of a date can mean beside the reading. The other reading has the other meaning of the day 25.
std::string DateNote(ScheduleDate const& date, std::optional<ScheduleDate> const& other, bool mayBeTuesday) {
    bool const hasOther = other && Comes(*other);
    if (!hasOther && !mayBeTuesday) {
        return {};
    }
    std::string const meaning = hasOther ? PeriodWords(Period(*other)) : "";
    std::string const tuesdays = mayBeTuesday ? "only the Tuesdays of it" : "";
    bool const isBoth = hasOther && mayBeTuesday;
    return "read as " + PeriodWords(Period(date)) + "; it may also mean " + meaning +
           (isBoth ? ", or " : "") + tuesdays + SameForBoth;
}

}  // namespace

FieldReading<ScheduleTime> EntryTimeOf(std::string_view field) {
    constexpr std::size_t longest = 12;
    if (field.size() < 8 || field.size() > longest || !AreDigits(field)) {
        return {};
    }
    auto const times = Divisions(field, TimeForms(true));
    if (times.empty()) {
        auto const others = Divisions(field, TimeForms(false));
        return others.empty() ? FieldReading<ScheduleTime>{}
                              : FieldReading<ScheduleTime>{TimeOf(others.front())};
    }
    FieldReading<ScheduleTime> reading{TimeOf(times.front())};
    if (times.size() > 1) {
        reading.note = "read as " + PartText(TimeOf(times.front())) + "; it may also mean " +
                       PartText(TimeOf(times[1])) + SameForBoth;
    }
    return reading;
}

FieldReading<ScheduleTime> TimeValueOf(std::string_view field) {
    bool const isAny = field.size() == 9 && field.substr(6) == Any;
    if (!AreDigits(field) || (field.size() != 8 && !isAny)) {
        return {};
    }
    auto const part = [&](std::size_t at) { return Number(NumberOfDigits(field.substr(at, 2))); };
    FieldReading<ScheduleTime> reading{ScheduleTime{part(0), part(2), part(4), part(6)}};
    ScheduleTime& time = *reading.part;
    if (isAny) {
        time.hundredths.reset();
    }
    if (time.hour == CutDay) {
        time.hour.reset();
    }
    bool isOpen = false;
    if (time.second == CutDay) {
        isOpen = true;
        if (isAny) {
            time.second.reset();
        }
    }
    if (time.minute == CutDay) {
        isOpen = true;
        if (!time.hour && isAny) {
            time.minute.reset();
        }
    }
    if (isOpen) {
        reading.note = std::string("a 25 in this time may also mean any") + SameForBoth;
    }
    return reading;
}

FieldReading<ScheduleDate> DateOf(std::string_view field) {
    if (field.size() != 9) {
        return {};
    }
    auto const weekday = DatePart(field.substr(0, 1));
    auto const day = DatePart(field.substr(1, 2));
    auto const month = DatePart(field.substr(3, 2));
    auto const year = DatePart(field.substr(5));
    if (!weekday.part || !day.part || !month.part || !year.part) {
        return {};
    }
    FieldReading<ScheduleDate> reading{ScheduleDate{*year.part, *month.part, *day.part, *weekday.part}};
    ScheduleDate& date = *reading.part;
    if (date.year == AnyYear) {
        date.year.reset();
    }
    if (date.month == CutDay) {
        date.month.reset();
    }
    bool const isCutWeekday = date.weekday == CutWeekday;
    bool const isWeekdayOpen = !date.weekday || isCutWeekday;
    bool const isCutDay = date.day == CutDay;
    if (isCutDay && !IsDay25(date, isWeekdayOpen)) {
        date.day.reset();
    }
    bool const mayBeTuesday = isCutWeekday && (isCutDay || !IsComplete(date));
    if (isCutWeekday && !IsTuesday(date)) {
        date.weekday.reset();
    }
    std::optional<ScheduleDate> other;
    if (isCutDay) {
        other = date;
        other->day = date.day ? Number() : Number(CutDay);
        other->weekday = isWeekdayOpen ? Number() : date.weekday;
    }
    reading.note = DateNote(date, other, mayBeTuesday);
    return reading;
}

FieldReading<WeekAndDay> WeekAndDayOf(std::string_view field) {
    constexpr std::size_t longest = 9;
    if (field.size() > longest) {
        return {};
    }
    auto found = Divisions(field, {{2, 1, 14, "**"}, {1, 1, 9, "*"}, {1, 1, 7, "*"}});
    if (found.empty()) {
        found = Divisions(field, {{2, 1, 99, "**"}, {1, 1, 9, "*"}, {1, 1, 9, "*"}});
    }
    if (found.empty()) {
        return {};
    }
    return {WeekAndDay{found.front()[0], found.front()[1], found.front()[2]}};
}

std::string TimeField(ScheduleTime const& time) {
    return Digits(*time.hour, 2) + Digits(*time.minute, 2) + Digits(*time.second, 2) +
           Digits(*time.hundredths, 2);
}

std::string DateField(ScheduleDate const& date) {
    return (date.weekday ? Digits(*date.weekday, 1) : "*") + (date.day ? Digits(*date.day, 2) : "**") +
           (date.month ? Digits(*date.month, 2) : "**") + (date.year ? Digits(*date.year, 4) : "****");
}

std::string WeekAndDayField(WeekAndDay const& days) {
    return (days.month ? Digits(*days.month, 2) : "**") + (days.week ? Digits(*days.week, 1) : "*") +
           (days.weekday ? Digits(*days.weekday, 1) : "*");
}

ScheduleDate DeliveredDate(ScheduleDate const& date) {
    ScheduleDate cut = date;
    cut.weekday = date.weekday.value_or(CutWeekday);
    cut.day = date.day.value_or(CutDay);
    cut.month = date.month.value_or(CutDay);
    cut.year = date.year.value_or(AnyYear);
    return *DateOf(DateField(cut)).part;
}

}  // namespace workbench
