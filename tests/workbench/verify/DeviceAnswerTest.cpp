#include "DeviceAnswer.h"

#include <gtest/gtest.h>

#include "DatumReader.h"

using namespace workbench;

namespace {

constexpr std::chrono::milliseconds Elapsed{7};

standard::ReadResult Answer(std::uint32_t property, std::string const& octets) {
    standard::ReadResult result;
    result.reference = {{0, 1}, property, std::nullopt};
    result.values = standard::DatumsOf(standard::Octets(octets.begin(), octets.end())).value();
    return result;
}

DeviceValue Value(std::uint32_t property, std::string const& octets) {
    return ReadingOf(Answer(property, octets), Elapsed).value.value();
}

ReadProblem Problem(standard::Failure const& failure) {
    standard::ReadResult result;
    result.failure = failure;
    DeviceReading const reading = ReadingOf(result, Elapsed);
    EXPECT_FALSE(reading.value);
    EXPECT_EQ(reading.elapsed, Elapsed);
    return reading.problem.value();
}

}  // namespace

TEST(DeviceAnswer, EveryPrimitiveValueHasItsKind) {
    EXPECT_EQ(Value(85, std::string("\x44\x41\xAC\x00\x00", 5)).real, 21.5);
    EXPECT_EQ(Value(85, "\x21\x07").number, 7u);
    EXPECT_EQ(Value(85, "\x31\xFB").integer, -5);
    EXPECT_EQ(Value(85, "\x11").kind, DeviceKind::Boolean);
    EXPECT_EQ(Value(85, std::string("\x00", 1)).kind, DeviceKind::Null);
    EXPECT_EQ(Value(85, "\x62\x0A\xFF").text, "0aff");
    EXPECT_EQ(Value(85, std::string("\x73\x00hi", 4)).text, "hi");
    EXPECT_EQ(Value(85, "\x82\x04\xA0").text, "1010");
    EXPECT_EQ(Value(85, "\xA4\x7C\x03\x0F\x05").date, (standard::CalendarDate{124, 3, 15, 5}));
    EXPECT_EQ(Value(85, std::string("\xB4\x08\x1E\x00\x00", 5)).time, (standard::TimeOfDay{8, 30, 0, 0}));
    EXPECT_EQ(Value(85, std::string("\xC4\x00\x00\x00\x01", 5)).kind, DeviceKind::Other);
}

TEST(DeviceAnswer, ADateAndATimeAreOneValueAndOtherListsAreNone) {
    std::string const both("\xA4\x7C\x03\x0F\x05\xB4\x08\x1E\x00\x00", 10);
    EXPECT_EQ(Value(85, both).kind, DeviceKind::DateTime);
    EXPECT_EQ(Value(85, "\x21\x07\x21\x08").kind, DeviceKind::Other);
    EXPECT_EQ(Value(85, "").kind, DeviceKind::Other);
}

TEST(DeviceAnswer, AnEnumerationIsShownWithNameAndNumber) {
    EXPECT_EQ(Value(117, "\x91\x3E").shown, "degrees-celsius (62)");
    EXPECT_EQ(Value(117, "\x92\xFF\xFE").shown, "65534");
}

TEST(DeviceAnswer, ASchedulesTextIsThatOfTheDriver) {
    DeviceValue const week = Value(123, "\x0E\x0F\x0E\x0F\x0E\x0F\x0E\x0F\x0E\x0F\x0E\x0F\x0E\x0F");
    EXPECT_EQ(week.kind, DeviceKind::Schedule);
    EXPECT_EQ(week.text, ";;;;;;;");
    EXPECT_EQ(Value(38, "").text, "");
}

TEST(DeviceAnswer, EveryFailureIsAProblem) {
    using Kind = standard::Failure::Kind;
    EXPECT_EQ(Problem({Kind::Error, 1, 31, {}}).kind, ReadProblem::Kind::Error);
    EXPECT_EQ(Problem({Kind::Error, 1, 31, {}}).errorCode, 31u);
    EXPECT_EQ(Problem({Kind::Error, 1, 31, {}}).text, "object: unknown-object");
    EXPECT_EQ(Problem({Kind::Reject, 0, 9, {}}).kind, ReadProblem::Kind::Reject);
    EXPECT_EQ(Problem({Kind::Abort, 0, 1, {}}).kind, ReadProblem::Kind::Abort);
    EXPECT_EQ(Problem({Kind::Malformed, 0, 0, {}}).kind, ReadProblem::Kind::Malformed);
    EXPECT_EQ(Problem({Kind::Silent, 0, 0, {}}).kind, ReadProblem::Kind::Silent);
    EXPECT_EQ(Problem({Kind::Incomplete, 0, 0, {}}).kind, ReadProblem::Kind::Malformed);
}

TEST(DeviceAnswer, SilenceIsSilenceWhateverIsSaidOfIt) {
    for (char const* const detail : {"another station answers", "the segments stopped after 1"}) {
        ReadProblem const problem = Problem({standard::Failure::Kind::Silent, 0, 0, detail});
        EXPECT_EQ(problem.kind, ReadProblem::Kind::Silent);
        EXPECT_EQ(problem.text, std::string("no answer (") + detail + ")");
    }
}

TEST(DeviceAnswer, WordsAreEmptyWithoutAValue) {
    EXPECT_EQ(WordsOf(Answer(77, std::string("\x73\x00hi", 4))), "hi");
    EXPECT_EQ(WordsOf(Answer(77, "")), "");
    standard::ReadResult failed;
    failed.failure = standard::Failure{};
    EXPECT_EQ(WordsOf(failed), "");
}
