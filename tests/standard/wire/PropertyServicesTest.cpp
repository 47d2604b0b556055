#include "PropertyServices.h"

#include <gtest/gtest.h>

#include <random>

#include "CutOff.h"

using namespace standard;
using test::ExpectNoneWhenCutOff;
using test::Hex;

namespace {

char const* const ReadAck = "0C 00 00 00 05 19 55 3E 44 42 90 00 00 3F";
char const* const MultipleAck =
    "0C 00 00 00 10 1E 29 55 4E 44 42 90 00 00 4F 29 67 5E 91 02 91 20 5F 1F "
    "0C 02 00 00 07 1E 29 4C 39 01 4E C4 02 00 00 07 4F 29 4C 4E 4F 1F";
char const* const WriteRequest = "0C 00 80 00 01 19 55 3E 44 43 34 00 00 3F 49 08";

}  // namespace

TEST(PropertyServices, ReadPropertyRequest) {
    auto const plain = parameters::OfReadProperty(Hex("02 75 01 0C 0C 00 00 00 05 19 55"), 4);
    ASSERT_TRUE(plain);
    EXPECT_EQ(*plain, (PropertyReference{{0, 5}, 85, {}}));
    auto const element = parameters::OfReadProperty(Hex("0C 02 00 00 07 1A 01 00 29 00"));
    ASSERT_TRUE(element);
    EXPECT_EQ(*element, (PropertyReference{{8, 7}, 256, 0}));
    EXPECT_FALSE(parameters::OfReadProperty(Hex("0C 00 00 00 05 19 55 00")));
    EXPECT_FALSE(parameters::OfReadProperty(Hex("00"), 2));
}

TEST(PropertyServices, ReadPropertyMultipleRequest) {
    auto const references = parameters::OfReadPropertyMultiple(
        Hex("0C 00 00 00 05 1E 09 55 09 67 19 02 1F 0C 02 00 00 07 1E 09 08 1F"));
    ASSERT_TRUE(references);
    ASSERT_EQ(references->size(), 3u);
    EXPECT_EQ((*references)[0], (PropertyReference{{0, 5}, 85, {}}));
    EXPECT_EQ((*references)[1], (PropertyReference{{0, 5}, 103, 2}));
    EXPECT_EQ((*references)[2], (PropertyReference{{8, 7}, 8, {}}));
}

TEST(PropertyServices, ReadPropertyAck) {
    auto const result = parameters::OfReadPropertyAck(Hex(ReadAck));
    ASSERT_TRUE(result);
    EXPECT_EQ(result->reference, (PropertyReference{{0, 5}, 85, {}}));
    ASSERT_EQ(result->values.size(), 1u);
    EXPECT_EQ(result->values[0].real, 72.0);
    EXPECT_FALSE(result->failure);
    EXPECT_TRUE(parameters::OfReadPropertyAck(Hex("0C 00 00 00 05 19 55 3E 3F"))->values.empty());
}

TEST(PropertyServices, ReadPropertyMultipleAckHasValuesAndErrors) {
    auto const results = parameters::OfReadPropertyMultipleAck(Hex(MultipleAck));
    ASSERT_TRUE(results);
    ASSERT_EQ(results->size(), 4u);
    EXPECT_EQ((*results)[0].values.at(0).real, 72.0);
    EXPECT_EQ((*results)[1].reference, (PropertyReference{{0, 16}, 103, {}}));
    EXPECT_EQ(FailureText((*results)[1].failure.value()), "property: unknown-property");
    EXPECT_EQ((*results)[2].reference, (PropertyReference{{8, 7}, 76, 1}));
    EXPECT_EQ((*results)[2].values.at(0).Object(), (ObjectId{8, 7}));
    EXPECT_TRUE((*results)[3].values.empty());
    EXPECT_FALSE((*results)[3].failure);
}

TEST(PropertyServices, WriteProperty) {
    auto const written = parameters::OfWriteProperty(Hex(WriteRequest));
    ASSERT_TRUE(written);
    EXPECT_EQ(written->reference, (PropertyReference{{2, 1}, 85, {}}));
    EXPECT_EQ(written->values.at(0).real, 180.0);
    EXPECT_EQ(written->priority, 8u);
    auto const released = parameters::OfWriteProperty(Hex("0C 00 80 00 01 19 57 29 03 3E 00 3F"));
    ASSERT_TRUE(released);
    EXPECT_EQ(released->reference.index, 3u);
    EXPECT_EQ(released->values.at(0).kind, DatumKind::Null);
    EXPECT_FALSE(released->priority);
}

TEST(PropertyServices, ParametersThatAreCutOffAreNone) {
    ExpectNoneWhenCutOff(ReadAck, {}, [](auto const& o) { return parameters::OfReadPropertyAck(o); });
    ExpectNoneWhenCutOff(MultipleAck, {0, 24},
                         [](auto const& o) { return parameters::OfReadPropertyMultipleAck(o); });
    ExpectNoneWhenCutOff(WriteRequest, {14}, [](auto const& o) { return parameters::OfWriteProperty(o); });
    ExpectNoneWhenCutOff("0C 00 00 00 05 19 55 29 01", {7},
                         [](auto const& o) { return parameters::OfReadProperty(o); });
    ExpectNoneWhenCutOff("0C 00 00 00 05 1E 09 55 09 67 19 02 1F", {0},
                         [](auto const& o) { return parameters::OfReadPropertyMultiple(o); });
}

TEST(PropertyServices, WrongTagsAreNone) {
    EXPECT_FALSE(parameters::OfReadPropertyAck(Hex("0C 00 00 00 05 19 55 4E 44 42 90 00 00 4F")));
    EXPECT_FALSE(parameters::OfReadPropertyAck(Hex("0B 00 00 05 19 55 3E 00 3F")));
    EXPECT_FALSE(parameters::OfReadPropertyMultipleAck(Hex("0C 00 00 00 10 1E 29 55 6E 00 6F 1F")));
    EXPECT_FALSE(
        parameters::OfReadPropertyMultipleAck(Hex("0C 00 00 00 10 1E 29 55 5E 91 02 91 20 00 5F 1F")));
    EXPECT_FALSE(parameters::OfReadPropertyMultipleAck(Hex("0C 00 00 00 10 1E 29 55 5E 21 02 91 20 5F 1F")));
}

TEST(PropertyServices, RandomChangesNeverThrow) {
    std::mt19937 random(11);
    for (int i = 0; i < 10000; ++i) {
        test::Octets octets = Hex(i % 2 == 0 ? MultipleAck : WriteRequest);
        octets[random() % octets.size()] = static_cast<char>(random());
        octets[random() % octets.size()] = static_cast<char>(random());
        EXPECT_NO_THROW({
            parameters::OfReadProperty(octets);
            parameters::OfReadPropertyMultiple(octets);
            parameters::OfReadPropertyAck(octets);
            parameters::OfReadPropertyMultipleAck(octets);
            parameters::OfWriteProperty(octets);
        });
    }
}
