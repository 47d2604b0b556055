#include "ReadSchedule.h"

#include "EntryReader.h"
#include "ScheduleParts.h"

namespace workbench {

namespace {

// The forms of a period by their first field.
enum PeriodForm : char { OneDate = '0', TwoDates = '1', WeekDays = '2', CalendarDays = '3' };

void CheckPriority(TextCursor& text, std::size_t event, unsigned priority) {
    std::string const mistake = MistakeOfPriority(priority);
    if (!mistake.empty()) {
        text.Note(EventPlace(event), mistake);
    }
}

ScheduleDate DateField(TextCursor& text, std::size_t event) {
    std::string_view const field = text.Field();
    auto const date = DateOf(field);
    if (!date.part) {
        throw ScheduleMistake(EventPlace(event), field, "a date of nine digits, such as 525122026");
    }
    text.Note(EventPlace(event), date.note);
    text.Note(EventPlace(event), MistakeOf(*date.part));
    return *date.part;
}

Period PeriodOf(TextCursor& text, std::size_t event) {
    std::string_view const form = text.Field();
    switch (form.size() == 1 ? form.front() : '\0') {
        case OneDate:
            return DateField(text, event);
        case TwoDates: {
            ScheduleDate const from = DateField(text, event);
            return DateRange{from, DateField(text, event)};
        }
        case WeekDays: {
            std::string_view const field = text.Field();
            auto const days = WeekAndDayOf(field);
            if (!days.part) {
                throw ScheduleMistake(EventPlace(event), field, "month, week and weekday, such as 1265");
            }
            text.Note(EventPlace(event), MistakeOf(Period(*days.part)));
            return *days.part;
        }
        case CalendarDays:
            return CalendarReference{text.Number(EventPlace(event), "the number of a calendar")};
        default:
            throw ScheduleMistake(EventPlace(event), form, "0, 1, 2 or 3 for the form of its period");
    }
}

// The entries of an event up to its end.
void ReadEntries(TextCursor& text, std::size_t number, std::vector<ScheduleEntry>& entries) {
    for (;;) {
        entries.push_back(ReadEntry(text, {EntryStyle::Exception, EventPlace(number)}));
        if (text.Take(';')) {
            return;
        }
        if (!text.Take(',')) {
            // Either the text is at its end, or the next event follows without a ";".
            text.Note(EventPlace(number),
                      "the device has an event without entries after it, which the driver's text leaves out");
            return;
        }
    }
}

void ReadDay(TextCursor& text, std::size_t day, std::vector<ScheduleEntry>& entries) {
    if (text.Take(',')) {
        text.Note(DayPlace(day),
                  "its first entry is Null in the device; the driver's text leaves such entries out");
    }
    while (!text.IsAtEnd() && !text.Take(';')) {
        entries.push_back(ReadEntry(text, {EntryStyle::Weekly, DayPlace(day)}));
        if (!text.Take(',') && !text.IsAtEnd() && text.Next() != ';') {
            throw ScheduleMistake(DayPlace(day), text.Rest(), "',' or ';' after an entry");
        }
    }
}

WeeklySchedule Weekly(TextCursor& text) {
    WeeklySchedule schedule;
    std::size_t day = 0;
    for (; !text.IsAtEnd() && day < DaysOfWeek; ++day) {
        ReadDay(text, day, schedule.days[day]);
    }
    if (day < DaysOfWeek || !text.IsAtEnd()) {
        throw ScheduleMistake("", day < DaysOfWeek ? text.Whole() : text.Rest(),
                              "seven days, each with ';' at its end");
    }
    return schedule;
}

ExceptionSchedule Exception(TextCursor& text) {
    ExceptionSchedule schedule;
    while (!text.IsAtEnd()) {
        std::size_t const number = schedule.events.size();
        SpecialEvent event;
        event.period = PeriodOf(text, number);
        event.priority = text.Number(EventPlace(number), "a priority from 1 to 16");
        CheckPriority(text, number, event.priority);
        ReadEntries(text, number, event.entries);
        schedule.events.push_back(std::move(event));
    }
    return schedule;
}

template <typename Schedule, typename Reader>
ScheduleReading<Schedule> ReadWith(std::string_view octets, Reader reader) {
    ScheduleReading<Schedule> reading;
    if (octets.size() > LongestScheduleText) {
        reading.mistake = {"", "the text has " + std::to_string(octets.size()) + " octets; the longest has " +
                                   std::to_string(LongestScheduleText)};
        return reading;
    }
    TextCursor text(octets, reading.notes);
    try {
        reading.schedule = reader(text);
    } catch (ScheduleMistake const& mistake) {
        reading.mistake = mistake.remark;
    }
    return reading;
}

}  // namespace

ScheduleReading<WeeklySchedule> ReadWeekly(std::string_view text) {
    return ReadWith<WeeklySchedule>(text, Weekly);
}

ScheduleReading<ExceptionSchedule> ReadException(std::string_view text) {
    return ReadWith<ExceptionSchedule>(text, Exception);
}

}  // namespace workbench
