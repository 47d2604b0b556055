#include "Judge.h"

#include <gtest/gtest.h>

#include "Projects.h"
#include "VerifySamples.h"

using namespace test;
using namespace workbench;

namespace {

// A point of a type, as the driver decodes it and as the variable is declared.
PointFacts Point(PropertyTypeEnum type, _OpcUa_BuiltInType declared) {
    PointFacts point;
    point.declared.Type = declared;
    point.type = type;
    point.object = "analog-input 1";
    return point;
}

PointFacts const RealPoint = Point(PropertyTypeEnum::Real, OpcUaType_Float);

Judgement Compare(PointFacts const& point, OpcUa_VariantHlp const& driver, DeviceValue const& before,
                  DeviceValue const& after) {
    return Judge(point, Holding(driver), Answered(before), Answered(after));
}

Judgement Compare(PointFacts const& point, OpcUa_VariantHlp const& driver, DeviceValue const& device) {
    return Compare(point, driver, device, device);
}

Judgement WithProblem(PointFacts const& point, DriverReading const& driver, ReadProblem const& problem) {
    return Judge(point, driver, Failed(problem), Failed(problem));
}

}  // namespace

TEST(Judge, AValueThatBothHaveAgrees) {
    EXPECT_EQ(Compare(RealPoint, Float(21.5F), RealValueOf(21.5)).verdict, Verdict::Agrees);
    EXPECT_EQ(Compare(Point(PropertyTypeEnum::Unsigned, OpcUaType_UInt32), UInt32(7), UnsignedOf(7)).verdict,
              Verdict::Agrees);
    EXPECT_EQ(Compare(Point(PropertyTypeEnum::Binary_PV, OpcUaType_Boolean), Boolean(true), EnumeratedOf(1))
                  .verdict,
              Verdict::Agrees);
    EXPECT_EQ(
        Compare(Point(PropertyTypeEnum::Binary_PV, OpcUaType_String), Text("true"), EnumeratedOf(1)).verdict,
        Verdict::Agrees);
    EXPECT_EQ(Compare(Point(PropertyTypeEnum::Character_String, OpcUaType_String), Text("AHU"), TextOf("AHU"))
                  .verdict,
              Verdict::Agrees);
    EXPECT_EQ(
        Compare(Point(PropertyTypeEnum::Status_Flags, OpcUaType_UInt64), UInt64(4), BitsOf("0100")).verdict,
        Verdict::Agrees);
    EXPECT_EQ(
        Compare(Point(PropertyTypeEnum::Bit_String, OpcUaType_String), Text("0100"), BitsOf("0100")).verdict,
        Verdict::Agrees);
}

TEST(Judge, AnotherValueThanThatOfTheDeviceDiffersAndBothAreStated) {
    Judgement const judgement = Compare(RealPoint, Float(20), RealValueOf(21.5));
    EXPECT_EQ(judgement.verdict, Verdict::Differs);
    EXPECT_EQ(judgement.explanation, "the driver has 20, the device 21.5");
}

TEST(Judge, LongValuesAreCutInAnExplanation) {
    Judgement const judgement = Compare(Point(PropertyTypeEnum::Character_String, OpcUaType_String),
                                        Text("b"), TextOf(std::string(5000, 'a')));
    EXPECT_EQ(judgement.verdict, Verdict::Differs);
    EXPECT_LT(judgement.explanation.size(), 200u);
}

TEST(Judge, AValueBetweenTwoOthersIsMoving) {
    EXPECT_EQ(Compare(RealPoint, Float(21), RealValueOf(20), RealValueOf(22)).verdict, Verdict::Moving);
    EXPECT_EQ(Compare(RealPoint, Float(20), RealValueOf(20), RealValueOf(22)).verdict, Verdict::Moving);
    EXPECT_EQ(Compare(RealPoint, Float(22), RealValueOf(20), RealValueOf(22)).verdict, Verdict::Moving);
    EXPECT_EQ(Compare(Point(PropertyTypeEnum::Character_String, OpcUaType_String), Text("b"), TextOf("a"),
                      TextOf("b"))
                  .verdict,
              Verdict::Moving);
}

TEST(Judge, AValueThatTurnedRoundMayLieOutsideByAsMuchAsTheOthersDiffer) {
    EXPECT_EQ(Compare(RealPoint, Float(23.9F), RealValueOf(20), RealValueOf(22)).verdict, Verdict::Moving);
    EXPECT_EQ(Compare(RealPoint, Float(24.1F), RealValueOf(20), RealValueOf(22)).verdict, Verdict::Differs);
    EXPECT_EQ(Compare(RealPoint, Float(17.9F), RealValueOf(20), RealValueOf(22)).verdict, Verdict::Differs);
}

TEST(Judge, ATextThatTheDeviceHadNeitherBeforeNorAfterDiffers) {
    EXPECT_EQ(Compare(Point(PropertyTypeEnum::Character_String, OpcUaType_String), Text("c"), TextOf("a"),
                      TextOf("b"))
                  .verdict,
              Verdict::Differs);
}

TEST(Judge, ANegativeSignedThatTheDriverReadsAsPositiveLosesItsSign) {
    PointFacts const point = Point(PropertyTypeEnum::Signed, OpcUaType_Int32);
    Judgement const judgement = Compare(point, Int32(251), SignedOf(-5));
    EXPECT_EQ(judgement.verdict, Verdict::LosesInformation);
    EXPECT_EQ(judgement.explanation,
              "the driver has 251, the device -5: the sign is lost: the driver reads the octets of a Signed "
              "without it");
    EXPECT_EQ(Compare(point, Int32(-5), SignedOf(-5)).verdict, Verdict::Agrees);
    EXPECT_EQ(Compare(point, Int32(65531), SignedOf(-5)).verdict,
              Verdict::LosesInformation);  // in two octets
    EXPECT_EQ(Compare(point, Int32(250), SignedOf(-5)).verdict, Verdict::Differs);
    EXPECT_EQ(Compare(point, Int32(5), SignedOf(5)).verdict, Verdict::Agrees);
}

TEST(Judge, AMovingValueThatLosesItsSignLosesInformation) {
    PointFacts const point = Point(PropertyTypeEnum::Signed, OpcUaType_Int32);
    EXPECT_EQ(Compare(point, Int32(250), SignedOf(-7), SignedOf(-5)).verdict, Verdict::LosesInformation);
}

TEST(Judge, MoreThan32BitsAreLost) {
    PointFacts const point = Point(PropertyTypeEnum::Unsigned, OpcUaType_UInt64);
    Judgement const judgement = Compare(point, UInt64(1), UnsignedOf((std::uint64_t{1} << 32) + 1));
    EXPECT_EQ(judgement.verdict, Verdict::LosesInformation);
    EXPECT_NE(judgement.explanation.find("the low 32 of 64 bits"), std::string::npos);
    EXPECT_EQ(Compare(point, UInt64(0xFFFFFFFF), UnsignedOf(0xFFFFFFFF)).verdict, Verdict::Agrees);
}

TEST(Judge, AnEnumerationInABooleanLosesAllStatesButTwo) {
    PointFacts const point = Point(PropertyTypeEnum::Event_State, OpcUaType_Boolean);
    EXPECT_EQ(Compare(point, Boolean(true), EnumeratedOf(2)).verdict, Verdict::LosesInformation);
    EXPECT_EQ(Compare(point, Boolean(true), EnumeratedOf(1)).verdict, Verdict::Agrees);
    EXPECT_EQ(Compare(point, Boolean(false), EnumeratedOf(0)).verdict, Verdict::Agrees);
}

TEST(Judge, FractionsAndDigitsThatTheTypeCannotHoldAreLost) {
    EXPECT_EQ(Compare(Point(PropertyTypeEnum::Real, OpcUaType_Int32), Int32(22), RealValueOf(21.5)).verdict,
              Verdict::LosesInformation);
    EXPECT_EQ(Compare(Point(PropertyTypeEnum::Real, OpcUaType_Int32), Int32(21), RealValueOf(21)).verdict,
              Verdict::Agrees);
    EXPECT_EQ(
        Compare(Point(PropertyTypeEnum::Double, OpcUaType_Float), Float(123456.789F), DoubleOf(123456.789))
            .verdict,
        Verdict::LosesInformation);
    EXPECT_EQ(Compare(Point(PropertyTypeEnum::Double, OpcUaType_Float), Float(0.5F), DoubleOf(0.5)).verdict,
              Verdict::Agrees);
}

TEST(Judge, ADoubleWhoseDigitsAFloatHasAgrees) {
    PointFacts const point = Point(PropertyTypeEnum::Double, OpcUaType_Float);
    for (double const number : {0.1, 12345.678, -12345.678, 1e-3}) {
        EXPECT_EQ(Compare(point, Float(static_cast<float>(number)), DoubleOf(number)).verdict,
                  Verdict::Agrees);
    }
    for (double const number : {123456.789, 0.123456789, 1e-60}) {
        EXPECT_EQ(Compare(point, Float(static_cast<float>(number)), DoubleOf(number)).verdict,
                  Verdict::LosesInformation);
    }
    EXPECT_EQ(Compare(point, Float(0.2F), DoubleOf(0.1)).verdict, Verdict::Differs);
}

TEST(Judge, OctetsOfAnotherDatatypeLoseInformation) {
    // The present value of a schedule that holds an Unsigned, read as a Real.
    Judgement const judgement = Compare(RealPoint, Float(2.8e-45F), UnsignedOf(2));
    EXPECT_EQ(judgement.verdict, Verdict::LosesInformation);
    EXPECT_NE(
        judgement.explanation.find("the device holds Unsigned, and the driver reads its octets as Real"),
        std::string::npos);
    EXPECT_EQ(Compare(RealPoint, Float(2), UnsignedOf(2)).verdict, Verdict::Agrees);
}

TEST(Judge, UnspecifiedPartsOfADateAreLost) {
    PointFacts const point = Point(PropertyTypeEnum::Date, OpcUaType_DateTime);
    EXPECT_EQ(Compare(point, FileTime(5), DateOf({255, 12, 25, 255})).verdict, Verdict::LosesInformation);
}

TEST(Judge, DatesAndTimesAgreeInTheUnitsOfTheDriver) {
    PointFacts point = Point(PropertyTypeEnum::Date, OpcUaType_DateTime);
    point.localDiff = 36'000'000'000;
    // 15 March 2024, local midnight of a zone one hour before UTC.
    EXPECT_EQ(
        Compare(point, FileTime(133'549'344'000'000'000 - point.localDiff), DateOf({124, 3, 15, 5})).verdict,
        Verdict::Agrees);
    DeviceValue stamp = DateOf({124, 3, 15, 5});
    stamp.kind = DeviceKind::DateTime;
    stamp.time = {1, 0, 0, 50};
    point.type = PropertyTypeEnum::Date_Time;
    EXPECT_EQ(Compare(point, FileTime(133'549'344'000'000'000 + 36'005'000'000), stamp).verdict,
              Verdict::Agrees);
    DeviceValue time = stamp;
    time.kind = DeviceKind::Time;
    EXPECT_EQ(Compare(Point(PropertyTypeEnum::Time, OpcUaType_UInt32), UInt32(3'605'000), time).verdict,
              Verdict::Agrees);
}

TEST(Judge, ATextInAnotherCharacterSetLosesInformation) {
    PointFacts const point = Point(PropertyTypeEnum::Character_String, OpcUaType_String);
    DeviceValue const text = TextOf(
        "K\xC3\xBC"
        "che");
    auto const octets = [](std::string const& octetsOfDriver) {
        OpcUa_VariantHlp variant;
        variant.SetString(octetsOfDriver.data(), static_cast<int>(octetsOfDriver.size()));
        return variant;
    };
    Judgement const latin = Compare(point,
                                    octets("K\xFC"
                                           "che"),
                                    text);
    EXPECT_EQ(latin.verdict, Verdict::LosesInformation);
    EXPECT_NE(latin.explanation.find("the device sends ISO 8859-1"), std::string::npos);
    std::string const wide("\0K\0\xFC\0c\0h\0e", 10);
    EXPECT_EQ(Compare(point, octets(wide), text).verdict, Verdict::LosesInformation);
    EXPECT_EQ(Compare(point, octets("Kuche"), text).verdict, Verdict::Differs);
    EXPECT_EQ(Compare(point, octets(text.text), text).verdict, Verdict::Agrees);
}

TEST(Judge, AScheduleWhoseTextLeavesEntriesOutLosesInformation) {
    PointFacts const point = Point(PropertyTypeEnum::Weekly_Schedule, OpcUaType_String);
    DeviceValue schedule = TextOf(";;;;;;;");
    schedule.kind = DeviceKind::Schedule;
    EXPECT_EQ(Compare(point, Text(";;;;;;;"), schedule).verdict, Verdict::Agrees);
    EXPECT_EQ(Compare(point, Text(";;;;;;"), schedule).verdict, Verdict::Differs);
    schedule.lost = "entries with Null are left out";
    EXPECT_EQ(Compare(point, Text(";;;;;;;"), schedule).verdict, Verdict::LosesInformation);
    EXPECT_EQ(Compare(point, Text(";;;;;;;"), schedule).explanation, schedule.lost);
}

TEST(Judge, AMissingObjectIsNamedWithTheValueThatTheDriverShows) {
    ReadProblem const missing{ReadProblem::Kind::Error, 1, 31, "object: unknown-object"};
    Judgement const judgement = WithProblem(RealPoint, Holding(Float(1e-45F)), missing);
    EXPECT_EQ(judgement.verdict, Verdict::NoSuchObject);
    EXPECT_EQ(judgement.explanation,
              "object: unknown-object; the driver shows 1e-45 with quality Good, which is not a value of the "
              "device");
}

TEST(Judge, AMissingPropertyThatEndsThePollIsNamed) {
    ReadProblem const missing{ReadProblem::Kind::Error, 2, 32, "property: unknown-property"};
    Judgement const judgement = WithProblem(RealPoint, Faulty("analog-input 1"), missing);
    EXPECT_EQ(judgement.verdict, Verdict::NoSuchProperty);
    EXPECT_EQ(judgement.explanation,
              "property: unknown-property; the driver's poll of the whole block fails on it");
    EXPECT_EQ(WithProblem(RealPoint, Faulty("analog-input 2"), missing).explanation,
              "property: unknown-property");
}

TEST(Judge, EveryOtherProblemHasItsVerdict) {
    auto const verdict = [](ReadProblem::Kind kind) {
        return WithProblem(RealPoint, Faulty(""), {kind, 2, 27, "text"}).verdict;
    };
    EXPECT_EQ(verdict(ReadProblem::Kind::Error), Verdict::DeviceError);
    EXPECT_EQ(verdict(ReadProblem::Kind::Reject), Verdict::DeviceRejects);
    EXPECT_EQ(verdict(ReadProblem::Kind::Abort), Verdict::DeviceAborts);
    EXPECT_EQ(verdict(ReadProblem::Kind::Malformed), Verdict::UnreadableAnswer);
    EXPECT_EQ(verdict(ReadProblem::Kind::Silent), Verdict::DeviceSilent);
}

TEST(Judge, AnAnswerSaysMoreThanSilence) {
    DeviceReading const silent = Failed({});
    DeviceReading const error = Failed({ReadProblem::Kind::Error, 1, 31, "object: unknown-object"});
    EXPECT_EQ(Judge(RealPoint, Faulty(""), silent, error).verdict, Verdict::NoSuchObject);
    EXPECT_EQ(Judge(RealPoint, Faulty(""), error, silent).verdict, Verdict::NoSuchObject);
    EXPECT_EQ(Judge(RealPoint, Holding(Float(1)), silent, Answered(RealValueOf(1))).verdict, Verdict::Agrees);
}

TEST(Judge, AFaultOfTheBlockNamesTheObjectThatEndedThePoll) {
    Judgement const judgement =
        Judge(RealPoint, Faulty("analog-input 3"), Answered(RealValueOf(1)), Answered(RealValueOf(1)));
    EXPECT_EQ(judgement.verdict, Verdict::NoValue);
    EXPECT_EQ(judgement.explanation, "No connection: the poll of the block ended at analog-input 3");
}

TEST(Judge, AnAnswerThatComesTooLateForTheDriverIsLateWithItsTime) {
    DeviceReading slow = Answered(RealValueOf(1));
    slow.elapsed = std::chrono::milliseconds(1310);
    Judgement const judgement = Judge(RealPoint, Faulty("analog-input 1"), Answered(RealValueOf(1)), slow);
    EXPECT_EQ(judgement.verdict, Verdict::Late);
    EXPECT_EQ(judgement.explanation, "answers after 1.31 s; the driver waits 1.00 s for each attempt");
    slow.elapsed = DriverTimeout;
    EXPECT_EQ(Judge(RealPoint, Faulty("analog-input 1"), slow, slow).verdict, Verdict::NoValue);
}

TEST(Judge, WhatTheDriverCannotDecodeIsNamedForAllVariablesOfTheObject) {
    PointFacts point = RealPoint;
    point.undecodable = "the driver cannot decode resolution of analog-input";
    Judgement const judgement = Judge(point, Holding({}), Answered(RealValueOf(1)), Answered(RealValueOf(1)));
    EXPECT_EQ(judgement.verdict, Verdict::NotDecoded);
    EXPECT_EQ(
        judgement.explanation,
        "the driver cannot decode resolution of analog-input: no variable of analog-input 1 gets a value");
}

TEST(Judge, ASecondVariableOnAPropertyHasNoValue) {
    PointFacts point = RealPoint;
    point.readBefore = "T";
    Judgement const judgement = Judge(point, Holding({}), Answered(RealValueOf(1)), Answered(RealValueOf(1)));
    EXPECT_EQ(judgement.verdict, Verdict::NoValue);
    EXPECT_NE(judgement.explanation.find("\"T\" reads the same property"), std::string::npos);
}

TEST(Judge, AConversionThatNeverGivesAValueIsNamed) {
    Judgement judgement = Compare(Point(PropertyTypeEnum::Real, OpcUaType_DateTime), {}, RealValueOf(1));
    EXPECT_EQ(judgement.verdict, Verdict::NoValue);
    EXPECT_EQ(judgement.explanation, "a value of type Real does not convert to DateTime");
    judgement = Compare(Point(PropertyTypeEnum::Unsigned, OpcUaType_Byte), {}, UnsignedOf(300));
    EXPECT_EQ(judgement.verdict, Verdict::NoValue);
    EXPECT_EQ(judgement.explanation, "300 does not fit Byte");
}

TEST(Judge, AValueOfTheCycleBeforeDoesNotCountInAFault) {
    DriverReading driver = Faulty("analog-input 1");
    driver.state.Value = Float(1);
    EXPECT_EQ(Judge(RealPoint, driver, Answered(RealValueOf(1)), Answered(RealValueOf(1))).verdict,
              Verdict::NoValue);
}
