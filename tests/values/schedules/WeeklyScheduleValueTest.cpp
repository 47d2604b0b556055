#include <gtest/gtest.h>

#include <typeinfo>

#include "ExceptionScheduleValue.h"
#include "ScheduleText.h"
#include "ValueTags.h"
#include "WeeklyScheduleValue.h"

using test::Compared;
using test::Failure;
using test::Hex;
using test::ParseOctets;
using test::Written;

namespace {

constexpr auto Utf8 = EncodingTypeEnum::Utf8;

// A week whose first day has this content and whose other days are empty, as octets and as text.
std::string FirstDay(std::string const& contents) {
    return "0E " + contents + " 0F 0E0F 0E0F 0E0F 0E0F 0E0F 0E0F";
}
std::string FirstDayText(std::string const& entries) {
    return entries + ";;;;;;;";
}

// The parser's text for one value at noon, without the time before it.
std::string TailRead(std::string const& valueHex) {
    std::string const text = test::ReadText<WeeklyScheduleValueParser>(FirstDay("B4 0C000000" + valueHex));
    std::string const start = "12000000,";
    EXPECT_EQ(text.substr(0, start.size()), start);
    EXPECT_EQ(text.substr(text.size() - 7), ";;;;;;;");
    return text.substr(start.size(), text.size() - start.size() - 7);
}

// The octets of the value that the last three fields of an entry give.
std::string TailWritten(std::string const& tail) {
    std::vector<std::string> const fields = SplitText(tail, ',');
    return test::ToHex(
        WeeklyScheduleValue::ToComplexTag(fields.at(0), fields.at(1), fields.at(2)).GetBytes());
}

WeeklyScheduleValue Week(std::string const& text) {
    test::RecordSeed("texts", text);
    return WeeklyScheduleValue(text, Utf8);
}

template <class Exception = std::runtime_error>
std::string WriteFailure(std::string const& text) {
    return Failure<Exception>([&] { Week(text).ToApplicationComplexTags(); });
}

template <class Exception>
std::string TailFailure(std::string const& tail) {
    return WriteFailure<Exception>(FirstDayText("12000000," + tail));
}

std::string ReadFailure(std::string const& hex) {
    return Failure<ParseException>([&] { ParseOctets<WeeklyScheduleValueParser>(Hex(hex)); });
}

}  // namespace

TEST(WeeklySchedule, OfEmptyDaysIsSevenSemicolonsBothWays) {
    std::string const octets = "0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F";
    EXPECT_EQ(test::ReadText<WeeklyScheduleValueParser>(octets), ";;;;;;;");
    EXPECT_EQ(Written(Week(";;;;;;;")), octets);
}

TEST(WeeklySchedule, OfRealsAndABooleanIsTheSameBothWays) {
    std::string const text = "08000000,4,9,21.500000,17300000,4,9,18.000000;07000000,1,1,1;;;;;;";
    std::string const octets =
        "0E B4 08 00 00 00 44 41 AC 00 00 B4 11 1E 00 00 44 41 90 00 00 0F "
        "0E B4 07 00 00 00 11 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F";
    EXPECT_EQ(test::ReadText<WeeklyScheduleValueParser>(octets), text);
    EXPECT_EQ(Written(Week(text)), octets);
}

TEST(WeeklySchedule, OfSixPartsFailsForTheNumberOfDays) {
    EXPECT_EQ(WriteFailure("a;b;c;d;e;f"), "Number days != 7");
}

TEST(WeeklySchedule, OfAnyNumberOfPartsButSevenFails) {
    EXPECT_EQ(WriteFailure(""), "Number days != 7");
    EXPECT_EQ(WriteFailure(";;;;;;"), "Number days != 7");
    EXPECT_EQ(WriteFailure(";;;;;;;;"), "Number days != 7");
}

TEST(WeeklySchedule, OfSevenPartsNeedsNoClosingSemicolon) {
    std::string const text = "08000000,1,1,1";
    EXPECT_EQ(Written(Week(";;;;;;" + text)), Written(Week(";;;;;;" + text + ";")));
}

TEST(WeeklySchedule, OfAnEntryOfThreeFieldsFails) {
    EXPECT_EQ(WriteFailure(FirstDayText("12000000,4,9")), "Number not odd");
}

TEST(WeeklySchedule, OfFieldsThatAreNotAMultipleOfFourFails) {
    EXPECT_EQ(WriteFailure(FirstDayText("12000000,4,9,1,1")), "Number not odd");
    EXPECT_EQ(WriteFailure(FirstDayText(",")), "Number not odd");
    EXPECT_EQ(WriteFailure("a;b;c;d;e;f;g"), "Number not odd");
}

TEST(WeeklySchedule, FailsAtTheFirstDayThatIsWrong) {
    EXPECT_EQ(WriteFailure<std::invalid_argument>("1200,9,1,2;12000000,4,9;;;;;;"), "stoi");
    EXPECT_EQ(WriteFailure("12000000,4,9;1200,9,1,2;;;;;;"), "Number not odd");
    EXPECT_EQ(WriteFailure("12000000,10,9,3150320;;;;;;12000000;"), "Date - len != 9");
}

TEST(WeeklySchedule, ReadsADateOfEightStarsAsFourUnspecifiedFields) {
    EXPECT_EQ(Written(Week(FirstDayText("12000000,10,9,********1"))),
              test::ToHex(Hex(FirstDay("B4 0C000000 A4 FF FF FF FF"))));
}

TEST(WeeklySchedule, AcceptsAStarAtTheStartOfEachFieldOfADate) {
    EXPECT_EQ(TailWritten("10,9,*15*02024"), "A4 7C FF 0F FF");
    EXPECT_EQ(TailWritten("10,9,*150*2024"), "A4 7C 00 0F FF");
    EXPECT_EQ(TailWritten("10,9,3**032024"), "A4 7C 03 FF 03");
}

TEST(WeeklySchedule, ChecksTheRealLengthOfADateAndNotItsLengthField) {
    EXPECT_EQ(TailWritten("10,1,315032024"), "A4 7C 03 0F 03");
    EXPECT_EQ(TailFailure<std::runtime_error>("10,9,3150320"), "Date - len != 9");
}

TEST(WeeklySchedule, RefusesADateThatIsTooLong) {
    EXPECT_EQ(TailFailure<std::runtime_error>("10,9,3150320245"), "Date - len != 9");
}

TEST(WeeklySchedule, ChecksTheLengthFieldOfATimeAlthoughItHasEightDigits) {
    EXPECT_EQ(TailFailure<std::runtime_error>("11,7,12000000"), "Time - len != 8");
}

TEST(WeeklySchedule, DoesNotCheckTheRealLengthOfATime) {
    EXPECT_EQ(TailWritten("11,8,06300000999"), "B4 06 1E 00 00");
    EXPECT_EQ(TailFailure<std::invalid_argument>("11,8,0630"), "stoi");
}

TEST(WeeklySchedule, OfATimeOfFourCharactersFailsAsANumber) {
    EXPECT_EQ(WriteFailure<std::invalid_argument>(FirstDayText("1200,9,1,2")), "stoi");
}

TEST(WeeklySchedule, ReadsTheFirstEightCharactersOfATimeAndNoFewer) {
    std::string const time = "12345678";
    for (std::size_t length = 0; length < time.size(); ++length) {
        EXPECT_EQ(
            Failure<std::invalid_argument>([&] { WeeklyScheduleValue::ToTimeTag(time.substr(0, length)); }),
            "stoi")
            << length;
    }
    EXPECT_EQ(test::ToHex(WeeklyScheduleValue::ToTimeTag(time).GetBytes()), "B4 0C 22 38 4E");
    EXPECT_EQ(test::ToHex(WeeklyScheduleValue::ToTimeTag("123456789").GetBytes()), "B4 0C 22 38 4E");
    EXPECT_EQ(Failure<std::invalid_argument>([] { WeeklyScheduleValue::ToTimeTag("**000000"); }), "stoi");
}

struct ValueCase {
    char const* hex;
    std::string tail;
};

class WeeklyValueRead : public testing::TestWithParam<ValueCase> {};

TEST_P(WeeklyValueRead, GivesTypeLengthAndValue) {
    EXPECT_EQ(TailRead(GetParam().hex), GetParam().tail);
}

INSTANTIATE_TEST_SUITE_P(
    AllTypes, WeeklyValueRead,
    testing::Values(
        ValueCase{"11", "1,1,1"}, ValueCase{"10", "1,1,0"}, ValueCase{"21 2D", "2,3,45d"},
        ValueCase{"24 FF FF FF FF", "2,11,4294967295d"}, ValueCase{"25 05 01 00 00 00 05", "2,2,5d"},
        ValueCase{"20", "2,2,0d"}, ValueCase{"35 08 FF FF FF FF FF FF FF F9", "3,2,-7"},
        ValueCase{"31 F9", "3,3,249"}, ValueCase{"34 FF FF FF F9", "3,2,-7"},
        ValueCase{"44 41 AC 00 00", "4,9,21.500000"},
        ValueCase{"44 7F 7F FF FF", "4,46,340282346638528859811704183484516925440.000000"},
        ValueCase{"55 08 BF F8 00 00 00 00 00 00", "5,9,-1.500000"}, ValueCase{"62 0A FF", "6,4,0aff"},
        ValueCase{"60", "6,0,"}, ValueCase{"75 06 00 68 65 6C 6C 6F", "7,5,hello"},
        ValueCase{"71 00", "7,0,"}, ValueCase{"73 04 2C 3B", "7,2,,;"}, ValueCase{"82 04 A0", "8,4,1010"},
        ValueCase{"81 00", "8,0,"}, ValueCase{"83 07 00 80", "8,9,000000001"}, ValueCase{"91 02", "9,1,2"},
        ValueCase{"94 FF FF FF FF", "9,2,-1"}, ValueCase{"A4 7C 03 0F 03", "10,9,315032024"},
        ValueCase{"A4 FF FF FF FF", "10,9,225252155"}, ValueCase{"B4 06 1E 00 00", "11,8,06300000"},
        ValueCase{"B4 FF FF FF FF", "11,9,252525255"}, ValueCase{"C4 00 00 04 D2", "12,0,1234"},
        ValueCase{"C4 FF FF FF FF", "12,1023,4194303"}, ValueCase{"D1 05", ""}, ValueCase{"F1 20 05", ""},
        ValueCase{"F1 FF 05", ""}));

TEST(WeeklyValueRead, PrintsTheLargestDoubleInFull) {
    std::string const tail = TailRead("55 08 7F EF FF FF FF FF FF FF");
    EXPECT_EQ(tail.substr(0, 15), "5,316,179769313");
    EXPECT_EQ(tail.size(), 6 + 316U);
}

class WeeklyValueWritten : public testing::TestWithParam<ValueCase> {};

TEST_P(WeeklyValueWritten, GivesTheTag) {
    EXPECT_EQ(TailWritten(GetParam().tail), GetParam().hex);
}

INSTANTIATE_TEST_SUITE_P(
    AllTypes, WeeklyValueWritten,
    testing::Values(
        ValueCase{"00", "0,1,0"}, ValueCase{"11", "1,1,1"}, ValueCase{"10", "1,1,0"},
        ValueCase{"11", "1,5,-3"}, ValueCase{"21 01", "2,3,45d"}, ValueCase{"21 00", "2,2,0d"},
        ValueCase{"31 01", "3,2,-7"}, ValueCase{"31 00", "3,1,0"},
        ValueCase{"44 41 AC 00 00", "4,9,21.500000"}, ValueCase{"44 3F 80 00 00", "4,1,1"},
        ValueCase{"44 7F 80 00 00", "4,5,1e300"}, ValueCase{"55 08 BF F8 00 00 00 00 00 00", "5,9,-1.500000"},
        ValueCase{"62 0A FF", "6,4,0aff"}, ValueCase{"62 0A 0F", "6,3,0af"}, ValueCase{"61 00", "6,2,zz"},
        ValueCase{"75 06 00 68 65 6C 6C 6F", "7,5,hello"}, ValueCase{"82 04 A0", "8,4,1010"},
        ValueCase{"82 05 A0", "8,3,a0f"}, ValueCase{"94 00 00 00 02", "9,1,2"},
        ValueCase{"94 FF FF FF FF", "9,2,-1"}, ValueCase{"A4 7C 03 0F 03", "10,9,315032024"},
        ValueCase{"A4 94 03 0F 03", "10,9,315031792"}, ValueCase{"B4 06 1E 00 00", "11,8,06300000"},
        ValueCase{"C4 00 00 04 D2", "12,0,1234"}, ValueCase{"C4 02 00 04 D2", "12,8,1234"},
        ValueCase{"C4 00 40 00 00", "12,0,4194304"}, ValueCase{"00", "13,1,5"}, ValueCase{"00", "-1,1,5"}));

TEST(WeeklySchedule, OfValuesThatAreNotNumbersFailsAsTheConversionsDo) {
    for (char const* const tail : {"x,1,1", "1,x,1", "7,x,hello", "1,1,x", "2,1,d", "3,1,-", "9,1, ",
                                   "12,x,1", "12,0,x", "10,9,x15032024", "13,x,1"}) {
        EXPECT_EQ(TailFailure<std::invalid_argument>(tail), "stoi") << tail;
    }
    EXPECT_EQ(TailFailure<std::invalid_argument>("4,1,x"), "stod");
    EXPECT_EQ(TailFailure<std::invalid_argument>("5,1,x"), "stod");
    EXPECT_EQ(TailFailure<std::out_of_range>("5,5,1e999"), "stod");
    EXPECT_EQ(TailFailure<std::out_of_range>("1,10,9999999999"), "stoi");
    EXPECT_EQ(TailFailure<std::out_of_range>("9999999999,1,1"), "stoi");
}

// A text that was read is not always written as the same octets. These are all the differences.

TEST(WeeklyAsymmetry, UnsignedAndSignedComeBackAsZeroOrOne) {
    EXPECT_EQ(TailWritten(TailRead("21 2D")), "21 01");
    EXPECT_EQ(TailWritten(TailRead("31 2D")), "31 01");
    EXPECT_EQ(TailWritten(TailRead("21 00")), "21 00");
}

TEST(WeeklyAsymmetry, UnsignedAbove31BitsIsPrintedAndRefused) {
    EXPECT_EQ(TailRead("24 80 00 00 00"), "2,11,2147483648d");
    EXPECT_EQ(TailFailure<std::out_of_range>("2,11,2147483648d"), "stoi");
    EXPECT_EQ(TailWritten("2,11,2147483647d"), "21 01");
}

TEST(WeeklyAsymmetry, NullsAreDroppedWhenReadAndWrittenByTypeZero) {
    std::string const null = "B4 0C000000 00";
    std::string const boolean = "B4 0D000000 11";
    auto const read = [](std::string const& day) {
        return test::ReadText<WeeklyScheduleValueParser>(FirstDay(day));
    };
    EXPECT_EQ(read(null), ";;;;;;;");
    EXPECT_EQ(read(boolean + null), FirstDayText("13000000,1,1,1"));
    EXPECT_EQ(read(null + boolean), FirstDayText(",13000000,1,1,1"));
    EXPECT_EQ(read(boolean + null + boolean), FirstDayText("13000000,1,1,1,13000000,1,1,1"));
    EXPECT_EQ(read("11 00" + boolean), FirstDayText(",13000000,1,1,1"));  // its time is not checked
    EXPECT_EQ(Written(Week(FirstDayText("12000000,0,1,0"))), test::ToHex(Hex(FirstDay(null))));
}

TEST(WeeklyAsymmetry, DateWildcardsAreReadAsADateThatExists) {
    EXPECT_EQ(TailWritten(TailRead("A4 FF FF FF FF")), "A4 FF 19 19 02");
    EXPECT_EQ(TailRead("A4 7C FF 0F 03"), "10,9,315252024");
    EXPECT_EQ(TailRead("A4 7C 03 FF 03"), "10,9,325032024");
}

TEST(WeeklyAsymmetry, AnUnspecifiedTimeIsReadButNotWritten) {
    EXPECT_EQ(TailFailure<std::runtime_error>(TailRead("B4 FF FF FF FF")), "Time - len != 8");
    std::string const text = test::ReadText<WeeklyScheduleValueParser>(FirstDay("B4 FF 00 00 FF 11"));
    EXPECT_EQ(text, FirstDayText("2550000255,1,1,1"));
    EXPECT_EQ(Written(Week(text)), test::ToHex(Hex(FirstDay("B4 19 32 00 02 11"))));
}

TEST(WeeklyAsymmetry, ATextWithADelimiterIsSplitWhenItIsWritten) {
    EXPECT_EQ(TailFailure<std::runtime_error>(TailRead("73 00 2C 41")), "Number not odd");
    EXPECT_EQ(TailFailure<std::runtime_error>(TailRead("73 00 3B 41")), "Number days != 7");
}

TEST(WeeklyAsymmetry, AnEmptyTextIsThreeFieldsWhenItIsWritten) {
    EXPECT_EQ(TailFailure<std::runtime_error>(TailRead("71 00")), "Number not odd");
}

TEST(WeeklyAsymmetry, TheLengthFieldIsIgnoredButMustBeANumber) {
    EXPECT_EQ(TailWritten("7,99,hello"), "75 06 00 68 65 6C 6C 6F");
    EXPECT_EQ(TailFailure<std::invalid_argument>("7,long,hello"), "stoi");
}

TEST(WeeklySchedule, CutAtAnyLengthFails) {
    std::string const text = "08000000,4,9,21.500000,17300000,7,5,hello;07000000,1,1,1;;;;;;";
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_EQ(WriteFailure(text.substr(0, length)), "Number days != 7") << length;
    }
}

TEST(WeeklySchedule, OfADayCutAtAnyLengthFailsOrHasWholeEntries) {
    std::string const day = "08000000,4,9,21.500000,17300000,7,5,hello";
    for (std::size_t length = 0; length <= day.size(); ++length) {
        try {
            auto const tags = Week(FirstDayText(day.substr(0, length))).ToApplicationComplexTags();
            EXPECT_EQ(dynamic_cast<ComplexTag&>(*tags.at(0)).size() % 2, 0) << length;
        } catch (std::runtime_error const& failure) {
            EXPECT_STREQ(failure.what(), "Number not odd") << length;
        }
    }
}

TEST(WeeklyScheduleParser, RefusesAnotherNumberOfDaysThanSeven) {
    std::string hex;
    for (int days = 0; days < 10; ++days) {
        EXPECT_EQ(ReadFailure(hex),
                  days == 7 ? "no failure" : "(WeeklySchedule) tag quantity does not meet expectations");
        hex += "0E 0F ";
    }
}

TEST(WeeklyScheduleParser, RefusesTagsOfAnotherShape) {
    std::string const time = "B4 0C000000";
    for (std::string const& day : std::vector<std::string>{
             time,                                          // a time without a value
             time + "11" + time,                            // the same after a whole pair
             "0E 0F 11",                                    // a constructed time
             "A4 0C000000 11",                              // a date for a time
             "B3 0C0000 11",                                // a time of three octets
             time + "2E 2F",                                // a constructed value
             time + "80",                                   // a bit string without its first octet
             time + "81 04",                                // more unused bits than bits
             time + "70",                                   // a text without its encoding
             time + "A3 7C030F",                            // a date of three octets
             time + "B5 05 0C00000000",                     // a time of five
             time + "25 09 00 00 00 00 00 00 00 00 01",     // a number that is too long
             time + "35 09 00 00 00 00 00 00 00 00 01",     // a number that is too long
             time + "45 05 00 3F 80 00 00",                 // a number that is too long
             time + "55 09 00 3F F0 00 00 00 00 00 00 00",  // a number that is too long
             time + "95 09 00 00 00 00 00 00 00 00 01",     // a number that is too long
             time + "C5 05 00 00 00 04 D2",                 // an object identifier that is too long
         }) {
        EXPECT_THROW(ParseOctets<WeeklyScheduleValueParser>(Hex(FirstDay(day))), ParseException) << day;
    }
    EXPECT_THROW(ParseOctets<WeeklyScheduleValueParser>(Hex("11 0E0F 0E0F 0E0F 0E0F 0E0F 0E0F")),
                 ParseException);
}

TEST(WeeklyScheduleParser, GivesATextOfItsOwnEncoding) {
    auto const value = test::Read<CharacterStringValue, WeeklyScheduleValueParser>(FirstDay(""));
    EXPECT_EQ(static_cast<int>(value.GetEncoding()), 6);
}

TEST(WeeklySchedule, IsNeverOneTagNorARunOfPrimitiveOnes) {
    EXPECT_EQ(Failure<std::runtime_error>([] { Week(";;;;;;;").ToApplicationTag(); }), "Not emplemented");
    EXPECT_TRUE(Week(";;;;;;;").ToApplicationTags().empty());
}

TEST(WeeklySchedule, KeepsItsTextAndEncoding) {
    WeeklyScheduleValue const value("text", EncodingTypeEnum::Ucs2);
    EXPECT_EQ(value.GetValue(), "text");
    EXPECT_EQ(value.GetEncoding(), EncodingTypeEnum::Ucs2);
    EXPECT_EQ(WeeklyScheduleValue().GetValue(), "");
}

TEST(WeeklySchedule, ComparesByEncodingAndThenByOctets) {
    EXPECT_EQ(Compared(WeeklyScheduleValue("a", EncodingTypeEnum::Ucs2), Week("b")), 4);
    EXPECT_EQ(Compared(Week("a"), Week("a")), 0);
    EXPECT_EQ(Compared(Week("ab"), Week("a")), 1);
    EXPECT_EQ(Compared(Week("a"), Week("\xC3")), -1);
    EXPECT_THROW(Compared(Week(""), ExceptionScheduleValue("", Utf8)), std::bad_cast);
    EXPECT_THROW(Compared(Week(""), CharacterStringValue("", Utf8)), std::bad_cast);
}
