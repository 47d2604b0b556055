#include "ReadRequests.h"

#include <gtest/gtest.h>

#include "ConfirmedRequest.h"
#include "Hex.h"
#include "PropertyServices.h"

using namespace standard;
using test::ToHex;

TEST(ReadRequests, ReadProperty) {
    EXPECT_EQ(ToHex(requests::ReadProperty(7, {{0, 5}, 85, {}})), "02 75 07 0C 0C 00 00 00 05 19 55");
    EXPECT_EQ(ToHex(requests::ReadProperty(255, {{8, 4194303}, 76, 0})),
              "02 75 FF 0C 0C 02 3F FF FF 19 4C 29 00");
    EXPECT_EQ(ToHex(requests::ReadProperty(0, {{0, 1}, 512, 300})),
              "02 75 00 0C 0C 00 00 00 01 1A 02 00 2A 01 2C");
}

TEST(ReadRequests, ReadPropertyMultipleNamesAnObjectOnce) {
    std::vector<PropertyReference> const references{
        {{0, 5}, 85, {}}, {{0, 5}, 87, 16}, {{2, 1}, 85, {}}, {{0, 5}, 111, {}}};
    Octets const apdu = requests::ReadPropertyMultiple(1, references);
    EXPECT_EQ(ToHex(apdu),
              "02 75 01 0E 0C 00 00 00 05 1E 09 55 09 57 19 10 1F 0C 00 80 00 01 1E 09 55 1F "
              "0C 00 00 00 05 1E 09 6F 1F");
    EXPECT_EQ(requests::SizeOfReadPropertyMultiple(references), apdu.size());
    EXPECT_EQ(parameters::OfReadPropertyMultiple(apdu, 4), references);
}

TEST(ReadRequests, StateWhatTheClientAccepts) {
    auto const request = ConfirmedRequest::Decode(requests::ReadProperty(7, {{0, 5}, 85, {}}));
    ASSERT_TRUE(request);
    EXPECT_FALSE(request->isSegmented);
    EXPECT_TRUE(request->acceptsSegments);
    EXPECT_EQ(request->maxSegments, 0u);
    EXPECT_EQ(request->maxApduLength, 1476u);
    EXPECT_EQ(request->invokeId, 7);
}

TEST(ReadRequests, SegmentAckAndAbort) {
    EXPECT_EQ(ToHex(requests::SegmentAck(7, 3, 16, false)), "40 07 03 10");
    EXPECT_EQ(ToHex(requests::SegmentAck(7, 255, 1, true)), "42 07 FF 01");
    EXPECT_EQ(ToHex(requests::Abort(7, AbortReason::BufferOverflow)), "70 07 01");
}
