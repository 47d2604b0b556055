// Properties of the tag coding over seeded random inputs.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "ComplexTag.h"
#include "Exceptions.h"
#include "FakeStream.h"
#include "Hex.h"
#include "Tag.h"
#include "TagParser.h"

using test::Octets;
using test::ToHex;
using test::operator+;

namespace {

Octets RandomOctets(std::mt19937& random, std::size_t size) {
    Octets octets(size);
    for (char& octet : octets) {
        octet = static_cast<char>(random());
    }
    return octets;
}

// A tag that is read as it was written: context numbers up to 6 and lengths of one octet that are not a
// marker.
std::unique_ptr<TagBase> RandomTag(std::mt19937& random, int depth) {
    if (depth > 0 && random() % 3 == 0) {
        auto complex = std::make_unique<ComplexTag>(static_cast<char>(random() % 7), true);
        for (auto left = random() % 5; left > 0; --left) {
            complex->AddSubTag(RandomTag(random, depth - 1));
        }
        return complex;
    }
    auto const data = RandomOctets(random, random() % 8 ? random() % 10 : random() % 254);
    if (random() % 2) {
        return std::make_unique<Tag>(Tag::FromOctets(static_cast<char>(random() % 7), true, data));
    }
    return std::make_unique<Tag>(Tag::FromOctets(static_cast<char>(2 + random() % 13), false, data));
}

// True if writing the tag gives octets that are read as the same tag again.
bool IsReversible(TagBase const& base) {
    auto const number = static_cast<unsigned char>(base.GetTagNumber());
    if (auto const* const complex = dynamic_cast<ComplexTag const*>(&base)) {
        for (int i = 0; i < complex->size(); ++i) {
            if (!IsReversible(*complex->GetSubTag(i))) {
                return false;
            }
        }
        return number <= 6;
    }
    auto const& tag = dynamic_cast<Tag const&>(base);
    int const length = tag.GetAdditionalLength();
    bool const isOctet = length != 254 && length <= 255;
    // A closing tag without an opening one is read as seven octets, which is impossible inside another tag.
    return number <= (tag.GetIsClass() ? 6 : 14) && isOctet && tag.GetValLenType() != 7;
}

}  // namespace

TEST(TagRandom, ReadingWhatWasWrittenGivesTheSameOctets) {
    std::mt19937 random(41);
    for (int i = 0; i < 10000; ++i) {
        auto const octets = RandomTag(random, 4)->GetBytes();
        FakeStream stream(octets);
        auto const tag = TagParser::ReadTag(stream);
        ASSERT_NE(tag, nullptr);
        ASSERT_EQ(stream.Available(), 0) << ToHex(octets);
        ASSERT_EQ(ToHex(tag->GetBytes()), ToHex(octets));
    }
}

TEST(TagRandom, AnyOctetsAreTagsOrAWrongLength) {
    std::mt19937 random(42);
    int reversible = 0;
    int refused = 0;
    for (int i = 0; i < 10000; ++i) {
        auto const octets = RandomOctets(random, 1 + random() % 64);
        FakeStream stream(octets);
        try {
            while (auto const tag = TagParser::ReadTag(stream)) {
                if (!IsReversible(*tag)) {
                    continue;
                }
                auto const written = tag->GetBytes();
                FakeStream again(written);
                ASSERT_EQ(ToHex(TagParser::ReadTag(again)->GetBytes()), ToHex(written));
                ++reversible;
            }
        } catch (WrongLengthException const&) {
            ++refused;
        }
    }
    EXPECT_GT(reversible, 10000);
    EXPECT_GT(refused, 1000);
}

TEST(TagRandom, ReadPrimitiveTagsHaveAsManyOctetsAsTheirLengthSays) {
    std::mt19937 random(43);
    int seen = 0;
    for (int i = 0; i < 10000; ++i) {
        FakeStream stream(RandomOctets(random, 1 + random() % 300));
        try {
            auto const base = TagParser::ReadTag(stream);
            if (auto const* const tag = dynamic_cast<Tag const*>(base.get())) {
                bool const isBoolean = !tag->GetIsClass() && tag->GetTagNumber() == 1;
                int const length =
                    tag->GetAdditionalLength() ? tag->GetAdditionalLength() : tag->GetValLenType();
                ASSERT_EQ(static_cast<int>(tag->data.size()), isBoolean ? 0 : length);
                ++seen;
            }
        } catch (WrongLengthException const&) {
        }
    }
    EXPECT_GT(seen, 5000);
}

TEST(TagRandom, SequencesOfAnyOctetsEnd) {
    std::mt19937 random(44);
    for (int i = 0; i < 10000; ++i) {
        auto const octets = RandomOctets(random, random() % 64);
        int const count = static_cast<int>(random() % 20) - 2;
        FakeStream numbered(octets);
        FakeStream placed(octets);
        try {
            auto const tags = TagParser::ReadSequence(numbered, count);
            for (auto const& [number, tag] : tags) {
                ASSERT_EQ(tag->GetTagNumber(), number);
            }
            ASSERT_EQ(TagParser::ReadAppSequence(placed, count).size(),
                      static_cast<std::size_t>(std::max(count, 0)));
        } catch (WrongLengthException const&) {
        }
    }
}
