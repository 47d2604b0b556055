#include "FormRequest.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "Hex.h"

using namespace dorvel::BACnet;
using test::Hex;
using test::ToHex;

namespace {

// Tags of one object, with the vector of pointers from which the requests are formed.
struct TagList {
    TagList(ObjectTypeEnum type, int number, std::vector<int> const& properties) {
        for (int const property : properties) {
            auto tag = std::make_unique<tagReadData>();
            tag->address = new tagAddress{number, type, static_cast<PropertyIdentifierEnum>(property)};
            pointers.push_back(tag.get());
            owned.push_back(std::move(tag));
        }
    }

    std::vector<std::unique_ptr<tagReadData>> owned;
    std::vector<tagReadData*> pointers;
};

std::string Message(char invokeId, TagList const& tags) {
    return ToHex(FormMessage(invokeId, tags.pointers));
}

TEST(FormMessage, RequestsStatusFlagsToo) {
    TagList const tags(ObjectTypeEnum::Analog_Input, 1, {85});
    EXPECT_EQ(Message(0, tags), "02 74 01 0E 0C 00 00 00 01 1E 09 55 09 6F 1F");
}

TEST(FormMessage, ListWithStatusFlagsGetsNoSecondOnes) {
    TagList const tags(ObjectTypeEnum::Analog_Value, 3, {111, 85});
    EXPECT_EQ(Message(0, tags), "02 74 01 0E 0C 00 80 00 03 1E 09 6F 09 55 1F");
}

TEST(FormMessage, KeepsTheOrderOfConfigurationAndRepetitions) {
    TagList const tags(ObjectTypeEnum::Analog_Input, 1, {85, 28, 85, 81});
    EXPECT_EQ(Message(0, tags), "02 74 01 0E 0C 00 00 00 01 1E 09 55 09 1C 09 55 09 51 09 6F 1F");
}

TEST(FormMessage, InvokeId255WrapsTo0) {
    TagList const tags(ObjectTypeEnum::Analog_Input, 1, {111});
    char invokeId = static_cast<char>(255);
    EXPECT_EQ(ToHex(FormMessage(invokeId, tags.pointers)), "02 74 00 0E 0C 00 00 00 01 1E 09 6F 1F");
    EXPECT_EQ(invokeId, 0);
}

TEST(FormMessage, InvokeId127IsFollowedBy128) {
    TagList const tags(ObjectTypeEnum::Analog_Input, 1, {111});
    char invokeId = 127;
    EXPECT_EQ(ToHex(FormMessage(invokeId, tags.pointers)), "02 74 80 0E 0C 00 00 00 01 1E 09 6F 1F");
}

TEST(FormMessage, PropertyAbove255IsSentCut) {
    TagList const tags(ObjectTypeEnum::Lighting_Output, 1, {384});
    EXPECT_EQ(Message(0, tags), "02 74 01 0E 0C 0D 80 00 01 1E 09 80 09 6F 1F");
}

TEST(FormMessage, NegativeObjectNumberIsSentCutTo22Bits) {
    TagList const tags(ObjectTypeEnum::Analog_Input, -1, {111});
    EXPECT_EQ(Message(0, tags), "02 74 01 0E 0C 00 3F FF FF 1E 09 6F 1F");
}

TEST(FormMessage, FiftyPropertiesFitOneRequest) {
    TagList const tags(ObjectTypeEnum::Analog_Input, 1, std::vector<int>(50, 85));
    std::string expected = "02 74 01 0E 0C 00 00 00 01 1E ";
    for (int property = 0; property < 50; ++property) {
        expected += "09 55 ";
    }
    EXPECT_EQ(Message(0, tags), expected + "09 6F 1F");
}

TEST(FormMessage, WithoutTagsThrows) {
    char invokeId = 0;
    EXPECT_THROW(FormMessage(invokeId, {}), std::out_of_range);
    EXPECT_EQ(invokeId, 0);
}

TEST(FormRequest, ForTheLocalNetworkHasNoDestination) {
    TagList const tags(ObjectTypeEnum::Analog_Input, 1, {85});
    char invokeId = 4;
    auto const request = FormRequest(invokeId, tags.pointers, Hex("C0 A8 0A 07 BA C0"), {Hex("05"), 0});
    EXPECT_EQ(ToHex(request.data), "02 74 05 0E 0C 00 00 00 01 1E 09 55 09 6F 1F");
    EXPECT_EQ(ToHex(request.physicalDestination), "C0 A8 0A 07 BA C0");
    EXPECT_TRUE(request.expectingReply);
    EXPECT_EQ(request.priority, 0u);
    EXPECT_FALSE(request.hasDestination);
    EXPECT_EQ(ToHex(request.destination.bytes), "");
}

TEST(FormRequest, ForARemoteNetworkCarriesTheRemoteAddress) {
    TagList const tags(ObjectTypeEnum::Analog_Input, 1, {85});
    char invokeId = 0;
    auto const request = FormRequest(invokeId, tags.pointers, Hex("C0 A8 0A 01 BA C0"), {Hex("0A 14"), 5});
    EXPECT_TRUE(request.hasDestination);
    EXPECT_EQ(ToHex(request.destination.bytes), "0A 14");
    EXPECT_EQ(request.destination.network, 5);
    EXPECT_EQ(ToHex(request.physicalDestination), "C0 A8 0A 01 BA C0");
}

TEST(FormSegmentAckRequest, CarriesTheInvokeIdOfTheRequestUnchanged) {
    char const invokeId = static_cast<char>(200);
    auto const request = FormSegmentAckRequest(invokeId, static_cast<char>(255), Hex("05"), {});
    EXPECT_EQ(ToHex(request.data), "40 C8 FF 01");
    EXPECT_TRUE(request.expectingReply);
    EXPECT_FALSE(request.hasDestination);
    EXPECT_EQ(ToHex(request.physicalDestination), "05");
}

TEST(FormSegmentAckRequest, ForARemoteNetworkCarriesTheRemoteAddress) {
    auto const request = FormSegmentAckRequest(1, 0, Hex("05"), {Hex("2A"), 7});
    EXPECT_TRUE(request.hasDestination);
    EXPECT_EQ(request.destination.network, 7);
    EXPECT_EQ(ToHex(request.destination.bytes), "2A");
}

}  // namespace
