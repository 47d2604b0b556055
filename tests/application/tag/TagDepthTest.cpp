// Values nested too deep for any call stack.
#include <gtest/gtest.h>

#include "ComplexTag.h"
#include "Exceptions.h"
#include "FakeStream.h"
#include "Hex.h"
#include "TagParser.h"

using test::Octets;
using test::operator+;

namespace {

constexpr std::size_t Depth = 1000000;
constexpr char Opening = 0x3E;
constexpr char Closing = 0x3F;

}  // namespace

TEST(TagDepth, AMillionNestedTagsAreReadWrittenAndDestroyed) {
    Octets const octets = Octets(Depth, Opening) + Octets(Depth, Closing);
    FakeStream stream(octets);
    auto tag = TagParser::ReadTag(stream);
    EXPECT_EQ(stream.Available(), 0);
    EXPECT_TRUE(tag->GetBytes() == octets);

    std::size_t depth = 0;
    for (auto const* level = dynamic_cast<ComplexTag*>(tag.get()); level;
         level = level->size() ? dynamic_cast<ComplexTag*>(level->GetSubTag(0)) : nullptr) {
        ++depth;
    }
    EXPECT_EQ(depth, Depth);
    tag.reset();
}

TEST(TagDepth, AMillionOpeningTagsWithoutAnEndAreAWrongLength) {
    FakeStream stream(Octets(Depth, Opening));
    EXPECT_THROW(TagParser::ReadTag(stream), WrongLengthException);
}

TEST(TagDepth, WideAndDeepTreesAreDestroyed) {
    Octets octets;
    for (std::size_t i = 0; i < Depth / 10; ++i) {
        octets.insert(octets.end(), {Opening, 0x21, 0x05, Opening, Closing});
    }
    octets.insert(octets.end(), Depth / 10, Closing);
    FakeStream stream(octets);
    EXPECT_TRUE(TagParser::ReadTag(stream)->GetBytes() == octets);
}
