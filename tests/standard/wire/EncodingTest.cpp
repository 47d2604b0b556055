#include <gtest/gtest.h>

#include "Content.h"
#include "Hex.h"
#include "OctetReader.h"
#include "TagWriter.h"

namespace content = standard::content;
using standard::ApplicationTag;
using standard::TagWriter;
using test::ToHex;

TEST(Content, UnsignedTakesAsFewOctetsAsItCan) {
    EXPECT_EQ(ToHex(content::UnsignedNumber(0)), "00");
    EXPECT_EQ(ToHex(content::UnsignedNumber(255)), "FF");
    EXPECT_EQ(ToHex(content::UnsignedNumber(256)), "01 00");
    EXPECT_EQ(ToHex(content::UnsignedNumber(65536)), "01 00 00");
    EXPECT_EQ(ToHex(content::UnsignedNumber(0xFFFFFFFF)), "FF FF FF FF");
    EXPECT_EQ(ToHex(content::UnsignedNumber(0x8000000000000000)), "80 00 00 00 00 00 00 00");
}

TEST(Content, SignedKeepsItsSignBit) {
    EXPECT_EQ(ToHex(content::SignedNumber(0)), "00");
    EXPECT_EQ(ToHex(content::SignedNumber(-1)), "FF");
    EXPECT_EQ(ToHex(content::SignedNumber(127)), "7F");
    EXPECT_EQ(ToHex(content::SignedNumber(128)), "00 80");
    EXPECT_EQ(ToHex(content::SignedNumber(-128)), "80");
    EXPECT_EQ(ToHex(content::SignedNumber(-129)), "FF 7F");
    EXPECT_EQ(ToHex(content::SignedNumber(-300)), "FE D4");
    EXPECT_EQ(ToHex(content::SignedNumber(INT64_MIN)), "80 00 00 00 00 00 00 00");
    EXPECT_EQ(ToHex(content::SignedNumber(INT64_MAX)), "7F FF FF FF FF FF FF FF");
}

// The examples of clause 20.2.
TEST(Content, ExamplesOfTheStandard) {
    EXPECT_EQ(ToHex(content::Real(72.0f)), "42 90 00 00");
    EXPECT_EQ(ToHex(content::DoubleNumber(72.0)), "40 52 00 00 00 00 00 00");
    EXPECT_EQ(ToHex(content::CharacterString("This is a BACnet string!")),
              "00 54 68 69 73 20 69 73 20 61 20 42 41 43 6E 65 74 20 73 74 72 69 6E 67 21");
    EXPECT_EQ(ToHex(content::BitString("10101")), "03 A8");
    EXPECT_EQ(ToHex(content::Date({91, 1, 24, 4})), "5B 01 18 04");
    EXPECT_EQ(ToHex(content::Time({17, 35, 45, 17})), "11 23 2D 11");
    EXPECT_EQ(ToHex(content::ObjectIdentifier({3, 15})), "00 C0 00 0F");
}

TEST(Content, BitStringsOfEveryRest) {
    EXPECT_EQ(ToHex(content::BitString("")), "00");
    EXPECT_EQ(ToHex(content::BitString("11111111")), "00 FF");
    EXPECT_EQ(ToHex(content::BitString("000000001")), "07 00 80");
}

TEST(TagWriter, BooleanHasItsValueInTheTag) {
    TagWriter writer;
    writer.Boolean(true);
    writer.Boolean(false);
    writer.Null();
    EXPECT_EQ(ToHex(writer.Take()), "11 10 00");
}

TEST(TagWriter, LengthsFromFiveUpAreExtended) {
    auto const head = [](std::size_t length, std::size_t count) {
        TagWriter writer;
        writer.Application(ApplicationTag::OctetString, test::Octets(length, '\x55'));
        test::Octets octets = writer.Take();
        EXPECT_EQ(octets.size(), length + count);
        octets.resize(count);
        return ToHex(octets);
    };
    EXPECT_EQ(head(4, 1), "64");
    EXPECT_EQ(head(5, 2), "65 05");
    EXPECT_EQ(head(253, 2), "65 FD");
    EXPECT_EQ(head(254, 4), "65 FE 00 FE");
    EXPECT_EQ(head(65535, 4), "65 FE FF FF");
    EXPECT_EQ(head(65536, 6), "65 FF 00 01 00 00");
}

TEST(TagWriter, ContextTagsAndBrackets) {
    TagWriter writer;
    writer.Opening(3);
    writer.Context(2, test::Hex("01 02"));
    writer.Context(15, test::Hex("07"));
    writer.Closing(3);
    writer.Opening(20);
    writer.Closing(20);
    EXPECT_EQ(ToHex(writer.Take()), "3E 2A 01 02 F9 0F 07 3F FE 14 FF 14");
}

TEST(OctetReader, NumbersAreBigEndianAndUnsigned) {
    test::Octets const octets = test::Hex("FF 80 01 FF FE FD FC 07");
    standard::OctetReader reader(octets);
    EXPECT_EQ(reader.Peek(), 0xFF);
    EXPECT_EQ(reader.U8(), 0xFF);
    EXPECT_EQ(reader.U16(), 0x8001);
    EXPECT_EQ(reader.U32(), 0xFFFEFDFC);
    EXPECT_EQ(ToHex(reader.Rest()), "07");
    EXPECT_TRUE(reader.AtEnd());
}

TEST(OctetReader, NothingIsReadPastTheEnd) {
    test::Octets const octets = test::Hex("01 02 03");
    standard::OctetReader reader(octets);
    EXPECT_THROW(reader.U32(), standard::EndOfOctets);
    EXPECT_THROW(reader.Take(4), standard::EndOfOctets);
    EXPECT_EQ(reader.Left(), 3u);
    reader.Take(3);
    EXPECT_THROW(reader.U8(), standard::EndOfOctets);
    EXPECT_THROW(reader.Peek(), standard::EndOfOctets);
}
