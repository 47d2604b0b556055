#include "TagParser.h"

#include <gtest/gtest.h>

#include <limits>
#include <new>

#include "Exceptions.h"
#include "FakeStream.h"
#include "Hex.h"

using test::Hex;
using test::Octets;
using test::ToHex;
using test::operator+;

namespace {

// The primitive tag at the front of the stream. The test fails if it is not one.
Tag ReadPrimitive(IStreamBase& stream) {
    auto const base = TagParser::ReadTag(stream);
    auto const* const tag = dynamic_cast<Tag const*>(base.get());
    EXPECT_NE(tag, nullptr);
    return tag ? *tag : Tag();
}

Tag ReadPrimitive(char const* octets) {
    FakeStream stream(Hex(octets));
    Tag tag = ReadPrimitive(stream);
    EXPECT_EQ(stream.Available(), 0) << octets;
    return tag;
}

Tag WithData(char const* octets) {
    return Tag(0, true, 0, Hex(octets), 0);
}

}  // namespace

TEST(TagParser, EmptyStreamGivesNull) {
    FakeStream stream{Octets()};
    EXPECT_EQ(TagParser::ReadTag(stream), nullptr);
}

TEST(TagParser, ApplicationBooleanHasNoDataAndTheNextTagFollowsAtOnce) {
    FakeStream stream(Hex("11 21 05"));
    Tag const boolean = ReadPrimitive(stream);
    EXPECT_EQ(boolean.GetTagNumber(), 1);
    EXPECT_EQ(boolean.GetValLenType(), 1);
    EXPECT_TRUE(boolean.data.empty());
    EXPECT_EQ(ToHex(ReadPrimitive(stream).data), "05");
}

TEST(TagParser, ContextTagOneReadsItsDataOctet) {
    EXPECT_EQ(ToHex(ReadPrimitive("19 01").data), "01");
}

TEST(TagParser, StrayClosingTagIsAPrimitiveTagOfSevenOctets) {
    Tag const tag = ReadPrimitive("3F 01 02 03 04 05 06 07");
    EXPECT_EQ(tag.GetTagNumber(), 3);
    EXPECT_EQ(ToHex(tag.data), "01 02 03 04 05 06 07");

    FakeStream tooShort(Hex("3F 01 02 03 04 05 06"));
    EXPECT_THROW(TagParser::ReadTag(tooShort), WrongLengthException);
}

TEST(TagParser, ExtendedLengthOfZeroMakesALengthOfFive) {
    Tag const tag = ReadPrimitive("65 00 01 02 03 04 05");
    EXPECT_EQ(tag.GetTagNumber(), 6);
    EXPECT_EQ(tag.GetAdditionalLength(), 0);
    EXPECT_EQ(ToHex(tag.data), "01 02 03 04 05");
    EXPECT_EQ(ReadPrimitive("65 FE 00 00 01 02 03 04 05").data.size(), 5u);
}

TEST(TagParser, LengthOctet254HasTwoMoreAnd255IsALengthOf255) {
    FakeStream wide(Hex("65 FE 01 2C") + Octets(300, 0x11));
    Tag const tag = ReadPrimitive(wide);
    EXPECT_EQ(tag.GetAdditionalLength(), 300);
    EXPECT_EQ(tag.data, Octets(300, 0x11));
    EXPECT_EQ(wide.Available(), 0);

    FakeStream narrow(Hex("65 FF") + Octets(256, 0x22));
    EXPECT_EQ(ReadPrimitive(narrow).data, Octets(255, 0x22));
    EXPECT_EQ(narrow.Available(), 1);
}

TEST(TagParser, ClosingTagOfAnotherNumberIsAccepted) {
    FakeStream stream(Hex("3E 21 05 4F 11"));
    auto const tag = TagParser::ReadTag(stream);
    auto const* const complex = dynamic_cast<ComplexTag*>(tag.get());
    ASSERT_NE(complex, nullptr);
    EXPECT_EQ(complex->GetTagNumber(), 3);
    EXPECT_EQ(complex->size(), 1);
    EXPECT_EQ(stream.Available(), 1);
}

TEST(TagParser, NestedComplexTagsComeBackAsATreeOfContextClass) {
    // An application tag whose field says "opening" opens a constructed value as well.
    FakeStream stream(Hex("1E 29 55 46 44 3F 80 00 00 5E 5F 47 11 1F"));
    auto const tag = TagParser::ReadTag(stream);
    auto const* const list = dynamic_cast<ComplexTag*>(tag.get());
    ASSERT_NE(list, nullptr);
    ASSERT_EQ(list->size(), 3);
    EXPECT_TRUE(list->GetIsClass());
    auto const* const value = dynamic_cast<ComplexTag*>(list->GetSubTag(1));
    ASSERT_NE(value, nullptr);
    EXPECT_TRUE(value->GetIsClass());
    ASSERT_EQ(value->size(), 2);
    EXPECT_EQ(ToHex(value->GetSubTag(0)->GetBytes()), "44 3F 80 00 00");
    EXPECT_EQ(ToHex(list->GetBytes()), "1E 29 55 4E 44 3F 80 00 00 5E 5F 4F 11 1F");
}

TEST(TagParser, ReadSequenceStopsAfterTheFirstNumberThatReachesTheCount) {
    FakeStream whole(Hex("09 01 19 02 39 03 49 04"));
    auto const tags = TagParser::ReadSequence(whole, 4);
    EXPECT_EQ(tags.size(), 3u);
    EXPECT_EQ(tags.count(2), 0u);
    EXPECT_EQ(ToHex(tags.at(3)->GetBytes()), "39 03");
    EXPECT_EQ(whole.Available(), 2);

    FakeStream ending(Hex("09 01 19 02"));
    EXPECT_EQ(TagParser::ReadSequence(ending, 4).size(), 2u);
}

TEST(TagParser, ReadSequenceGoesOnAfterANumberTwoBelowTheCount) {
    for (int count = 2; count < 6; ++count) {
        auto const last = static_cast<char>(count - 1);
        auto const lastButOne = static_cast<char>(count - 2);
        FakeStream stream(Tag(lastButOne, true, 1, Hex("05"), 0).GetBytes() +
                          Tag(last, true, 1, Hex("06"), 0).GetBytes() + Hex("09 07"));
        auto const tags = TagParser::ReadSequence(stream, count);
        EXPECT_EQ(tags.count(lastButOne), 1u) << count;
        EXPECT_EQ(tags.count(last), 1u) << count;
        EXPECT_EQ(stream.Available(), 2) << count;
    }
}

TEST(TagParser, ReadSequenceCountsNumbersAndNotTags) {
    FakeStream stream(Hex("19 01 09 00 19 02"));
    auto const tags = TagParser::ReadSequence(stream, 2);
    ASSERT_EQ(tags.size(), 1u);
    EXPECT_EQ(ToHex(tags.at(1)->GetBytes()), "19 01");
    EXPECT_EQ(stream.Available(), 4);
}

TEST(TagParser, DoesNotReadTheWritersFurtherOctet) {
    FakeStream stream(Hex("79 07 05"));
    Tag const tag = ReadPrimitive(stream);
    EXPECT_EQ(tag.GetTagNumber(), 7);
    EXPECT_TRUE(tag.GetIsClass());
    EXPECT_EQ(ToHex(tag.data), "07");
    EXPECT_EQ(stream.Available(), 1);
}

TEST(TagParser, NumberFifteenIsReplacedByTheNextOctetInBothClasses) {
    EXPECT_EQ(ReadPrimitive("F9 10 AA").GetTagNumber(), 16);
    EXPECT_EQ(static_cast<unsigned char>(ReadPrimitive("F1 FE AA").GetTagNumber()), 0xFE);
    EXPECT_TRUE(ReadPrimitive("F1 01").data.empty()) << "the boolean is found by the new number";
    EXPECT_EQ(ToHex(ReadPrimitive("F5 02 01 AA").data), "AA") << "the number precedes the length";

    FakeStream complex(Hex("FE 20 21 05 FF 20"));
    EXPECT_EQ(TagParser::ReadTag(complex)->GetTagNumber(), 0x20);
    EXPECT_EQ(complex.Available(), 1) << "the number after a closing tag stays in the stream";
}

TEST(TagParser, ApplicationBooleanTakesItsLengthOctetButNoData) {
    FakeStream stream(Hex("15 03 AA"));
    Tag const tag = ReadPrimitive(stream);
    EXPECT_EQ(tag.GetAdditionalLength(), 3);
    EXPECT_TRUE(tag.data.empty());
    EXPECT_EQ(stream.Available(), 1);
}

// Only a boolean, which has no data, shows the length that is read from a stream that ends inside it.
TEST(TagParser, MissingOctetsOfATwoOctetLengthCountAsZero) {
    EXPECT_EQ(ReadPrimitive("15 FE 01 2C").GetAdditionalLength(), 0x012C);
    EXPECT_EQ(ReadPrimitive("15 FE 01").GetAdditionalLength(), 0x0100);
    EXPECT_EQ(ReadPrimitive("15 FE").GetAdditionalLength(), 0);
}

TEST(TagParser, TagsTruncatedAtAnyLengthAreAWrongLength) {
    for (char const* octets : {"24 01 02 03 04", "F9 10 AA", "65 06 01 02 03 04 05 06", "65 FE 00 02 AA BB",
                               "3E 21 05 4E FC 20 01 02 03 04 4F 3F"}) {
        auto const whole = Hex(octets);
        for (std::size_t length = 1; length < whole.size(); ++length) {
            FakeStream stream(Octets(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)));
            EXPECT_THROW(TagParser::ReadTag(stream), WrongLengthException) << octets << " cut to " << length;
        }
        FakeStream stream(whole);
        EXPECT_NE(TagParser::ReadTag(stream), nullptr) << octets;
    }
}

TEST(TagParser, ReadAppSequenceReturnsExactlyCountElements) {
    FakeStream stream(Hex("91 01 3E 3F"));
    auto const tags = TagParser::ReadAppSequence(stream, 4);
    ASSERT_EQ(tags.size(), 4u);
    EXPECT_EQ(ToHex(tags[0]->GetBytes()), "91 01");
    EXPECT_EQ(ToHex(tags[1]->GetBytes()), "3E 3F");
    EXPECT_EQ(tags[2], nullptr);
    EXPECT_EQ(tags[3], nullptr);
}

TEST(TagParser, ReadAppSequenceReadsNoMoreThanItsElements) {
    FakeStream stream(Hex("91 01 91 02"));
    EXPECT_EQ(TagParser::ReadAppSequence(stream, 0).size(), 0u);
    EXPECT_EQ(TagParser::ReadAppSequence(stream, -1).size(), 0u);
    EXPECT_EQ(TagParser::ReadAppSequence(stream, 1).size(), 1u);
    EXPECT_EQ(stream.Available(), 2);
    EXPECT_THROW(TagParser::ReadAppSequence(stream, 0x40000000), std::bad_alloc);
    EXPECT_THROW(TagParser::ReadAppSequence(stream, std::numeric_limits<int>::max()), std::bad_alloc);
}

TEST(TagParser, ReadSequenceWithoutACountReadsNothing) {
    FakeStream stream(Hex("09 01"));
    EXPECT_TRUE(TagParser::ReadSequence(stream, 0).empty());
    EXPECT_TRUE(TagParser::ReadSequence(stream, -1).empty());
    EXPECT_EQ(stream.Available(), 2);
}

TEST(TagParser, ReadSequenceKeepsTheLaterOfTwoTagsWithTheSameNumber) {
    FakeStream stream(Hex("09 01 1E 1F 09 02 1E 21 07 1F"));
    auto const tags = TagParser::ReadSequence(stream, 4);
    ASSERT_EQ(tags.size(), 2u);
    EXPECT_EQ(ToHex(tags.at(0)->GetBytes()), "09 02");
    EXPECT_EQ(ToHex(tags.at(1)->GetBytes()), "1E 21 07 1F");
}

TEST(TagParser, ReadSequenceTakesNumbersAsUnsigned) {
    FakeStream stream(Hex("F9 FE AA 09 01"));
    auto const tags = TagParser::ReadSequence(stream, 4);
    EXPECT_EQ(tags.size(), 1u);
    EXPECT_EQ(tags.count(static_cast<char>(0xFE)), 1u);
    EXPECT_EQ(stream.Available(), 2);
}

TEST(TagParser, ValuesAreReadFromTheDataAlone) {
    EXPECT_EQ(TagParser::GetFloatValue(WithData("3F 80 00 00")), 1.0f);
    EXPECT_EQ(TagParser::GetDoubleValue(WithData("3F F0 00 00 00 00 00 00")), 1.0);
    EXPECT_EQ(TagParser::GetUnsignedInteger(WithData("01 00 00 00 00")), 0x100000000ull);
    EXPECT_EQ(TagParser::GetUnsignedInteger(WithData("")), 0u);
    EXPECT_EQ(TagParser::GetSignedInteger(WithData("FF")), 255);
    EXPECT_EQ(TagParser::GetSignedInteger(WithData("FF FF FF FF FF FF FF FF")), -1);
    EXPECT_EQ(TagParser::GetPropertyIdentifier(WithData("55")), PropertyIdentifierEnum::Present_Value);
    EXPECT_EQ(static_cast<int>(TagParser::GetPropertyIdentifier(WithData("0A 0B 0C"))), 0x0B0C);
}

TEST(TagParser, ValuesOfMoreOctetsThanTheirTypeAreParseErrors) {
    EXPECT_THROW(TagParser::GetFloatValue(WithData("01 02 03 04 05")), ParseException);
    EXPECT_THROW(TagParser::GetPropertyIdentifier(WithData("01 02 03 04 05")), ParseException);
    Tag const nine = WithData("01 02 03 04 05 06 07 08 09");
    EXPECT_THROW(TagParser::GetDoubleValue(nine), ParseException);
    EXPECT_THROW(TagParser::GetUnsignedInteger(nine), ParseException);
    EXPECT_THROW(TagParser::GetSignedInteger(nine), ParseException);
}

TEST(TagParser, BinaryValueIsOneOctetOrOutOfRange) {
    EXPECT_EQ(TagParser::GetBinaryValue(WithData("01")), 1);
    EXPECT_EQ(static_cast<unsigned char>(TagParser::GetBinaryValue(WithData("FF"))), 0xFF);
    EXPECT_THROW(TagParser::GetBinaryValue(WithData("")), ArgumentOutOfRangeException);
    EXPECT_THROW(TagParser::GetBinaryValue(WithData("00 01")), ArgumentOutOfRangeException);
}
