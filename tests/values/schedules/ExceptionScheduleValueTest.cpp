#include <gtest/gtest.h>

#include <typeinfo>

#include "ExceptionScheduleValue.h"
#include "ValueTags.h"
#include "WeeklyScheduleValue.h"

using test::Compared;
using test::Failure;
using test::Hex;
using test::ParseOctets;
using test::Written;

namespace {

constexpr auto Utf8 = EncodingTypeEnum::Utf8;

std::string const Noon = "B4 0C 00 00 00 ";

ExceptionScheduleValue Events(std::string const& text) {
    test::RecordSeed("texts", text);
    return ExceptionScheduleValue(text, Utf8);
}

std::string ReadText(std::string const& hex) {
    return test::ReadText<ExceptionScheduleValueParser>(hex);
}

template <class Exception = std::runtime_error>
std::string WriteFailure(std::string const& text) {
    return Failure<Exception>([&] { Events(text).ToApplicationComplexTags(); });
}

// An event for Calendar 7 of priority 10, as octets and as text.
std::string Event(std::string const& list) {
    return "1C 01 80 00 07 2E " + list + "2F 39 0A ";
}
std::string EventText(std::string const& entries) {
    return "3,7,10," + entries + ";";
}

// The parser's text for one value at noon.
std::string TailRead(std::string const& valueHex) {
    std::string const start = "3,7,10,12000000,";
    std::string const text = ReadText(Event(Noon + valueHex));
    EXPECT_EQ(text.substr(0, start.size()), start);
    return text.substr(start.size());
}

}  // namespace

TEST(ExceptionSchedule, OfDateCalendarAndWeekIsTheSameBothWays) {
    std::string const text =
        "0,315032024,16,08000000,1,1,1,17000000,1,1,0;3,7,10,08000000,4,9,20.000000;"
        "2,**12,5,12000000,,13000000,9,1,1;";
    std::string const octets =
        "0E 0C 7C 03 0F 03 0F 2E B4 08 00 00 00 11 B4 11 00 00 00 10 2F 39 10 "
        "1C 01 80 00 07 2E B4 08 00 00 00 44 41 A0 00 00 2F 39 0A "
        "0E 2B 00 01 02 0F 2E B4 0C 00 00 00 00 B4 0D 00 00 00 94 00 00 00 01 2F 39 05";
    EXPECT_EQ(ReadText(octets), text);
    EXPECT_EQ(Written(Events(text)), octets);
}

TEST(ExceptionSchedule, OfADateRangeIsTheSameBothWays) {
    std::string const text = "1,101012024,231122024,3,12000000,1,1,1;";
    std::string const octets = "0E 1E A4 7C 01 01 01 A4 7C 0C 1F 02 1F 0F 2E B4 0C 00 00 00 11 2F 39 03";
    EXPECT_EQ(ReadText(octets), text);
    EXPECT_EQ(Written(Events(text)), octets);
    EXPECT_EQ(Written(Events("1,*********,231122024,3,12000000,1,1,1;")).substr(6, 17), "A4 FF FF FF FF A4");
}

TEST(ExceptionSchedule, ThatIsEmptyCanBeReadButNotWritten) {
    EXPECT_EQ(ReadText(""), "");
    EXPECT_EQ(WriteFailure(""), "ExceptionSchedule value = 0");
}

TEST(ExceptionSchedule, WithAnEmptyEventFails) {
    EXPECT_EQ(WriteFailure(";"), "ExceptionSchedule value = 0");
    EXPECT_EQ(WriteFailure("3,7,10;;3,7,10;"), "ExceptionSchedule value = 0");
}

TEST(ExceptionSchedule, OfACalendarAloneFailsAtThePriority) {
    EXPECT_EQ(WriteFailure("3,7"), "ExceptionSchedule value = 0");
}

TEST(ExceptionSchedule, OfAnyPeriodWithoutAPriorityFails) {
    EXPECT_EQ(WriteFailure("3,7,,12000000,1,1,1"), "ExceptionSchedule value = 0");
    EXPECT_EQ(WriteFailure("3"), "ExceptionSchedule value = 0");
    EXPECT_EQ(WriteFailure("0,315032024"), "ExceptionSchedule value = 0");
    EXPECT_EQ(WriteFailure("1,315032024,315032024"), "ExceptionSchedule value = 0");
}

TEST(ExceptionSchedule, OfADateOfEightCharactersFails) {
    EXPECT_EQ(WriteFailure("0,31503202,16,12000000,1,1,1;"), "ExceptionSchedule Date - len != 9");
}

TEST(ExceptionSchedule, OfAnyDateThatHasNotNineCharactersFails) {
    EXPECT_EQ(WriteFailure("1,315032024,31503202,16,12000000,1,1,1;"), "ExceptionSchedule Date - len != 9");
    EXPECT_EQ(WriteFailure("1,3150320244,315032024,16,12000000,1,1,1;"), "ExceptionSchedule Date - len != 9");
    EXPECT_EQ(WriteFailure("0,,16,12000000,1,1,1;"), "ExceptionSchedule Date - len != 9");
}

TEST(ExceptionSchedule, OfAnEmptyFormFailsAsANumber) {
    EXPECT_EQ(WriteFailure<std::invalid_argument>(",315032024,16,12000000,1,1,1;"), "stoi");
}

TEST(ExceptionSchedule, OfFourWildcardsForMonthWeekAndDayMakesZeroOctets) {
    EXPECT_EQ(Written(Events("2,****,5,12000000,1,1,1;")), "0E 2B 00 00 00 0F 2E B4 0C 00 00 00 11 2F 39 05");
}

TEST(ExceptionSchedule, HasTwoDigitsForTheMonthAndOneEachForWeekAndDay) {
    EXPECT_EQ(Written(Events("2,*257,5;")), "0E 2B 00 05 07 0F 2E 2F 39 05");
    EXPECT_EQ(Written(Events("2,12*79,5;")), "0E 2B 0C 00 07 0F 2E 2F 39 05");
    EXPECT_EQ(ReadText("0E 2B 00 00 00 0F 2E B4 0C 00 00 00 11 2F 39 05"), "2,****,5,12000000,1,1,1;");
    EXPECT_EQ(ReadText("0E 2B 0C 05 07 0F 2E B4 0C 00 00 00 11 2F 39 05"), "2,1257,5,12000000,1,1,1;");
    EXPECT_EQ(ReadText("0E 2B 03 05 07 0F 2E B4 0C 00 00 00 11 2F 39 05"), "2,0357,5,12000000,1,1,1;");
    EXPECT_EQ(Written(Events("2,0357,5;")), "0E 2B 03 05 07 0F 2E 2F 39 05");
    EXPECT_EQ(WriteFailure<std::invalid_argument>("2,121,5,12000000,1,1,1;"), "stoi");
}

TEST(ExceptionSchedule, WithANullAsTheLastEntryReadsItBackAsANull) {
    EXPECT_EQ(ReadText(Event(Noon + "00 ")), "3,7,10,12000000,;");
    EXPECT_EQ(Written(Events("3,7,10,12000000,;")), test::ToHex(Hex(Event(Noon + "00 "))));
}

TEST(ExceptionSchedule, ReadsATimeWithoutAFollowingValueAsANull) {
    EXPECT_EQ(Written(Events("3,7,10,12000000;")), test::ToHex(Hex(Event(Noon + "00 "))));
    EXPECT_EQ(Written(Events("3,7,10,12000000,,12000000,1,1,1;")),
              test::ToHex(Hex(Event(Noon + "00 " + Noon + "11 "))));
}

TEST(ExceptionSchedule, OfForm9IsOnlyAPriorityOfZero) {
    EXPECT_EQ(Written(Events("9")), "39 00");
}

TEST(ExceptionSchedule, OfAnyUnknownFormIsOnlyAPriorityOfZero) {
    EXPECT_EQ(Written(Events("9,whatever;4;-1,x;3,7,10;")), "39 00 39 00 39 00 1C 01 80 00 07 2E 2F 39 0A");
    EXPECT_EQ(WriteFailure<std::invalid_argument>("x,7,10"), "stoi");
}

TEST(ExceptionSchedule, WithAnEventWithoutEntriesLosesItAndTheSemicolonBeforeIt) {
    std::string const full = Event(Noon + "11 ");
    EXPECT_EQ(ReadText(full + Event("")), "3,7,10,12000000,1,1,1");
}

TEST(ExceptionSchedule, JoinsTheEventsAroundOneWithoutEntries) {
    std::string const full = Event(Noon + "11 ");
    std::string const fullText = "3,7,10,12000000,1,1,1";
    std::string const empty = Event("");
    EXPECT_EQ(ReadText(full + empty + full), fullText + fullText + ";");
    EXPECT_EQ(ReadText(full + empty + empty), fullText + ";");
    EXPECT_EQ(ReadText(empty), "");
    EXPECT_EQ(ReadText(empty + full), fullText + ";");
}

TEST(ExceptionScheduleParser, LosesTheSemicolonThatEndsTheTextOfALastEntryAndAddsNone) {
    EXPECT_EQ(ReadText("1C 01 80 00 07 2E " + Noon + "73 00 61 3B 2F 39 05"), "3,7,5,12000000,7,2,a");
}

TEST(ExceptionSchedule, WithoutEntriesIsWrittenWithAnEmptyList) {
    EXPECT_EQ(Written(Events("3,7,10;")), test::ToHex(Hex(Event(""))));
}

TEST(ExceptionSchedule, OfElevenTagsIsReadAsEmpty) {
    std::string const event = Event(Noon + "11 ");
    EXPECT_EQ(ReadText(event + event + event + "1C 01 80 00 07 2E 2F"), "");
}

TEST(ExceptionSchedule, OfTagsThatAreNotAMultipleOfThreeIsReadAsEmpty) {
    std::string hex;
    for (int count = 0; count < 20; ++count) {
        if (count % 3 != 0) {
            EXPECT_EQ(ReadText(hex), "") << count;
        }
        hex += "11 ";
    }
}

TEST(ExceptionSchedule, DiffersFromTheWeeklyOneInUnsignedAndNull) {
    EXPECT_EQ(TailRead("21 2D "), "2,2,45;");
    EXPECT_EQ(TailRead("24 FF FF FF FF "), "2,10,4294967295;");
    EXPECT_EQ(TailRead("00 "), ";");
    EXPECT_EQ(TailRead("D1 05 "), ";");
    EXPECT_EQ(ReadText(Event(Noon + "00 " + Noon + "11 ")), EventText("12000000,,12000000,1,1,1"));
}

TEST(ExceptionSchedule, HasTheOtherValuesOfTheWeeklyOne) {
    EXPECT_EQ(TailRead("11 "), "1,1,1;");
    EXPECT_EQ(TailRead("31 F9 "), "3,3,249;");
    EXPECT_EQ(TailRead("44 41 AC 00 00 "), "4,9,21.500000;");
    EXPECT_EQ(TailRead("55 08 BF F8 00 00 00 00 00 00 "), "5,9,-1.500000;");
    EXPECT_EQ(TailRead("62 0A FF "), "6,4,0aff;");
    EXPECT_EQ(TailRead("75 06 00 68 65 6C 6C 6F "), "7,5,hello;");
    EXPECT_EQ(TailRead("82 04 A0 "), "8,4,1010;");
    EXPECT_EQ(TailRead("91 02 "), "9,1,2;");
    EXPECT_EQ(TailRead("A4 7C 03 0F 03 "), "10,9,315032024;");
    EXPECT_EQ(TailRead("B4 06 1E 00 00 "), "11,8,06300000;");
    EXPECT_EQ(TailRead("C4 00 00 04 D2 "), "12,0,1234;");
}

TEST(ExceptionSchedule, WritesTheValuesOfTheWeeklyOne) {
    auto const event = [](std::string const& tail) { return Written(Events(EventText("12000000," + tail))); };
    auto const octets = [](std::string const& value) { return test::ToHex(Hex(Event(Noon + value))); };
    EXPECT_EQ(event("0,1,0"), octets("00 "));
    EXPECT_EQ(event("1,1,1"), octets("11 "));
    EXPECT_EQ(event("2,2,45"), octets("21 01 "));
    EXPECT_EQ(event("3,2,-7"), octets("31 01 "));
    EXPECT_EQ(event("4,9,21.500000"), octets("44 41 AC 00 00 "));
    EXPECT_EQ(event("5,9,-1.500000"), octets("55 08 BF F8 00 00 00 00 00 00 "));
    EXPECT_EQ(event("6,4,0aff"), octets("62 0A FF "));
    EXPECT_EQ(event("7,5,hello"), octets("75 06 00 68 65 6C 6C 6F "));
    EXPECT_EQ(event("8,4,1010"), octets("82 04 A0 "));
    EXPECT_EQ(event("9,1,2"), octets("94 00 00 00 02 "));
    EXPECT_EQ(event("10,9,31503****"), octets("A4 FF 03 0F 03 "));
    EXPECT_EQ(event("11,8,06300000"), octets("B4 06 1E 00 00 "));
    EXPECT_EQ(event("12,0,1234"), octets("C4 00 00 04 D2 "));
    EXPECT_EQ(WriteFailure(EventText("12000000,10,9,3150320")), "Date - len != 9");
    EXPECT_EQ(WriteFailure(EventText("12000000,11,7,12000000")), "Time - len != 8");
    EXPECT_EQ(WriteFailure<std::invalid_argument>(EventText("1200,9,1,2")), "stoi");
    EXPECT_EQ(WriteFailure<std::invalid_argument>(EventText("12000000,5,1,x")), "stod");
}

TEST(ExceptionSchedule, WithTooFewFieldsFailsAtTheFirstThatIsMissing) {
    for (char const* const entries : {"12000000,1", "12000000,1,1", "12000000,1,1,", "12000000,1,,1",
                                      "12000000,7,0,,12000000,1,1,1", ",1,1,1"}) {
        EXPECT_EQ(WriteFailure(EventText(entries)), "ExceptionSchedule value = 0") << entries;
    }
}

TEST(ExceptionSchedule, ChecksATimeBeforeTheFieldsAfterIt) {
    EXPECT_EQ(WriteFailure<std::invalid_argument>(EventText("1200,1,1")), "stoi");
}

TEST(ExceptionSchedule, WritesPrioritiesAndCalendarsByTheirOwnWidth) {
    EXPECT_EQ(Written(Events("3,7,300;")), "1C 01 80 00 07 2E 2F 3A 01 2C");
    EXPECT_EQ(Written(Events("3,4194304,0;")), "1C 01 80 00 00 2E 2F 39 00");
    EXPECT_EQ(WriteFailure<std::out_of_range>("3,9999999999,0;"), "stoi");
    EXPECT_EQ(WriteFailure<std::invalid_argument>("3,7,high;"), "stoi");
}

TEST(ExceptionScheduleParser, UsesTheLow22BitsOfACalendarAndTheLow32OfAPriority) {
    EXPECT_EQ(ReadText("1C FF FF FF FF 2E " + Noon + "11 2F 35 05 01 00 00 00 05"),
              "3,4194303,5,12000000,1,1,1;");
    EXPECT_EQ(ReadText("1C FF FF FF FF 2E " + Noon + "11 2F 34 FF FF FF FF").substr(0, 20),
              "3,4194303,4294967295");
}

TEST(ExceptionScheduleParser, GivesAnEmptyWeekForACalendarEntryOfAnotherSize) {
    EXPECT_EQ(ReadText("0E 2A 01 02 0F 2E " + Noon + "11 2F 39 05"), "2,,5,12000000,1,1,1;");
    EXPECT_EQ(ReadText("0E 08 0F 2E " + Noon + "11 2F 39 05"), "2,,5,12000000,1,1,1;");
    EXPECT_EQ(ReadText("0E 1E A4 7C 01 01 01 1F 0F 2E " + Noon + "11 2F 39 05"), "2,,5,12000000,1,1,1;");
}

TEST(ExceptionScheduleParser, CutsAnUnspecifiedDateAndPrintsTheStandardsOctetsForAnyWeek) {
    EXPECT_EQ(ReadText("0E 0C FF FF FF FF 0F 2E " + Noon + "11 2F 39 05"), "0,225252155,5,12000000,1,1,1;");
    EXPECT_EQ(ReadText("0E 2B FF FF FF 0F 2E " + Noon + "11 2F 39 05"), "2,255255255,5,12000000,1,1,1;");
}

TEST(ExceptionScheduleParser, ReadsAPeriodWithoutOneSubTagAsACalendar) {
    EXPECT_EQ(ReadText("18 2E " + Noon + "11 2F 39 05"), "3,0,5,12000000,1,1,1;");
    EXPECT_EQ(ReadText("0E 0F 2E " + Noon + "11 2F 39 05"), "3,0,5,12000000,1,1,1;");
    EXPECT_EQ(ReadText("0E 08 18 0F 2E " + Noon + "11 2F 39 05"), "3,0,5,12000000,1,1,1;");
}

TEST(ExceptionScheduleParser, RefusesTagsOfAnotherShape) {
    for (std::string const& hex : std::vector<std::string>{
             "0E 1E 11 11 1F 0F 2E " + Noon + "11 2F 39 05",        // a range without dates
             "0E 1E 2E 2F 2E 2F 1F 0F 2E " + Noon + "11 2F 39 05",  // a range of constructed tags
             "1D 05 00 01 80 00 07 2E " + Noon + "11 2F 39 05",     // a calendar of five octets
             "1C 01 80 00 07 29 11 39 05",                          // a list that is primitive
             "1C 01 80 00 07 2E " + Noon + "11 2F 3E 3F",           // a priority that is not
             "1C 01 80 00 07 2E " + Noon + "11 2F 3D 09 00 00 00 00 00 00 00 00 05",  // and one too long
             Event(Noon),             // a time without a value
             Event("0E 0F 11 "),      // a constructed time
             Event(Noon + "81 04 "),  // too many unused bits
         }) {
        EXPECT_THROW(ParseOctets<ExceptionScheduleValueParser>(Hex(hex)), ParseException) << hex;
    }
}

TEST(ExceptionSchedule, CutAtAnyLengthFailsOrGivesWholeEvents) {
    std::string const text = "0,315032024,16,08000000,1,1,1,17000000,7,5,hello;2,**12,5,12000000,;";
    for (std::size_t length = 0; length <= text.size(); ++length) {
        try {
            auto const tags = Events(text.substr(0, length)).ToApplicationComplexTags();
            EXPECT_EQ(tags.size() % 3, 0U) << length;
        } catch (std::invalid_argument const& failure) {
            EXPECT_STREQ(failure.what(), "stoi") << length;
        } catch (std::runtime_error const& failure) {
            std::string const reason = failure.what();
            EXPECT_TRUE(reason == "ExceptionSchedule value = 0" ||
                        reason == "ExceptionSchedule Date - len != 9")
                << length << " " << reason;
        }
    }
}

TEST(ExceptionScheduleParser, GivesATextOfItsOwnEncoding) {
    auto const value = test::Read<CharacterStringValue, ExceptionScheduleValueParser>("");
    EXPECT_EQ(static_cast<int>(value.GetEncoding()), 6);
}

TEST(ExceptionSchedule, IsNeverOneTagNorARunOfPrimitiveOnes) {
    EXPECT_EQ(Failure<std::runtime_error>([] { Events("9").ToApplicationTag(); }), "Not emplemented");
    EXPECT_TRUE(Events("9").ToApplicationTags().empty());
    EXPECT_EQ(ExceptionScheduleValue().GetValue(), "");
}

TEST(ExceptionSchedule, ComparesByEncodingAndThenByOctets) {
    EXPECT_EQ(Compared(ExceptionScheduleValue("a", EncodingTypeEnum::Ucs2), Events("b")), 4);
    EXPECT_EQ(Compared(Events("a"), Events("ab")), -1);
    EXPECT_EQ(Compared(Events("a"), Events("a")), 0);
    EXPECT_THROW(Compared(Events(""), WeeklyScheduleValue("", Utf8)), std::bad_cast);
}

TEST(ExceptionSchedule, GivesAFieldOnlyIfItIsThereAndNotEmpty) {
    std::vector<std::string> const fields = {"a", "", "c"};
    EXPECT_EQ(ExceptionScheduleValue::gfv(fields, 0), "a");
    EXPECT_EQ(ExceptionScheduleValue::gfv(fields, 2), "c");
    for (int const index : {1, 3, 1000, -1}) {
        EXPECT_EQ(Failure<std::runtime_error>([&] { ExceptionScheduleValue::gfv(fields, index); }),
                  "ExceptionSchedule value = 0");
    }
}
