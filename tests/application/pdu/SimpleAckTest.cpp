#include "SimpleAck.h"

#include <gtest/gtest.h>

#include <typeinfo>

#include "Apdu.h"

using test::ForgedPdu;
using test::ParseAs;
using test::ToHex;

namespace {

using Choice = ConfirmedServiceChoiceEnum;

}  // namespace

TEST(SimpleAck, IsThreeOctets) {
    EXPECT_EQ(ToHex(SimpleAck(9, Choice::WriteProperty).GetBytes()), "20 09 0F");
    EXPECT_EQ(ToHex(SimpleAck(static_cast<char>(0xFF), static_cast<Choice>(0x80)).GetBytes()), "20 FF 80");
}

TEST(SimpleAck, DefaultIsAllZero) {
    EXPECT_EQ(ToHex(SimpleAck().GetBytes()), "20 00 00");
}

TEST(SimpleAck, OperatorEqualOfEqualFieldsIsTrueAndEqualsFalse) {
    SimpleAck one(9, Choice::WriteProperty);
    SimpleAck another(9, Choice::WriteProperty);
    EXPECT_TRUE(one == another);
    EXPECT_FALSE(one.Equals(another));
    EXPECT_FALSE(one.Equals(one));
}

TEST(SimpleAck, ComparesTheInvokeIdAsAnUnsignedOctetThenTheChoice) {
    SimpleAck low(1, Choice::WriteProperty);
    SimpleAck high(static_cast<char>(0x80), Choice::ReadProperty);
    SimpleAck lowRead(1, Choice::ReadProperty);
    EXPECT_EQ(low.Compare(high), 1 - 0x80);
    EXPECT_EQ(low.Compare(lowRead), 3);
    PDU& asPdu = high;
    EXPECT_EQ(low.Compare(asPdu), 1 - 0x80);
}

TEST(SimpleAck, CompareWithAnotherClassOfTheSameTypeThrowsBadCast) {
    SimpleAck ack;
    ForgedPdu forged(PduTypeEnum::SimpleAck);
    ForgedPdu reject(PduTypeEnum::Reject);
    EXPECT_THROW(ack.Compare(forged), std::bad_cast);
    EXPECT_EQ(ack.Compare(reject), -4);
}

TEST(SimpleAckParser, AckOfAWriteHasInvokeId9AndService15) {
    auto const ack = ParseAs<SimpleAck>("20 09 0F");
    EXPECT_EQ(ack->GetInvokeId(), 9);
    EXPECT_EQ(ack->GetServiceAckChoice(), Choice::WriteProperty);
}

TEST(SimpleAckParser, IgnoresTheFlagsOfTheFirstOctet) {
    EXPECT_EQ(ToHex(ParseAs<SimpleAck>("2F FE FD")->GetBytes()), "20 FE FD");
}

TEST(SimpleAckParser, EachTruncationIsRefused) {
    test::ExpectEachTruncationRefused("20 09 0F");
}
