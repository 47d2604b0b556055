#include "ReadPropertyMultipleAck.h"

#include <gtest/gtest.h>

#include <typeinfo>

#include "EnumValue.h"
#include "ReadPropertyAck.h"
#include "RealValue.h"
#include "Service.h"
#include "SupportInformation.h"

using test::operator+;
using test::AnalogInput;
using test::Hex;
using test::Octets;
using test::PresentValue;

namespace {

constexpr auto StatusFlags = PropertyIdentifierEnum::Status_Flags;

std::unique_ptr<ReadPropertyMultipleAck> Parse(Octets const& payload) {
    return test::ParseService<ReadPropertyMultipleAck, ReadPropertyMultipleAckParser>(payload);
}

// The list of results of analog-input 1.
std::unique_ptr<ReadPropertyMultipleAck> ParseResults(Octets const& results) {
    return Parse(Hex("0C 00 00 00 01 1E") + results + Hex("1F"));
}

std::unique_ptr<ReadPropertyMultipleAck> ParseResults(std::string_view hex) {
    return ParseResults(Hex(hex));
}

Octets Repeat(int count, Octets const& octets) {
    Octets all;
    for (int i = 0; i < count; ++i) {
        all = std::move(all) + octets;
    }
    return all;
}

float RealIn(ReadPropertyMultipleAck const& ack, PropertyIdentifierEnum property) {
    return dynamic_cast<RealValue&>(*ack.GetValues().at(property)).GetValue();
}

char const* const PresentValueOne = "29 55 4E 44 3F 80 00 00 4F";
char const* const MaxPresValueTwo = "29 41 4E 44 40 00 00 00 4F";

}  // namespace

TEST(ReadPropertyMultipleAckParser, EmptyListGivesTheObjectAndAnEmptyMap) {
    auto const ack = Parse(Hex("0C 00 00 00 07 1E 1F"));
    EXPECT_EQ(ack->GetObjectId().GetObjectType(), ObjectTypeEnum::Analog_Input);
    EXPECT_EQ(ack->GetObjectId().GetInstanceNumber(), 7u);
    EXPECT_TRUE(ack->GetValues().empty());
}

TEST(ReadPropertyMultipleAckParser, Tag0WithoutTag1ThrowsFormatError) {
    EXPECT_EQ(test::TextOf<FormatErrorException>([] { Parse(Hex("0C 00 00 00 01")); }),
              "packet format not expected");
    EXPECT_THROW(Parse(Hex("1E 1F")), FormatErrorException);
    EXPECT_THROW(Parse({}), FormatErrorException);
}

TEST(ReadPropertyMultipleAckParser, RealOfAnAnalogInputsPresentValueIsARealValue) {
    auto const ack = ParseResults(PresentValueOne);
    ASSERT_EQ(ack->GetValues().size(), 1u);
    EXPECT_EQ(RealIn(*ack, PresentValue), 1.0f);
}

TEST(ReadPropertyMultipleAckParser, MapIsOrderedByPropertyWhateverTheOrderOnTheWire) {
    for (auto const& results : {Hex(PresentValueOne) + Hex("29 6F 4E 82 04 F0 4F"),
                                Hex("29 6F 4E 82 04 F0 4F") + Hex(PresentValueOne)}) {
        auto const ack = ParseResults(results);
        ASSERT_EQ(ack->GetValues().size(), 2u);
        EXPECT_EQ(ack->GetValues().begin()->first, PresentValue);
        EXPECT_EQ(ack->GetValues().rbegin()->first, StatusFlags);
        EXPECT_EQ(dynamic_cast<EnumValue&>(*ack->GetValues().at(StatusFlags)).GetValue(), 0x04F0u);
    }
}

TEST(ReadPropertyMultipleAckParser, PropertyThatTheTableLacksFailsTheWholeAck) {
    EXPECT_EQ(test::TextOf<SupportInformationException>(
                  [] { ParseResults(Hex(PresentValueOne) + Hex("29 01 4E 21 01 4F")); }),
              "Support Information not found");
}

TEST(ReadPropertyMultipleAckParser, OfTwoObjectsTheLastOneCounts) {
    auto const ack = Parse(Hex("0C 00 00 00 01 1E") + Hex(PresentValueOne) + Hex("1F 0C 00 00 00 02 1E") +
                           Hex(MaxPresValueTwo) + Hex("1F"));
    EXPECT_EQ(ack->GetObjectId().GetInstanceNumber(), 2u);
    ASSERT_EQ(ack->GetValues().size(), 1u);
    EXPECT_EQ(RealIn(*ack, PropertyIdentifierEnum::Max_Pres_Value), 2.0f);
}

TEST(ReadPropertyMultipleAckParser, ObjectsAfterATag3StayUnread) {
    auto const ack = Parse(Hex("0C 00 00 00 01 1E 1F 39 00 0C 00 00 00 02"));
    EXPECT_EQ(ack->GetObjectId().GetInstanceNumber(), 1u);
}

TEST(ReadPropertyMultipleAckParser, PropertyWithoutAValueParserIsRefusedLikeAnUnknownPair) {
    EXPECT_EQ(test::TextOf<SupportInformationException>([] { ParseResults("29 4B 4E C4 00 00 00 01 4F"); }),
              "Support Information not found");
}

TEST(ReadPropertyMultipleAckParser, RepeatedPropertyKeepsTheLaterValue) {
    auto const ack = ParseResults(Hex(PresentValueOne) + Hex("29 55 4E 44 40 40 00 00 4F"));
    EXPECT_EQ(ack->GetValues().size(), 1u);
    EXPECT_EQ(RealIn(*ack, PresentValue), 3.0f);
}

TEST(ReadPropertyMultipleAckParser, TagNumbersInTheListAreIgnored) {
    EXPECT_EQ(RealIn(*ParseResults("91 55 0E 44 3F 80 00 00 0F"), PresentValue), 1.0f);
}

// Class 2 as the low octet of a single: 2.8e-45.
TEST(ReadPropertyMultipleAckParser, PropertyErrorIsReadAsAValue) {
    auto const ack = ParseResults("29 55 5E 91 02 91 1F 5F");
    EXPECT_EQ(RealIn(*ack, PresentValue), 2.8026e-45f);
}

TEST(ReadPropertyMultipleAckParser, PropertyErrorOfABooleanThrowsItsParsersText) {
    EXPECT_EQ(test::TextOf<ParseException>([] { ParseResults("29 51 5E 91 02 91 1F 5F"); }),
              "tag number does not meet expectations");
}

TEST(ReadPropertyMultipleAckParser, ArrayIndexShiftsThePairsAndIsRefused) {
    EXPECT_THROW(ParseResults("29 55 39 01 4E 44 3F 80 00 00 4F"), FormatErrorException);
}

TEST(ReadPropertyMultipleAckParser, OddListLacksAWrapperAndThrowsFormatError) {
    EXPECT_EQ(test::TextOf<FormatErrorException>([] { ParseResults("29 55"); }),
              "packet format not expected");
    EXPECT_THROW(ParseResults(Hex(PresentValueOne) + Hex("29 41")), FormatErrorException);
}

TEST(ReadPropertyMultipleAckParser, SubTagOfTheWrongKindThrowsFormatError) {
    EXPECT_THROW(ParseResults("2E 2F 4E 44 3F 80 00 00 4F"), FormatErrorException);
    EXPECT_THROW(ParseResults("29 55 49 01"), FormatErrorException);
    EXPECT_THROW(Parse(Hex("0C 00 00 00 01 19 55")), FormatErrorException);
    EXPECT_THROW(Parse(Hex("0E 0F 1E 1F")), FormatErrorException);
}

TEST(ReadPropertyMultipleAckParser, ConstructedOrMissingValueInAWrapperThrowsParseException) {
    EXPECT_THROW(ParseResults("29 55 4E 4F"), ParseException);
    EXPECT_THROW(ParseResults("29 55 4E 0E 44 3F 80 00 00 0F 4F"), ParseException);
}

TEST(ReadPropertyMultipleAckParser, ListOf254SubTagsIsReadWhole) {
    auto const ack = ParseResults(Repeat(126, Hex(PresentValueOne)) + Hex(MaxPresValueTwo));
    EXPECT_EQ(ack->GetValues().size(), 2u);
}

TEST(ReadPropertyMultipleAckParser, ListOf255SubTagsLacksItsLastWrapper) {
    EXPECT_THROW(ParseResults(Repeat(127, Hex(PresentValueOne)) + Hex("29 55")), FormatErrorException);
}

TEST(ReadPropertyMultipleAckParser, ListOf256SubTagsReadsAsNone) {
    EXPECT_TRUE(ParseResults(Repeat(128, Hex(PresentValueOne)))->GetValues().empty());
}

TEST(ReadPropertyMultipleAckParser, ListOf257SubTagsReadsItsFirstPair) {
    auto const ack = ParseResults(Hex(MaxPresValueTwo) + Repeat(127, Hex(PresentValueOne)) + Hex("29 55"));
    ASSERT_EQ(ack->GetValues().size(), 1u);
    EXPECT_EQ(RealIn(*ack, PropertyIdentifierEnum::Max_Pres_Value), 2.0f);
}

// 300 is 256 and 44, so 22 pairs.
TEST(ReadPropertyMultipleAckParser, ListOf300SubTagsReadsItsFirst44) {
    Octets const unread = Repeat(128, Hex(MaxPresValueTwo));
    auto const ack = ParseResults(Repeat(22, Hex(PresentValueOne)) + unread);
    ASSERT_EQ(ack->GetValues().size(), 1u);
    EXPECT_EQ(RealIn(*ack, PresentValue), 1.0f);
    auto const oneMore = ParseResults(Repeat(21, Hex(PresentValueOne)) + Hex(MaxPresValueTwo) + unread);
    EXPECT_EQ(oneMore->GetValues().size(), 2u);
}

TEST(ReadPropertyMultipleAckParser, DeeplyNestedListNeedsNoCallStack) {
    constexpr int depth = 200000;
    Octets const open(depth, 0x1E);
    Octets const close(depth, 0x1F);
    EXPECT_THROW(ParseResults(open), WrongLengthException);
    EXPECT_THROW(ParseResults(open + close), FormatErrorException);
    EXPECT_THROW(ParseResults(Hex("29 55") + open + close), ParseException);
}

TEST(ReadPropertyMultipleAck, SecondConstructorStoresOnlyTheObject) {
    RealValue value(1.0f);
    ReadPropertyMultipleAck const ack(AnalogInput(9), PresentValue, &value, 3);
    EXPECT_EQ(ack.GetObjectId().GetInstanceNumber(), 9u);
    EXPECT_TRUE(ack.GetValues().empty());
}

TEST(ReadPropertyMultipleAck, GivesNoOctets) {
    EXPECT_TRUE(ParseResults(PresentValueOne)->GetBytes().empty());
}

TEST(ReadPropertyMultipleAck, ComparesOnlyTheObjects) {
    auto const with = ParseResults(PresentValueOne);
    auto const without = ParseResults("");
    auto const other = Parse(Hex("0C 00 00 00 05 1E 1F"));
    EXPECT_EQ(with->Compare(*without), 0);
    EXPECT_EQ(with->Compare(*other), -4);
    EXPECT_EQ(other->Compare(*with), 4);
}

TEST(ReadPropertyMultipleAck, CompareWithAnotherClassThrowsBadCast) {
    ReadPropertyMultipleAck ack;
    ReadPropertyAck other;
    EXPECT_THROW(ack.Compare(other), std::bad_cast);
}
