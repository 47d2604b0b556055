#include "AnswerPdu.h"

#include <gtest/gtest.h>

#include "Hex.h"

using namespace standard;
using test::Hex;

namespace {

AnswerPdu Decoded(char const* apdu) {
    auto const answer = AnswerPdu::Decode(Hex(apdu));
    EXPECT_TRUE(answer) << apdu;
    return answer.value_or(AnswerPdu());
}

}  // namespace

TEST(AnswerPdu, SimpleAck) {
    AnswerPdu const answer = Decoded("20 07 0F");
    EXPECT_EQ(answer.kind, AnswerPdu::Kind::SimpleAck);
    EXPECT_EQ(answer.invokeId, 7);
    EXPECT_EQ(answer.serviceChoice, 15);
    EXPECT_FALSE(answer.failure);
}

TEST(AnswerPdu, ComplexAck) {
    AnswerPdu const answer = Decoded("30 FF 0E AA BB");
    EXPECT_EQ(answer.kind, AnswerPdu::Kind::ComplexAck);
    EXPECT_EQ(answer.invokeId, 255);
    EXPECT_EQ(answer.serviceChoice, 14);
    EXPECT_FALSE(answer.isSegmented);
    EXPECT_EQ(answer.contentAt, 3u);
}

TEST(AnswerPdu, SegmentsOfAComplexAck) {
    AnswerPdu const first = Decoded("3C 01 00 10 0E AA");
    EXPECT_TRUE(first.isSegmented);
    EXPECT_TRUE(first.moreFollows);
    EXPECT_EQ(first.sequenceNumber, 0);
    EXPECT_EQ(first.windowSize, 16);
    EXPECT_EQ(first.serviceChoice, 14);
    EXPECT_EQ(first.contentAt, 5u);
    AnswerPdu const last = Decoded("38 01 05 02 0E");
    EXPECT_TRUE(last.isSegmented);
    EXPECT_FALSE(last.moreFollows);
    EXPECT_EQ(last.sequenceNumber, 5);
    EXPECT_EQ(last.contentAt, 5u);
    EXPECT_FALSE(Decoded("34 01 0E").moreFollows);
}

TEST(AnswerPdu, SegmentAck) {
    AnswerPdu const answer = Decoded("43 09 0A 10");
    EXPECT_EQ(answer.kind, AnswerPdu::Kind::SegmentAck);
    EXPECT_EQ(answer.invokeId, 9);
    EXPECT_TRUE(answer.isNegative);
    EXPECT_TRUE(answer.isFromServer);
    EXPECT_EQ(answer.sequenceNumber, 10);
    EXPECT_EQ(answer.windowSize, 16);
    EXPECT_FALSE(Decoded("40 09 0A 10").isNegative);
    EXPECT_FALSE(Decoded("40 09 0A 10").isFromServer);
}

TEST(AnswerPdu, ErrorRejectAndAbort) {
    AnswerPdu const error = Decoded("50 01 0C 91 02 91 20");
    EXPECT_EQ(error.kind, AnswerPdu::Kind::Error);
    EXPECT_EQ(error.serviceChoice, 12);
    EXPECT_EQ(FailureText(*error.failure), "property: unknown-property");
    EXPECT_EQ(FailureText(*Decoded("50 01 0C 91 40 92 03 E7").failure), "class 64: code 999");
    EXPECT_EQ(FailureText(*Decoded("60 02 09").failure), "reject: unrecognized-service");
    EXPECT_EQ(FailureText(*Decoded("71 03 01").failure), "abort: buffer-overflow");
    EXPECT_EQ(Decoded("71 03 C8").failure->code, 200u);
    EXPECT_TRUE(Decoded("71 03 01").isFromServer);
    EXPECT_FALSE(Decoded("70 03 01").isFromServer);
}

// As in the errors of CreateObject and AddListElement.
TEST(AnswerPdu, AnErrorMayBeInATag) {
    EXPECT_EQ(FailureText(*Decoded("50 01 08 0E 91 02 91 25 0F 19 01").failure),
              "property: value-out-of-range");
}

TEST(AnswerPdu, AnErrorWithoutNumbersIsMalformed) {
    for (char const* const apdu :
         {"50 01 0C", "50 01 0C 91", "50 01 0C 91 02", "50 01 0C 21 02 21 20", "50 01 0C 90 91 20",
          "50 01 0C 95 05 01 02 03 04 05 91 20", "50 01 0C 0E"}) {
        EXPECT_EQ(Decoded(apdu).failure->kind, Failure::Kind::Malformed) << apdu;
    }
}

TEST(AnswerPdu, OtherApdusAreNotAnswers) {
    EXPECT_FALSE(AnswerPdu::Decode({}));
    EXPECT_FALSE(AnswerPdu::Decode(Hex("00 75 01 0C 0C 00 00 00 01 19 55")));
    EXPECT_FALSE(AnswerPdu::Decode(Hex("10 08")));
    EXPECT_FALSE(AnswerPdu::Decode(Hex("80 01 02")));
    EXPECT_FALSE(AnswerPdu::Decode(Hex("F0 01 02")));
}

TEST(AnswerPdu, AHeaderThatIsCutOffIsNotAnAnswer) {
    for (char const* const apdu :
         {"20 07 0F", "30 07 0E", "3C 07 00 10 0E", "43 09 0A 10", "50 07 0C", "60 07 09", "71 07 01"}) {
        test::Octets octets = Hex(apdu);
        EXPECT_TRUE(AnswerPdu::Decode(octets));
        while (!octets.empty()) {
            octets.pop_back();
            EXPECT_FALSE(AnswerPdu::Decode(octets)) << apdu << ": " << test::ToHex(octets);
        }
    }
}
