#include "PDU.h"

#include <gtest/gtest.h>

#include "Apdu.h"

using test::ForgedPdu;

TEST(PDU, ComparesTheTypesBySubtraction) {
    ForgedPdu simple(PduTypeEnum::SimpleAck);
    ForgedPdu abort(PduTypeEnum::Abort);
    EXPECT_EQ(simple.Compare(abort), -5);
    EXPECT_EQ(abort.Compare(simple), 5);
    EXPECT_EQ(abort.Compare(abort), 0);
}

TEST(PDU, OperatorEqualAsksTheVirtualCompare) {
    ForgedPdu one(PduTypeEnum::SimpleAck);
    ForgedPdu another(PduTypeEnum::SimpleAck);
    ForgedPdu other(PduTypeEnum::Reject);
    EXPECT_TRUE(one == another);
    EXPECT_FALSE(one == other);
}

TEST(PDU, EqualsIsFalseEvenForTheSameObject) {
    ForgedPdu pdu(PduTypeEnum::SimpleAck);
    EXPECT_FALSE(pdu.Equals(pdu));
}

TEST(PDU, BaseBodyOfGetBytesGivesNoOctets) {
    EXPECT_TRUE(ForgedPdu(PduTypeEnum::Abort).GetBytes().empty());
}
