#include "WritePropertyRequest.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "BooleanValue.h"
#include "ComplexTag.h"
#include "ConfirmedRequestPdu.h"
#include "DateTimeValue.h"
#include "ExceptionScheduleValue.h"
#include "RealValue.h"
#include "Service.h"
#include "SupportInformation.h"
#include "WeeklyScheduleValue.h"

using test::Hex;
using test::Octets;
using test::PresentValue;
using test::ToHex;

namespace {

constexpr char Real1[] = "0C 00 80 00 01 19 55 3E 44 3F 80 00 00 3F";

ObjectIdentifier AnalogValue(unsigned instance) {
    return ObjectIdentifier(ObjectTypeEnum::Analog_Value, instance);
}

ObjectIdentifier Schedule(unsigned instance) {
    return ObjectIdentifier(ObjectTypeEnum::Schedule, instance);
}

std::unique_ptr<WritePropertyRequest> Parse(Octets const& octets) {
    return test::ParseService<WritePropertyRequest, WritePropertyRequestParser>(octets);
}

std::unique_ptr<WritePropertyRequest> Parse(std::string_view hex) {
    return Parse(Hex(hex));
}

std::string Written(CPropertyValue* value, PropertyIdentifierEnum property = PresentValue, int index = 0) {
    return ToHex(WritePropertyRequest(AnalogValue(1), property, index, value).GetBytes());
}

// A value that records its destruction.
class MortalValue : public BooleanValue {
public:
    explicit MortalValue(int& counter) : deaths(counter) {}
    ~MortalValue() override { ++deaths; }

private:
    int& deaths;
};

}  // namespace

TEST(WritePropertyRequest, OfARealToAnAnalogValueHasItsOctets) {
    EXPECT_EQ(Written(new RealValue(1.0f)), Real1);
}

TEST(WritePropertyRequest, WithIndex2HasItInFourOctetsBeforeTheValue) {
    EXPECT_EQ(Written(new RealValue(1.0f), PresentValue, 2),
              "0C 00 80 00 01 19 55 2C 00 00 00 02 3E 44 3F 80 00 00 3F");
}

TEST(WritePropertyRequest, WithANegativeIndexWritesNoTag2) {
    for (int const index : {-1, -7, std::numeric_limits<int>::min()}) {
        EXPECT_EQ(Written(new RealValue(1.0f), PresentValue, index), Real1);
    }
}

TEST(WritePropertyRequest, OfSeveralTagsWritesAllOfThemBetween3EAnd3F) {
    EXPECT_EQ(Written(new DateTimeValue(Date(124, 3, 15, 5), Time(8, 30, 0, 5))),
              "0C 00 80 00 01 19 55 3E A4 7C 03 0F 05 B4 08 1E 00 05 3F");
}

TEST(WritePropertyRequest, OfAScheduleWritesItsConstructedElementsBetween3EAnd3F) {
    WritePropertyRequest const weekly(
        Schedule(1), PropertyIdentifierEnum::Weekly_Schedule, -1,
        new WeeklyScheduleValue("08000000,4,4,21.5;;;;;;;", EncodingTypeEnum::Utf8));
    EXPECT_EQ(ToHex(weekly.GetBytes()),
              "0C 04 40 00 01 19 7B 3E 0E B4 08 00 00 00 44 41 AC 00 00 0F "
              "0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 3F");
    WritePropertyRequest const exception(
        Schedule(1), PropertyIdentifierEnum::Exception_Schedule, -1,
        new ExceptionScheduleValue("3,7,10,08000000,1,1,1;", EncodingTypeEnum::Utf8));
    EXPECT_EQ(ToHex(exception.GetBytes()),
              "0C 04 40 00 01 19 26 3E 1C 01 80 00 07 2E B4 08 00 00 00 11 2F 39 0A 3F");
}

TEST(WritePropertyRequest, OfAValueWithTagsOfBothKindsLeavesTheConstructedOnesOut) {
    class BothKinds : public BooleanValue {
    public:
        BothKinds() : BooleanValue(true) {}
        std::vector<std::unique_ptr<TagBase>> ToApplicationComplexTags() const override {
            std::vector<std::unique_ptr<TagBase>> tags;
            tags.push_back(std::make_unique<ComplexTag>(static_cast<char>(0), true));
            return tags;
        }
    };
    EXPECT_EQ(Written(new BothKinds), "0C 00 80 00 01 19 55 3E 11 3F");
}

TEST(WritePropertyRequest, NeverWritesAPriorityItself) {
    std::vector<char> const octets =
        WritePropertyRequest(AnalogValue(1), PresentValue, 2, new RealValue(1.0f)).GetBytes();
    EXPECT_EQ(octets.back(), 0x3F) << "the closing tag of the value is the last octet";
}

TEST(WritePropertyRequest, WithTheLargestIndexWritesItWhole) {
    WritePropertyRequest request(AnalogValue(1), PresentValue, -1, new RealValue(1.0f));
    request.SetPropertyArrayIndex(0xFFFFFFFF);
    EXPECT_EQ(ToHex(request.GetBytes()), "0C 00 80 00 01 19 55 2C FF FF FF FF 3E 44 3F 80 00 00 3F");
    EXPECT_EQ(Parse(request.GetBytes())->GetPropertyArrayIndex(), 0xFFFFFFFFu);
}

TEST(WritePropertyRequest, PropertyAbove255IsCutToItsLowEightBits) {
    EXPECT_EQ(Written(new RealValue(1.0f), static_cast<PropertyIdentifierEnum>(0x155)), Real1);
}

TEST(WritePropertyRequest, OfAValueWithoutAnyTagsIsAnEmptyPair) {
    // An event schedule is never empty, so this class replaces it.
    class NoTags : public BooleanValue {
        std::vector<Tag> ToApplicationTags() const override { return {}; }
    };
    EXPECT_EQ(Written(new NoTags), "0C 00 80 00 01 19 55 3E 3F");
}

TEST(WritePropertyRequest, StartsWithoutAValueAndOwnsTheOneItIsGiven) {
    int deaths = 0;
    {
        WritePropertyRequest request;
        EXPECT_EQ(request.GetPropertyValue(), nullptr);
        EXPECT_EQ(request.GetPropertyArrayIndex(), 0u);
        request.SetPropertyValue(std::make_unique<MortalValue>(deaths));
        request.SetPropertyValue(std::make_unique<MortalValue>(deaths));
        EXPECT_EQ(deaths, 1);
    }
    EXPECT_EQ(deaths, 2);
    WritePropertyRequest(AnalogValue(1), PresentValue, -1, new MortalValue(deaths));
    EXPECT_EQ(deaths, 3);
}

TEST(WritePropertyRequestParser, ReadsBackWhatTheRequestWrote) {
    auto const request = Parse("0C 00 80 00 01 19 55 2C 00 00 00 02 3E 44 3F 80 00 00 3F");
    EXPECT_EQ(request->GetObjectId().GetObjectType(), ObjectTypeEnum::Analog_Value);
    EXPECT_EQ(request->GetObjectId().GetInstanceNumber(), 1u);
    EXPECT_EQ(request->GetPropertyIdentifier(), PresentValue);
    EXPECT_EQ(request->GetPropertyArrayIndex(), 2u);
    EXPECT_EQ(dynamic_cast<RealValue&>(*request->GetPropertyValue()).GetValue(), 1.0f);
    EXPECT_EQ(ToHex(Parse(Real1)->GetBytes()), Real1);
}

TEST(WritePropertyRequestParser, LeavesAPriorityInTheStream) {
    Octets octets = Hex(std::string(Real1) + " 49 08");
    FakeStream stream(octets);
    ASSERT_NE(WritePropertyRequestParser().Parse(stream), nullptr);
    EXPECT_EQ(stream.Available(), 2);
}

TEST(WritePropertyRequestParser, WithoutTag0OrTag1OrTag3ThrowsFormatError) {
    for (std::string_view const hex :
         {"", "19 55 3E 44 3F 80 00 00 3F", "0C 00 80 00 01 3E 44 3F 80 00 00 3F", "0C 00 80 00 01 19 55",
          "0C 00 80 00 01 19 55 29 02"}) {
        EXPECT_EQ(test::TextOf<FormatErrorException>([hex] { Parse(hex); }), "packet format not expected")
            << hex;
    }
}

TEST(WritePropertyRequestParser, TagOfTheWrongKindThrowsFormatError) {
    EXPECT_THROW(Parse("0E 0F 19 55 3E 44 3F 80 00 00 3F"), FormatErrorException);
    EXPECT_THROW(Parse("0C 00 80 00 01 1E 1F 3E 44 3F 80 00 00 3F"), FormatErrorException);
    EXPECT_THROW(Parse("0C 00 80 00 01 19 55 2E 2F 3E 44 3F 80 00 00 3F"), FormatErrorException);
    EXPECT_THROW(Parse("0C 00 80 00 01 19 55 39 00"), FormatErrorException);
}

TEST(WritePropertyRequestParser, PropertyThatIsNotSupportedThrowsSupportInformation) {
    EXPECT_THROW(Parse("0C 00 80 00 01 19 7B 3E 3F"), SupportInformationException);
    EXPECT_THROW(Parse("0C 00 80 00 01 19 4B 3E C4 00 80 00 01 3F"), SupportInformationException)
        << "an object identifier has no parser";
}

TEST(WritePropertyRequestParser, EachTruncationIsRefused) {
    for (std::string_view const hex :
         {"00 04 01 0F 0C 00 80 00 01 19 55 3E 44 3F 80 00 00 3F",
          "00 04 01 0F 0C 00 80 00 01 19 55 2C 00 00 00 02 3E 44 3F 80 00 00 3F",
          "00 04 01 0F 0C 04 40 00 01 19 26 3E 1C 01 80 00 07 2E B4 08 00 00 00 11 2F 39 0A 3F"}) {
        SCOPED_TRACE(hex);
        test::ExpectEachTruncationRefused(hex);
    }
}

TEST(ConfirmedRequestParser, ReadsAWholeWritePropertyAndReturnsTheSameOctets) {
    std::string const apdu = "00 04 01 0F " + std::string(Real1);
    auto const pdu = test::ParseAs<ConfirmedRequestPdu>(apdu);
    ASSERT_NE(dynamic_cast<WritePropertyRequest*>(pdu->GetServiceRequest()), nullptr);
    EXPECT_EQ(ToHex(pdu->GetBytes()), apdu);
}

// A request that is parsed is written in a form that is parsed as the same request.
TEST(RandomWritePropertyRequest, IsReadBackAsItselfOrRefused) {
    std::vector<Octets> const samples = {
        Hex(Real1),
        Hex("0C 00 80 00 01 19 55 2C 00 00 00 02 3E 44 3F 80 00 00 3F"),
        Hex("0C 09 00 00 01 19 55 3E A4 7C 03 0F 05 3F"),
        Hex("0C 0A C0 00 01 19 55 3E A4 7C 03 0F 05 B4 08 1E 00 05 3F"),
        Hex("0C 01 40 00 01 19 55 3E 91 01 3F"),
        Hex("0C 00 80 00 01 19 4D 3E 73 00 68 69 3F"),
    };
    std::mt19937 random(20240319);
    int read = 0;
    for (int round = 0; round < 10000; ++round) {
        Octets octets = samples[random() % samples.size()];
        for (auto changes = random() % 3; changes > 0; --changes) {
            octets[random() % octets.size()] = static_cast<char>(random());
        }
        octets.resize(octets.size() - random() % 8 / 7);
        std::unique_ptr<WritePropertyRequest> request;
        try {
            request = Parse(octets);
        } catch (ParseException const&) {
            continue;
        } catch (SupportInformationException const&) {
            continue;
        } catch (ArgumentOutOfRangeException const&) {
            continue;
        }
        ++read;
        if (static_cast<int>(request->GetPropertyIdentifier()) > 255) {
            continue;  // written cut
        }
        Octets const written = request->GetBytes();
        ASSERT_EQ(ToHex(Parse(written)->GetBytes()), ToHex(written)) << ToHex(octets);
    }
    EXPECT_GT(read, 3000);
}
