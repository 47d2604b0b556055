#include "ReadPropertyRequest.h"

#include <gtest/gtest.h>

#include "Service.h"

using test::AnalogInput;
using test::Hex;
using test::Octets;
using test::PresentValue;
using test::ToHex;

namespace {

std::unique_ptr<ReadPropertyRequest> Parse(std::string_view hex) {
    return test::ParseService<ReadPropertyRequest, ReadPropertyRequestParser>(Hex(hex));
}

}  // namespace

TEST(ReadPropertyRequest, ArrayIndexDoesNotAppearOnTheWire) {
    EXPECT_EQ(ToHex(ReadPropertyRequest(AnalogInput(1), PresentValue, 5).GetBytes()), "0C 00 00 00 01 19 55");
}

TEST(ReadPropertyRequest, PropertyAbove255IsCutToItsLowEightBits) {
    auto const property = static_cast<PropertyIdentifierEnum>(300);
    EXPECT_EQ(ToHex(ReadPropertyRequest(AnalogInput(1), property, -1).GetBytes()), "0C 00 00 00 01 19 2C");
}

TEST(ReadPropertyRequest, NegativeIndexIsStoredAsZero) {
    EXPECT_EQ(ReadPropertyRequest(AnalogInput(1), PresentValue, -7).GetPropertyArrayIndex(), 0u);
    EXPECT_EQ(ReadPropertyRequest(AnalogInput(1), PresentValue, 7).GetPropertyArrayIndex(), 7u);
    EXPECT_EQ(ReadPropertyRequest().GetPropertyArrayIndex(), 0u);
}

TEST(ReadPropertyRequestParser, AbsentIndexIsZeroAndTag2IsTheIndex) {
    EXPECT_EQ(Parse("0C 00 00 00 01 19 55")->GetPropertyArrayIndex(), 0u);
    auto const request = Parse("0C 02 00 04 D2 19 4D 29 07");
    EXPECT_EQ(request->GetPropertyArrayIndex(), 7u);
    EXPECT_EQ(request->GetObjectId().GetObjectType(), ObjectTypeEnum::Device);
    EXPECT_EQ(request->GetObjectId().GetInstanceNumber(), 1234u);
    EXPECT_EQ(static_cast<int>(request->GetPropertyIdentifier()), 77);
    EXPECT_EQ(ToHex(request->GetBytes()), "0C 02 00 04 D2 19 4D");
}

TEST(ReadPropertyRequestParser, IndexIsUnsignedAndOfAnyWidth) {
    EXPECT_EQ(Parse("0C 02 00 04 D2 19 4D 29 7F")->GetPropertyArrayIndex(), 127u);
    EXPECT_EQ(Parse("0C 02 00 04 D2 19 4D 29 80")->GetPropertyArrayIndex(), 128u);
    EXPECT_EQ(Parse("0C 02 00 04 D2 19 4D 29 FF")->GetPropertyArrayIndex(), 255u);
    EXPECT_EQ(Parse("0C 02 00 04 D2 19 4D 2A 80 00")->GetPropertyArrayIndex(), 32768u);
    EXPECT_EQ(Parse("0C 02 00 04 D2 19 4D 2C 7F FF FF FF")->GetPropertyArrayIndex(), 0x7FFFFFFFu);
}

TEST(ReadPropertyRequestParser, StreamWithoutTag1OrTag0ThrowsFormatError) {
    EXPECT_EQ(test::TextOf<FormatErrorException>([] { Parse("0C 00 00 00 01"); }),
              "packet format not expected");
    EXPECT_THROW(Parse("0C 00 00 00 01 29 07"), FormatErrorException);
    EXPECT_THROW(Parse("19 55 29 07"), FormatErrorException);
    EXPECT_THROW(Parse(""), FormatErrorException);
}

TEST(ReadPropertyRequestParser, ConstructedTagInAnyPlaceThrowsFormatError) {
    EXPECT_THROW(Parse("0E 0F 19 55"), FormatErrorException);
    EXPECT_THROW(Parse("0C 00 00 00 01 1E 1F"), FormatErrorException);
    EXPECT_THROW(Parse("0C 00 00 00 01 19 55 2E 2F"), FormatErrorException);
}

TEST(ReadPropertyRequestParser, AbsentTag1IsFoundBeforeTag0IsRead) {
    EXPECT_THROW(Parse("0D 05 00 00 00 00 01"), FormatErrorException);
    EXPECT_THROW(Parse("0D 05 00 00 00 00 01 19 55"), ParseException);
}

TEST(ReadPropertyRequestParser, OrderOfTheTagsIsFreeAndReadingStopsAfterTag2) {
    EXPECT_EQ(ToHex(Parse("19 55 0C 00 00 00 01")->GetBytes()), "0C 00 00 00 01 19 55");
    EXPECT_THROW(Parse("29 07 0C 00 00 00 01 19 55"), FormatErrorException);
}

TEST(ReadPropertyRequestParser, TwoOctetPropertyIsReadWhole) {
    EXPECT_EQ(static_cast<int>(Parse("0C 00 00 00 01 1A 01 2C")->GetPropertyIdentifier()), 300);
}
