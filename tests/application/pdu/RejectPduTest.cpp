#include "RejectPdu.h"

#include <gtest/gtest.h>

#include <typeinfo>

#include "Apdu.h"
#include "RejectResponseException.h"

using test::ForgedPdu;
using test::ParseAs;
using test::ToHex;

TEST(RejectPdu, DifferentReasonsAreEqualByOperatorAndNotByEquals) {
    RejectPdu one(5, ReasonEnum::InvalidTag);
    RejectPdu other(5, ReasonEnum::TooManyArguments);
    EXPECT_TRUE(one == other);
    EXPECT_FALSE(one.Equals(other));
    EXPECT_EQ(one.Compare(other), 0);
}

TEST(RejectPdu, EqualsComparesContents) {
    RejectPdu one(5, ReasonEnum::InvalidTag);
    RejectPdu same(5, ReasonEnum::InvalidTag);
    RejectPdu otherId(6, ReasonEnum::InvalidTag);
    ForgedPdu forged(PduTypeEnum::Reject);
    PDU& base = one;
    EXPECT_TRUE(one.Equals(same));
    EXPECT_FALSE(one.Equals(otherId));
    EXPECT_TRUE(base.Equals(one));
    EXPECT_FALSE(base.Equals(otherId));
    EXPECT_THROW(base.Equals(forged), std::bad_cast);
    EXPECT_TRUE(base == forged);
}

TEST(RejectPdu, IsThreeOctetsWithTheLowOctetOfTheReason) {
    EXPECT_EQ(ToHex(RejectPdu(static_cast<char>(0xFE), ReasonEnum::UnrecognizedService).GetBytes()),
              "60 FE 09");
    EXPECT_EQ(ToHex(RejectPdu(1, static_cast<ReasonEnum>(0x1FF)).GetBytes()), "60 01 FF");
    EXPECT_EQ(ToHex(RejectPdu().GetBytes()), "60 00 00");
}

TEST(RejectPdu, SettersChangeTheOctets) {
    RejectPdu reject;
    reject.SetOriginalInvokeId(static_cast<char>(0x85));
    reject.SetReason(ReasonEnum::InvalidTag);
    EXPECT_EQ(ToHex(reject.GetBytes()), "60 85 04");
}

TEST(RejectPdu, MessageOfReason9IsUnrecognizedServiceAndOf10Unknown) {
    EXPECT_EQ(RejectPdu::Message(static_cast<ReasonEnum>(9)), "UnrecognizedService");
    EXPECT_EQ(RejectPdu::Message(static_cast<ReasonEnum>(10)), "UnknownReason");
}

TEST(RejectPdu, MessageOfEveryReason) {
    char const* const texts[] = {
        "Other",
        "BufferOverflow",
        "InconsistentParameters",
        "InvalidParameterDataType",
        "InvalidTag",
        "MissingRequiredParameter",
        "ParameterOutOfRange",
        "TooManyArguments",
        "UndefinedEnumeration",
        "UnrecognizedService",
    };
    for (int reason = -2; reason < 300; ++reason) {
        bool const known = reason >= 0 && reason < static_cast<int>(std::size(texts));
        EXPECT_EQ(RejectPdu::Message(static_cast<ReasonEnum>(reason)),
                  known ? texts[reason] : "UnknownReason")
            << reason;
    }
}

TEST(RejectPduParser, ReadsInvokeIdAndReasonAndIgnoresTheFirstOctet) {
    auto const reject = ParseAs<RejectPdu>("6F 85 FF");
    EXPECT_EQ(reject->GetOriginalInvokeId(), static_cast<char>(0x85));
    EXPECT_EQ(static_cast<int>(reject->GetReason()), 255);
    EXPECT_EQ(ToHex(reject->GetBytes()), "60 85 FF");
}

TEST(RejectPduParser, EachTruncationIsRefused) {
    test::ExpectEachTruncationRefused("60 05 01");
}

TEST(RejectResponseException, KeepsItsTextAndReason) {
    EXPECT_STREQ(RejectResponseException().what(), "");
    EXPECT_STREQ(RejectResponseException("text").what(), "text");
    EXPECT_EQ(RejectResponseException(std::string("text")).GetReason(), ReasonEnum::Other);
    RejectResponseException const whole("text", ReasonEnum::InvalidTag);
    EXPECT_STREQ(whole.what(), "text");
    EXPECT_EQ(whole.GetReason(), ReasonEnum::InvalidTag);
    EXPECT_THROW(throw whole, std::runtime_error);
}
