#include "BitConverter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>

#include "Exceptions.h"
#include "Hex.h"

using test::Hex;
using test::Octets;
using test::ToHex;

TEST(BitConverter, CutZerosOfNothingOrOfZerosGivesOneZeroOctet) {
    EXPECT_EQ(ToHex(BitConverter::CutZeros({})), "00");
    EXPECT_EQ(ToHex(BitConverter::CutZeros(Hex("00 00 00"))), "00");
}

TEST(BitConverter, CutZerosRemovesOnlyLeadingZeros) {
    EXPECT_EQ(ToHex(BitConverter::CutZeros(Hex("00 01 00"))), "01 00");
    EXPECT_EQ(ToHex(BitConverter::CutZeros(Hex("FF 00 80"))), "FF 00 80");
}

TEST(BitConverter, ReadsShortOctetsAsTheLowPartOfTheNumber) {
    EXPECT_EQ(BitConverter::ToUInt16({}, 0), 0);
    EXPECT_EQ(BitConverter::ToUInt16(Hex("05"), 0), 5);
    EXPECT_EQ(BitConverter::ToUInt16(Hex("01 02"), 0), 258);
    EXPECT_EQ(BitConverter::ToUInt32(Hex("12 34"), 0), 0x1234u);
    EXPECT_EQ(BitConverter::ToUInt64(Hex("01 00 00 00 00"), 0), 0x100000000ull);
}

TEST(BitConverter, SignedReadsDoNotExtendTheSign) {
    EXPECT_EQ(BitConverter::ToInt32(Hex("FF"), 0), 255);
    EXPECT_EQ(BitConverter::ToInt32(Hex("FF FF FF FF"), 0), -1);
    EXPECT_EQ(BitConverter::ToInt64(Hex("FF FF FF FF"), 0), 4294967295ll);
    EXPECT_EQ(BitConverter::ToInt64(Hex("FF FF FF FF FF FF FF FE"), 0), -2);
}

TEST(BitConverter, GetBytesIsBigEndianInFullWidth) {
    EXPECT_EQ(ToHex(BitConverter::GetBytes(static_cast<unsigned short>(0x0102))), "01 02");
    EXPECT_EQ(ToHex(BitConverter::GetBytes(0x01020304u)), "01 02 03 04");
    EXPECT_EQ(ToHex(BitConverter::GetBytes(-2ll)), "FF FF FF FF FF FF FF FE");
    EXPECT_EQ(ToHex(BitConverter::GetBytes(0x80ull)), "00 00 00 00 00 00 00 80");
    EXPECT_EQ(ToHex(BitConverter::GetBytes(1.0f)), "3F 80 00 00");
    EXPECT_EQ(ToHex(BitConverter::GetBytes(1.0)), "3F F0 00 00 00 00 00 00");
}

TEST(BitConverter, ToUInt16DropsOctetsAboveItsSixteenBits) {
    EXPECT_EQ(BitConverter::ToUInt16(Hex("0A 0B 0C"), 0), 0x0B0C);
    EXPECT_EQ(BitConverter::ToUInt16(Hex("0A 0B 0C 0D"), 0), 0x0C0D);
}

TEST(BitConverter, FloatingPointOfFewOctetsIsTheLowPartOfTheBitPattern) {
    EXPECT_EQ(BitConverter::ToFloat(Hex("3F 80 00 00"), 0), 1.0f);
    EXPECT_EQ(BitConverter::ToFloat(Hex("01"), 0), std::numeric_limits<float>::denorm_min());
    EXPECT_EQ(BitConverter::ToDouble(Hex("01"), 0), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(BitConverter::ToDouble({}, 0), 0.0);
    EXPECT_TRUE(std::isnan(BitConverter::ToFloat(Hex("7F C0 00 00"), 0)));
}

TEST(BitConverter, IndexHasNoEffect) {
    auto const octets = Hex("3F F0 00 00");
    EXPECT_EQ(BitConverter::ToUInt16(octets, 2), BitConverter::ToUInt16(octets, 0));
    EXPECT_EQ(BitConverter::ToUInt32(octets, 99), 0x3FF00000u);
    EXPECT_EQ(BitConverter::ToUInt64(octets, -1), 0x3FF00000ull);
    EXPECT_EQ(BitConverter::ToInt32(octets, 3), 0x3FF00000);
    EXPECT_EQ(BitConverter::ToInt64(octets, 1000), 0x3FF00000);
    EXPECT_EQ(BitConverter::ToFloat(octets, 1), 1.875f);
    EXPECT_EQ(BitConverter::ToDouble(Hex("3F F0 00 00 00 00 00 00"), 7), 1.0);
}

TEST(BitConverter, MoreOctetsThanThePaddedWidthAreRefused) {
    Octets const five(5);
    Octets const nine(9);
    EXPECT_THROW(BitConverter::ToUInt16(five, 0), ParseException);
    EXPECT_THROW(BitConverter::ToUInt32(five, 0), ParseException);
    EXPECT_THROW(BitConverter::ToInt32(five, 0), ParseException);
    EXPECT_THROW(BitConverter::ToFloat(five, 0), ParseException);
    EXPECT_THROW(BitConverter::ToUInt64(nine, 0), ParseException);
    EXPECT_THROW(BitConverter::ToInt64(nine, 0), ParseException);
    EXPECT_THROW(BitConverter::ToDouble(nine, 0), ParseException);
    EXPECT_THROW(BitConverter::CompleteTo(five, 4), ParseException);
    EXPECT_THROW(BitConverter::CompleteTo(five, -1), ParseException);
}

TEST(BitConverter, BothCompletionsPadWithZerosAtTheEnd) {
    EXPECT_EQ(ToHex(BitConverter::CompleteTo(Hex("FF 01"), 4)), "FF 01 00 00");
    EXPECT_EQ(ToHex(BitConverter::CompleteWithZerosAndFfsTo(Hex("FF 01"), 4)), "FF 01 00 00");
    EXPECT_EQ(ToHex(BitConverter::CompleteTo({}, 2)), "00 00");
    EXPECT_EQ(ToHex(BitConverter::CompleteTo(Hex("01 02"), 2)), "01 02");
}

TEST(BitConverter, ReverseAndToLocalFormatReverseTheOctetsAndKeepTheirArgument) {
    auto const octets = Hex("01 02 03");
    ASSERT_TRUE(BitConverter::IsLittleEndian());
    EXPECT_EQ(ToHex(Reverse(octets)), "03 02 01");
    EXPECT_EQ(ToHex(BitConverter::ToLocalFormat(octets)), "03 02 01");
    EXPECT_EQ(ToHex(octets), "01 02 03");
    EXPECT_TRUE(Reverse({}).empty());
}

TEST(BitConverter, ReadsBackWhatItWrote) {
    std::mt19937_64 random(31);
    for (int i = 0; i < 10000; ++i) {
        std::uint64_t const number = random() >> random() % 64;
        EXPECT_EQ(BitConverter::ToUInt64(BitConverter::GetBytes(static_cast<unsigned long long>(number)), 0),
                  number);
        EXPECT_EQ(
            BitConverter::ToUInt64(
                BitConverter::CutZeros(BitConverter::GetBytes(static_cast<unsigned long long>(number))), 0),
            number);
        auto const signedNumber = static_cast<long long>(number);
        EXPECT_EQ(BitConverter::ToInt64(BitConverter::GetBytes(signedNumber), 0), signedNumber);
        auto const word = static_cast<unsigned int>(number);
        EXPECT_EQ(BitConverter::ToUInt32(BitConverter::GetBytes(word), 0), word);
        auto const half = static_cast<unsigned short>(number);
        EXPECT_EQ(BitConverter::ToUInt16(BitConverter::GetBytes(half), 0), half);
        // Every bit pattern is read back, including those that are not a number.
        float const real = BitConverter::ToFloat(BitConverter::GetBytes(word), 0);
        EXPECT_EQ(BitConverter::GetBytes(real), BitConverter::GetBytes(word));
        double const wide = BitConverter::ToDouble(BitConverter::GetBytes(signedNumber), 0);
        EXPECT_EQ(BitConverter::GetBytes(wide), BitConverter::GetBytes(signedNumber));
    }
}

// The definition of the reads: reversed, padded at the far end, read in host order.
TEST(BitConverter, ReadsAsReversingPaddingAndHostOrderWould) {
    std::mt19937 random(32);
    for (int i = 0; i < 10000; ++i) {
        Octets octets(random() % 9);
        for (char& octet : octets) {
            octet = static_cast<char>(random());
        }
        auto const padded = BitConverter::CompleteTo(Reverse(octets), 8);
        std::uint64_t expected = 0;
        std::memcpy(&expected, padded.data(), 8);
        ASSERT_EQ(BitConverter::ToUInt64(octets, 0), expected) << ToHex(octets);
        if (octets.size() <= 4) {
            ASSERT_EQ(BitConverter::ToUInt32(octets, 0), expected) << ToHex(octets);
            ASSERT_EQ(BitConverter::ToUInt16(octets, 0), expected & 0xFFFF) << ToHex(octets);
        }
    }
}
