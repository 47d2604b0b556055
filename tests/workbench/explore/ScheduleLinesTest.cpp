#include "ScheduleLines.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

using standard::Datum;
using standard::DatumKind;

Datum Constructed(std::uint8_t tag, std::vector<Datum> children) {
    Datum datum;
    datum.kind = DatumKind::Constructed;
    datum.isContext = true;
    datum.tag = tag;
    datum.children = std::move(children);
    return datum;
}

Datum Context(std::uint8_t tag, std::vector<unsigned char> const& octets) {
    Datum datum;
    datum.kind = DatumKind::Unknown;
    datum.isContext = true;
    datum.tag = tag;
    for (unsigned char const octet : octets) {
        datum.octets.push_back(static_cast<char>(octet));
    }
    return datum;
}

Datum Of(DatumKind kind, std::array<std::uint8_t, 4> const& calendar) {
    Datum datum;
    datum.kind = kind;
    datum.calendar = calendar;
    return datum;
}

Datum Real(double real) {
    Datum datum;
    datum.kind = DatumKind::Real;
    datum.real = real;
    return datum;
}

std::vector<Datum> Event(Datum const& entry) {
    return {Constructed(0, {entry}), Constructed(2, {Of(DatumKind::Time, {8, 0, 0, 0}), Real(21.5)}),
            Context(3, {10})};
}

Datum const December25 = Of(DatumKind::Date, {126, 12, 25, 255});

TEST(ScheduleLines, HaveALineForEachDayOfTheWeek) {
    std::vector<Datum> days(7, Constructed(0, {}));
    days[0] = Constructed(0, {Of(DatumKind::Time, {17, 30, 0, 0}), Real(5)});
    std::vector<std::string> const lines = WeeklyLines(days);
    ASSERT_EQ(7u, lines.size());
    EXPECT_EQ("Monday     17:30 5", lines[0]);
    EXPECT_EQ("Sunday     -", lines[6]);
}

TEST(ScheduleLines, NameTheWeekAndTheDayOfAnEvent) {
    EXPECT_EQ("Tuesday of the last week of even months: 08:00 21.5 (priority 10)",
              ExceptionLines(Event(Context(2, {14, 6, 2}))).front());
    EXPECT_EQ("every day: 08:00 21.5 (priority 10)",
              ExceptionLines(Event(Context(2, {255, 255, 255}))).front());
}

TEST(ScheduleLines, HaveTheTwoDatesOfARange) {
    EXPECT_EQ("2026-12-25 to 2026-12-25: 08:00 21.5 (priority 10)",
              ExceptionLines(Event(Constructed(1, {December25, December25}))).front());
}

TEST(ScheduleLines, TakeOnlyDatesForTheEndsOfARange) {
    auto const lines = ExceptionLines(Event(Constructed(1, {December25, Real(7)})));
    ASSERT_EQ(1u, lines.size());
    EXPECT_EQ(std::string::npos, lines[0].find(" to "));
    EXPECT_NE(std::string::npos, lines[0].find('7'));
}

}  // namespace
}  // namespace workbench
