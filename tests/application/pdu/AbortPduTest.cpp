#include "AbortPdu.h"

#include <gtest/gtest.h>

#include <typeinfo>

#include "AbortResponseException.h"
#include "Apdu.h"

using test::ForgedPdu;
using test::Hex;
using test::ParseAs;
using test::ToHex;

TEST(AbortPduParser, FillsOriginalInvokeIdAndReason) {
    FakeStream stream(Hex("05 01"));
    std::unique_ptr<PDU> const pdu = AbortPduParser().Parse(0x70, stream);
    auto const& abort = dynamic_cast<AbortPdu&>(*pdu);
    EXPECT_EQ(abort.GetOriginalInvokeId(), 5);
    EXPECT_EQ(static_cast<int>(abort.GetReason()), 1);
    EXPECT_EQ(abort.GetReason(), AbortReasonEnum::BufferOverflow);
}

TEST(AbortPduParser, LeavesTheWirePairAtZero) {
    auto const abort = ParseAs<AbortPdu>("71 05 04");
    EXPECT_EQ(abort->GetWireInvokeId(), 0);
    EXPECT_EQ(abort->GetWireReason(), AbortReasonEnum::Other);
    EXPECT_EQ(ToHex(abort->GetBytes()), "70 00 00");
}

TEST(AbortPduParser, ReasonIsAnUnsignedOctet) {
    EXPECT_EQ(static_cast<int>(ParseAs<AbortPdu>("70 05 FF")->GetReason()), 255);
}

TEST(AbortPduParser, EachTruncationIsRefused) {
    test::ExpectEachTruncationRefused("70 05 01");
}

TEST(AbortPdu, NeitherConstructorNorSettersChangeTheWirePair) {
    AbortPdu abort(5, AbortReasonEnum::TsmTimeout);
    abort.SetOriginalInvokeId(6);
    abort.SetReason(AbortReasonEnum::ApduTooLong);
    EXPECT_EQ(abort.GetOriginalInvokeId(), 6);
    EXPECT_EQ(abort.GetReason(), AbortReasonEnum::ApduTooLong);
    EXPECT_EQ(ToHex(abort.GetBytes()), "70 00 00");
}

TEST(AbortPdu, ComparesEqualToAnythingAndEqualsComparesContents) {
    AbortPdu one(5, AbortReasonEnum::Other);
    AbortPdu same(5, AbortReasonEnum::Other);
    AbortPdu otherId(6, AbortReasonEnum::Other);
    AbortPdu otherReason(5, AbortReasonEnum::TsmTimeout);
    ForgedPdu reject(PduTypeEnum::Reject);
    EXPECT_TRUE(one == otherId);
    EXPECT_TRUE(one == reject);
    EXPECT_TRUE(one.Equals(same));
    EXPECT_FALSE(one.Equals(otherId));
    EXPECT_FALSE(one.Equals(otherReason));
}

TEST(AbortPdu, EqualsOfAPduIsTrueForItselfAndThrowsForAnotherClass) {
    AbortPdu one(5, AbortReasonEnum::Other);
    AbortPdu otherId(6, AbortReasonEnum::Other);
    ForgedPdu forged(PduTypeEnum::Abort);
    PDU& base = one;
    EXPECT_TRUE(base.Equals(one));
    EXPECT_FALSE(base.Equals(otherId));
    EXPECT_THROW(base.Equals(forged), std::bad_cast);
}

TEST(AbortPdu, TypedCompareCopiesTheOriginalInvokeIdAndReturnsIt) {
    AbortPdu one(5, AbortReasonEnum::Other);
    AbortPdu other(static_cast<char>(0xF6), AbortReasonEnum::TsmTimeout);
    EXPECT_EQ(one.Compare(other), 0xF6);
    EXPECT_EQ(one.GetOriginalInvokeId(), static_cast<char>(0xF6));
    EXPECT_EQ(one.GetReason(), AbortReasonEnum::Other);
    EXPECT_EQ(other.GetOriginalInvokeId(), static_cast<char>(0xF6));
}

TEST(AbortPdu, MessagesOfReasons7And8AreTheSameAnd12IsUnknown) {
    EXPECT_EQ(AbortPdu::Message(static_cast<AbortReasonEnum>(7)),
              AbortPdu::Message(static_cast<AbortReasonEnum>(8)));
    EXPECT_EQ(AbortPdu::Message(static_cast<AbortReasonEnum>(12)), "Unknown reason");
}

TEST(AbortPdu, MessageOfEveryReason) {
    char const* const texts[] = {
        "Other",
        "Buffer overflow",
        "Invalid apdu in this state",
        "Preempted by higher priority task",
        "Segmentation not supported",
        "Security error",
        "Insufficient security",
        "Application exceeded reply time",
        "Application exceeded reply time",
        "Out of resources",
        "Tsm timeout",
        "Apdu too long",
    };
    for (int reason = -2; reason < 300; ++reason) {
        bool const known = reason >= 0 && reason < static_cast<int>(std::size(texts));
        EXPECT_EQ(AbortPdu::Message(static_cast<AbortReasonEnum>(reason)),
                  known ? texts[reason] : "Unknown reason")
            << reason;
    }
}

TEST(AbortResponseException, KeepsItsTextAndReason) {
    EXPECT_STREQ(AbortResponseException().what(), "");
    EXPECT_STREQ(AbortResponseException("text").what(), "text");
    EXPECT_EQ(AbortResponseException(std::string("text")).GetReason(), AbortReasonEnum::Other);
    AbortResponseException const whole("text", AbortReasonEnum::TsmTimeout);
    EXPECT_STREQ(whole.what(), "text");
    EXPECT_EQ(whole.GetReason(), AbortReasonEnum::TsmTimeout);
    EXPECT_THROW(throw whole, std::runtime_error);
}
