#include "ReadPropertyAck.h"

#include <gtest/gtest.h>

#include <typeinfo>

#include "ReadPropertyMultipleAck.h"
#include "RealValue.h"
#include "Service.h"
#include "SupportInformation.h"
#include "UintValue.h"
#include "WeeklyScheduleValue.h"

using test::AnalogInput;
using test::Hex;
using test::Octets;
using test::PresentValue;
using test::ToHex;

namespace {

std::unique_ptr<ReadPropertyAck> Parse(std::string_view hex) {
    return test::ParseService<ReadPropertyAck, ReadPropertyAckParser>(Hex(hex));
}

ReadPropertyAck RealAck(unsigned instance, float value, int arrayIndex = -1) {
    return ReadPropertyAck(AnalogInput(instance), PresentValue, new RealValue(value), arrayIndex);
}

// Has two tags, to show that all of them are written.
class TwoTagValue : public CPropertyValue {
public:
    Tag ToApplicationTag() const override { return Tag(2, false, 1, {1}, 0); }
    std::vector<Tag> ToApplicationTags() const override {
        return {ToApplicationTag(), Tag(2, false, 1, {2}, 0)};
    }
};

}  // namespace

TEST(ReadPropertyAck, NegativeIndexWritesNoTag2AndIndexZeroFourZeroOctets) {
    EXPECT_EQ(ToHex(RealAck(1, 1.0f, -1).GetBytes()), "0C 00 00 00 01 19 55 3E 44 3F 80 00 00 3F");
    EXPECT_EQ(ToHex(RealAck(1, 1.0f, 0).GetBytes()),
              "0C 00 00 00 01 19 55 2C 00 00 00 00 3E 44 3F 80 00 00 3F");
    EXPECT_EQ(ToHex(RealAck(1, 1.0f, 0x01020304).GetBytes()),
              "0C 00 00 00 01 19 55 2C 01 02 03 04 3E 44 3F 80 00 00 3F");
}

TEST(ReadPropertyAck, NegativeIndexClearsTheFlagAndStoresZero) {
    ReadPropertyAck const ack = RealAck(1, 1.0f, -5);
    EXPECT_FALSE(ack.HasPropertyArrayIndex());
    EXPECT_EQ(ack.GetPropertyArrayIndex(), 0);
}

TEST(ReadPropertyAck, DefaultHasNoIndexNoPropertyAndNoValue) {
    ReadPropertyAck const ack;
    EXPECT_FALSE(ack.HasPropertyArrayIndex());
    EXPECT_EQ(static_cast<int>(ack.GetPropertyIdentifier()), 0);
    EXPECT_EQ(ack.GetPropertyValue(), nullptr);
    EXPECT_EQ(ToHex(ack.GetBytes()), "0C 00 00 00 00 19 00 3E 3F");
}

TEST(ReadPropertyAck, AllTagsOfTheValueAreWrittenInTheirOrder) {
    ReadPropertyAck const ack(AnalogInput(1), PresentValue, new TwoTagValue, -1);
    EXPECT_EQ(ToHex(ack.GetBytes()), "0C 00 00 00 01 19 55 3E 21 01 21 02 3F");
}

TEST(ReadPropertyAck, ConstructedTagsOfAScheduleAreLeftOut) {
    ReadPropertyAck const ack(
        ObjectIdentifier(ObjectTypeEnum::Schedule, 1), PropertyIdentifierEnum::Weekly_Schedule,
        new WeeklyScheduleValue("08000000,4,4,21.5;;;;;;;", EncodingTypeEnum::Utf8), -1);
    EXPECT_EQ(ToHex(ack.GetBytes()), "0C 04 40 00 01 19 7B 3E 3F");
}

TEST(ReadPropertyAck, PropertyAbove255IsCutToItsLowEightBits) {
    ReadPropertyAck const ack(AnalogInput(1), static_cast<PropertyIdentifierEnum>(300), nullptr, -1);
    EXPECT_EQ(ToHex(ack.GetBytes()), "0C 00 00 00 01 19 2C 3E 3F");
}

TEST(ReadPropertyAck, ComparesObjectPropertyFlagIndexAndValueInThisOrder) {
    ReadPropertyAck base = RealAck(5, 2.0f, 3);
    ReadPropertyAck same = RealAck(5, 2.0f, 3);
    EXPECT_EQ(base.Compare(same), 0);

    ReadPropertyAck lesserValue = RealAck(5, 1.0f, 3);
    EXPECT_EQ(base.Compare(lesserValue), 1);
    ReadPropertyAck greaterIndex = RealAck(5, 1.0f, 7);
    EXPECT_EQ(base.Compare(greaterIndex), -4);
    ReadPropertyAck noIndex = RealAck(5, 9.0f, -1);
    EXPECT_EQ(base.Compare(noIndex), 1);
    ReadPropertyAck otherProperty(AnalogInput(5), static_cast<PropertyIdentifierEnum>(90),
                                  new RealValue(0.0f), -1);
    EXPECT_EQ(base.Compare(otherProperty), -5);
    ReadPropertyAck otherObject(AnalogInput(3), static_cast<PropertyIdentifierEnum>(90), new RealValue(9.0f),
                                9);
    EXPECT_EQ(base.Compare(otherObject), 2);
}

TEST(ReadPropertyAck, ComparesWithAndWithoutAValue) {
    ReadPropertyAck with = RealAck(1, 0.0f);
    ReadPropertyAck without(AnalogInput(1), PresentValue, nullptr, -1);
    EXPECT_EQ(with.Compare(without), 1);
    EXPECT_EQ(without.Compare(with), -1);
    EXPECT_EQ(without.Compare(without), 0);
}

TEST(ReadPropertyAck, CompareWithAnotherClassThrowsBadCast) {
    ReadPropertyAck ack = RealAck(1, 1.0f);
    ReadPropertyMultipleAck otherService;
    ReadPropertyAck otherValue(AnalogInput(1), PresentValue, new UintValue(1), -1);
    EXPECT_THROW(ack.Compare(otherService), std::bad_cast);
    EXPECT_THROW(ack.Compare(otherValue), std::bad_cast);
}

TEST(ReadPropertyAck, SetPropertyValueReplacesTheOldOne) {
    ReadPropertyAck ack = RealAck(1, 1.0f);
    ack.SetPropertyValue(std::make_unique<UintValue>(7));
    EXPECT_EQ(dynamic_cast<UintValue&>(*ack.GetPropertyValue()).GetValue(), 7u);
}

TEST(ReadPropertyAckParser, RealOfAnAnalogInputsPresentValueIsARealValue) {
    auto const ack = Parse("0C 00 00 00 01 19 55 3E 44 3F 80 00 00 3F");
    EXPECT_EQ(dynamic_cast<RealValue&>(*ack->GetPropertyValue()).GetValue(), 1.0f);
    EXPECT_EQ(ack->GetObjectId().GetInstanceNumber(), 1u);
    EXPECT_EQ(ack->GetPropertyIdentifier(), PresentValue);
    EXPECT_FALSE(ack->HasPropertyArrayIndex());
    EXPECT_EQ(ToHex(ack->GetBytes()), "0C 00 00 00 01 19 55 3E 44 3F 80 00 00 3F");
}

TEST(ReadPropertyAckParser, Tag2IsTheIndex) {
    auto const ack = Parse("0C 00 00 00 01 19 55 29 00 3E 44 3F 80 00 00 3F");
    EXPECT_TRUE(ack->HasPropertyArrayIndex());
    EXPECT_EQ(ack->GetPropertyArrayIndex(), 0);
    EXPECT_EQ(ToHex(ack->GetBytes()), "0C 00 00 00 01 19 55 2C 00 00 00 00 3E 44 3F 80 00 00 3F");
}

TEST(ReadPropertyAckParser, TagsAfterTag3StayUnread) {
    auto const ack = Parse("0C 00 00 00 01 19 55 3E 44 3F 80 00 00 3F 0C 00 00 00 02");
    EXPECT_EQ(ack->GetObjectId().GetInstanceNumber(), 1u);
}

TEST(ReadPropertyAckParser, PairThatTheTableLacksIsRefused) {
    EXPECT_EQ(test::TextOf<SupportInformationException>([] { Parse("0C 02 C0 00 01 19 55 3E 21 01 3F"); }),
              "Support Information not found");
}

TEST(ReadPropertyAckParser, PropertyWithoutAValueParserIsRefusedLikeAnUnknownPair) {
    EXPECT_EQ(
        test::TextOf<SupportInformationException>([] { Parse("0C 00 00 00 01 19 4B 3E C4 00 00 00 01 3F"); }),
        "Support Information not found");
}

TEST(ReadPropertyAckParser, UnknownPairIsRefusedBeforeTheKindOfTag3IsChecked) {
    EXPECT_THROW(Parse("0C 02 C0 00 01 19 55 39 01"), SupportInformationException);
    EXPECT_THROW(Parse("0C 02 C0 00 01 19 55"), FormatErrorException) << "its absence is found first";
}

TEST(ReadPropertyAckParser, AbsentMandatoryTagThrowsFormatError) {
    EXPECT_THROW(Parse(""), FormatErrorException);
    EXPECT_THROW(Parse("19 55 3E 44 3F 80 00 00 3F"), FormatErrorException);
    EXPECT_THROW(Parse("0C 00 00 00 01 3E 44 3F 80 00 00 3F"), FormatErrorException);
    EXPECT_THROW(Parse("0C 00 00 00 01 19 55"), FormatErrorException);
}

TEST(ReadPropertyAckParser, TagOfTheWrongKindThrowsFormatError) {
    EXPECT_THROW(Parse("0E 0F 19 55 3E 44 3F 80 00 00 3F"), FormatErrorException);
    EXPECT_THROW(Parse("0C 00 00 00 01 1E 1F 3E 44 3F 80 00 00 3F"), FormatErrorException);
    EXPECT_THROW(Parse("0C 00 00 00 01 19 55 2E 2F 3E 44 3F 80 00 00 3F"), FormatErrorException);
    EXPECT_THROW(Parse("0C 00 00 00 01 19 55 39 01"), FormatErrorException);
}

TEST(ReadPropertyAckParser, EmptyWrapperOfAScalarThrowsParseException) {
    EXPECT_THROW(Parse("0C 00 00 00 01 19 55 3E 3F"), ParseException);
}
