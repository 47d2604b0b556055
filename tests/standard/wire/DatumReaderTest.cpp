#include "DatumReader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "Content.h"
#include "DatumText.h"
#include "Hex.h"

using namespace standard;
using test::Hex;

namespace {

Datum One(char const* tags) {
    auto const values = DatumsOf(Hex(tags));
    if (!values || values->size() != 1) {
        ADD_FAILURE() << tags;
        return {};
    }
    return values->front();
}

void ExpectUnknown(char const* tags, std::uint8_t tag, bool isContext, char const* octets) {
    Datum const datum = One(tags);
    EXPECT_EQ(datum.kind, DatumKind::Unknown) << tags;
    EXPECT_EQ(datum.tag, tag) << tags;
    EXPECT_EQ(datum.isContext, isContext) << tags;
    EXPECT_EQ(test::ToHex(datum.octets), octets) << tags;
}

}  // namespace

TEST(DatumReader, NullAndBoolean) {
    EXPECT_EQ(One("00").kind, DatumKind::Null);
    EXPECT_EQ(One("10").kind, DatumKind::Boolean);
    EXPECT_EQ(One("10").number, 0u);
    EXPECT_EQ(One("11").number, 1u);
}

TEST(DatumReader, UnsignedHasUpTo64Bits) {
    EXPECT_EQ(One("21 C8").number, 200u);
    EXPECT_EQ(One("24 FF FF FF FF").number, 4294967295u);
    EXPECT_EQ(One("25 08 FF FF FF FF FF FF FF FF").number, std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(One("22 00 05").number, 5u);
    ExpectUnknown("25 09 01 02 03 04 05 06 07 08 09", 2, false, "01 02 03 04 05 06 07 08 09");
    ExpectUnknown("20", 2, false, "");
}

TEST(DatumReader, SignedKeepsItsSignInEveryLength) {
    EXPECT_EQ(One("31 C8").Signed(), -56);
    EXPECT_EQ(One("32 00 C8").Signed(), 200);
    EXPECT_EQ(One("31 7F").Signed(), 127);
    for (std::size_t length = 1; length <= 8; ++length) {
        Octets const minusTwo = [&] {
            Octets octets(length, '\xFF');
            octets.back() = '\xFE';
            return octets;
        }();
        Datum const datum = DatumOfContent(3, minusTwo);
        EXPECT_EQ(datum.kind, DatumKind::Signed) << length;
        EXPECT_EQ(datum.Signed(), -2) << length;
        Octets lowest(length, '\0');
        lowest.front() = '\x80';
        std::int64_t const expected =
            length == 8 ? std::numeric_limits<std::int64_t>::min() : -(std::int64_t{1} << (8 * length - 1));
        EXPECT_EQ(DatumOfContent(3, lowest).Signed(), expected) << length;
    }
    ExpectUnknown("30", 3, false, "");
}

TEST(DatumReader, RealAndDouble) {
    EXPECT_EQ(One("44 42 90 00 00").real, 72.0);
    EXPECT_EQ(One("55 08 40 52 00 00 00 00 00 00").real, 72.0);
    EXPECT_TRUE(std::isnan(One("44 7F C0 00 00").real));
    EXPECT_EQ(One("44 FF 80 00 00").real, -std::numeric_limits<double>::infinity());
    EXPECT_EQ(One("44 7F C0 00 00"), One("44 7F C0 00 00"));
    EXPECT_NE(One("44 7F C0 00 00"), One("44 FF C0 00 00"));
    ExpectUnknown("43 42 90 00", 4, false, "42 90 00");
    ExpectUnknown("54 40 52 00 00", 5, false, "40 52 00 00");
}

TEST(DatumReader, OctetsTextsAndBits) {
    EXPECT_EQ(test::ToHex(One("63 00 7F FF").octets), "00 7F FF");
    EXPECT_EQ(One("60").kind, DatumKind::OctetString);
    EXPECT_EQ(One("73 00 41 42").text, "AB");
    EXPECT_EQ(One("75 05 04 00 41 20 AC").text, "A\xE2\x82\xAC");
    ExpectUnknown("73 02 30 21", 7, false, "02 30 21");
    ExpectUnknown("70", 7, false, "");
    EXPECT_EQ(One("82 03 A8").text, "10101");
    EXPECT_EQ(One("81 00").text, "");
    EXPECT_EQ(One("83 07 FF 80").text, "111111111");
    ExpectUnknown("82 08 A8", 8, false, "08 A8");
    ExpectUnknown("81 01", 8, false, "01");
    ExpectUnknown("80", 8, false, "");
}

TEST(DatumReader, EnumeratedDateTimeAndIdentifier) {
    EXPECT_EQ(One("91 3E").kind, DatumKind::Enumerated);
    EXPECT_EQ(One("91 3E").number, 62u);
    EXPECT_EQ(One("A4 7C 03 0F 05").calendar, (CalendarDate{124, 3, 15, 5}));
    EXPECT_EQ(One("A4 FF FF FF FF").calendar, AnyDate);
    EXPECT_EQ(One("B4 0D 1E 0F 32").calendar, (TimeOfDay{13, 30, 15, 50}));
    EXPECT_EQ(One("C4 00 C0 00 0F").Object(), (ObjectId{3, 15}));
    ExpectUnknown("A3 7C 03 0F", 10, false, "7C 03 0F");
    ExpectUnknown("C3 00 C0 00", 12, false, "00 C0 00");
}

TEST(DatumReader, ReservedApplicationTagsAreOctets) {
    ExpectUnknown("D2 01 02", 13, false, "01 02");
    ExpectUnknown("F1 0F 01", 15, false, "01");
}

TEST(DatumReader, ContextTagsAreOctets) {
    ExpectUnknown("09 05", 0, true, "05");
    ExpectUnknown("F9 C8 05", 200, true, "05");
}

TEST(DatumReader, ConstructedValuesAreATree) {
    auto const values = DatumsOf(Hex("0E 21 01 1E 09 05 1F 0F FE 20 FF 20 00"));
    ASSERT_TRUE(values);
    ASSERT_EQ(values->size(), 3u);
    EXPECT_EQ((*values)[0].kind, DatumKind::Constructed);
    EXPECT_EQ((*values)[0].children.size(), 2u);
    EXPECT_EQ((*values)[0].children[1].children[0].octets, Hex("05"));
    EXPECT_EQ((*values)[1].tag, 0x20);
    EXPECT_TRUE((*values)[1].children.empty());
    EXPECT_EQ((*values)[2].kind, DatumKind::Null);
}

TEST(DatumReader, TagsThatDoNotMatchHaveNoValue) {
    EXPECT_FALSE(DatumsOf(Hex("0E")));
    EXPECT_FALSE(DatumsOf(Hex("0F")));
    EXPECT_FALSE(DatumsOf(Hex("0E 1F")));
    EXPECT_FALSE(DatumsOf(Hex("0E 1E 0F 1F")));
    EXPECT_FALSE(DatumsOf(Hex("06")));
    EXPECT_FALSE(DatumsOf(Hex("25")));
    EXPECT_FALSE(DatumsOf(Hex("22 01")));
    EXPECT_FALSE(DatumsOf(Hex("25 FF FF FF FF FF 00")));
    EXPECT_TRUE(DatumsOf({}));
}

TEST(DatumReader, DeepNestingIsKeptAsOctets) {
    constexpr std::size_t depth = 400000;
    Octets octets(depth, '\x0E');
    octets.resize(2 * depth, '\x0F');
    auto const values = DatumsOf(octets);
    ASSERT_TRUE(values);
    Datum const* deepest = &values->front();
    unsigned levels = 1;
    while (deepest->kind == DatumKind::Constructed) {
        ASSERT_EQ(deepest->children.size(), 1u);
        deepest = &deepest->children.front();
        ++levels;
    }
    EXPECT_EQ(levels, Datum::DeepestNesting + 1);
    EXPECT_EQ(deepest->kind, DatumKind::Unknown);
    EXPECT_EQ(deepest->octets.size(), 2 * (depth - levels));
    EXPECT_EQ(values->front(), Datum(values->front()));
    EXPECT_GT(DatumText(values->front()).size(), depth);

    octets.pop_back();
    EXPECT_FALSE(DatumsOf(octets));
    octets.resize(depth);
    EXPECT_FALSE(DatumsOf(octets));
}

TEST(DatumReader, TheNumberOfValuesIsBounded) {
    EXPECT_EQ(DatumsOf(Octets(MostValues, '\0'))->size(), MostValues);
    EXPECT_FALSE(DatumsOf(Octets(MostValues + 1, '\0')));
}

// A value in the fewest octets is the only form of its number.
TEST(DatumReader, ReadsWhatTheWriterWrites) {
    std::mt19937_64 random(20260101);
    for (int i = 0; i < 10000; ++i) {
        std::uint64_t const number = random() >> (random() % 64);
        EXPECT_EQ(DatumOfContent(2, content::UnsignedNumber(number)).number, number);
        auto const signedNumber = static_cast<std::int64_t>(random()) >> (random() % 64);
        EXPECT_EQ(DatumOfContent(3, content::SignedNumber(signedNumber)).Signed(), signedNumber);
    }
}

TEST(DatumReader, RandomOctetsAreAValueOrNone) {
    std::mt19937 random(7);
    std::size_t valid = 0;
    for (int i = 0; i < 10000; ++i) {
        Octets octets(random() % 24);
        for (char& octet : octets) {
            octet = static_cast<char>(random());
        }
        auto const values = DatumsOf(octets);
        valid += values ? 1 : 0;
        for (Datum const& value : values.value_or(std::vector<Datum>())) {
            EXPECT_EQ(value, Datum(value));
            DatumText(value);
        }
    }
    EXPECT_GT(valid, 1000u);
}
