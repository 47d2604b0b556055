#include "ConfirmedRequestPdu.h"

#include <gtest/gtest.h>

#include <functional>
#include <typeinfo>

#include "Apdu.h"
#include "ReadPropertyRequest.h"

using test::operator+;
using test::ForgedPdu;
using test::Hex;
using test::ParseAs;
using test::StubRequest;
using test::ToHex;

namespace {

using Choice = ConfirmedServiceChoiceEnum;
using MaxSegments = MaxSegmentsAcceptedEnum;
using MaxApdu = MaxApduLengthAcceptedEnum;

ConfirmedRequestPdu ReadRequest(char invokeId, std::string_view payload) {
    return ConfirmedRequestPdu(invokeId, Choice::ReadPropertyMultiple, true, MaxSegments::MoreThan64,
                               MaxApdu::Octets1024, new StubRequest(payload));
}

}  // namespace

TEST(ConfirmedRequestPdu, ReadRequestWithInvokeId9Starts02_74_09_0E) {
    EXPECT_EQ(ToHex(ReadRequest(9, "AA BB").GetBytes()), "02 74 09 0E AA BB");
}

TEST(ConfirmedRequestPdu, WriteRequestWithInvokeId9Starts00_04_09_0F) {
    ConfirmedRequestPdu const pdu(9, Choice::WriteProperty, false, MaxSegments::Unspecified,
                                  MaxApdu::Octets1024, std::make_unique<StubRequest>("AA"));
    EXPECT_EQ(ToHex(pdu.GetBytes()), "00 04 09 0F AA");
}

TEST(ConfirmedRequestPdu, SegmentedMessageWritesSequenceNumberAndWindowAfterTheInvokeId) {
    ConfirmedRequestPdu pdu = ReadRequest(9, "AA");
    pdu.SetSegmentedMessage(true);
    pdu.SetSequenceNumber(3);
    pdu.SetProposedWindowSize(static_cast<char>(0xF0));
    EXPECT_EQ(ToHex(pdu.GetBytes()), "0A 74 09 03 F0 0E AA");
    pdu.SetMoreFollows(true);
    EXPECT_EQ(ToHex(pdu.GetBytes()), "0E 74 09 03 F0 0E AA");
}

TEST(ConfirmedRequestPdu, MoreFollowsIsWrittenWithoutSegmentedMessageToo) {
    ConfirmedRequestPdu pdu = ReadRequest(9, "AA");
    pdu.SetMoreFollows(true);
    EXPECT_EQ(ToHex(pdu.GetBytes()), "06 74 09 0E AA");
}

TEST(ConfirmedRequestPdu, DifferentPayloadsWithTheSameHeaderFieldsCompareEqual) {
    ConfirmedRequestPdu one = ReadRequest(9, "AA");
    ConfirmedRequestPdu another = ReadRequest(9, "BB BB");
    EXPECT_TRUE(one == another);
    EXPECT_FALSE(one.Equals(one));
}

TEST(ConfirmedRequestPdu, DefaultHas1476OctetsAndNoServiceRequest) {
    ConfirmedRequestPdu const pdu;
    EXPECT_EQ(ToHex(pdu.GetBytes()), "00 05 00 0C");
    EXPECT_EQ(pdu.GetServiceRequest(), nullptr);
    EXPECT_EQ(pdu.GetMaxSegmentsAccepted(), MaxSegments::Unspecified);
    EXPECT_EQ(pdu.GetMaxApduLengthAccepted(), MaxApdu::Octets1476);
    EXPECT_FALSE(pdu.GetSegmentedResponseAccepted());
}

TEST(ConfirmedRequestPdu, HeaderKeepsThreeBitsOfMaxSegmentsAndFourOfMaxApdu) {
    ConfirmedRequestPdu pdu;
    pdu.SetMaxSegmentsAccepted(static_cast<MaxSegments>(15));
    pdu.SetMaxApduLengthAccepted(static_cast<MaxApdu>(0x1F));
    EXPECT_EQ(ToHex(pdu.GetHeader()), "00 7F");
}

TEST(ConfirmedRequestPdu, OwnsItsServiceRequest) {
    int destroyed = 0;
    {
        auto* const request = new StubRequest("", &destroyed);
        ConfirmedRequestPdu const pdu(1, Choice::ReadProperty, false, MaxSegments::Unspecified,
                                      MaxApdu::Octets50, request);
        EXPECT_EQ(pdu.GetServiceRequest(), request);
        EXPECT_EQ(destroyed, 0);
    }
    EXPECT_EQ(destroyed, 1);
}

// From the last field to the first: each one reverses the result that the later fields gave.
TEST(ConfirmedRequestPdu, ComparesTheFieldsInTheirOrderBySubtraction) {
    using Setter = std::function<void(ConfirmedRequestPdu&, int)>;
    struct Row {
        Setter set;
        int larger;
    };
    Row const rows[] = {
        {[](auto& p, int v) { p.SetSegmentedMessage(v != 0); }, 1},
        {[](auto& p, int v) { p.SetMoreFollows(v != 0); }, 1},
        {[](auto& p, int v) { p.SetInvokeId(static_cast<char>(v)); }, 0xF0},
        {[](auto& p, int v) { p.SetSequenceNumber(static_cast<char>(v)); }, 0xF1},
        {[](auto& p, int v) { p.SetProposedWindowSize(static_cast<char>(v)); }, 0xF2},
        {[](auto& p, int v) { p.SetServiceChoice(static_cast<Choice>(v)); }, 0xF3},
        {[](auto& p, int v) { p.SetMaxSegmentsAccepted(static_cast<MaxSegments>(v)); }, 15},
        {[](auto& p, int v) { p.SetMaxApduLengthAccepted(static_cast<MaxApdu>(v)); }, 14},
        {[](auto& p, int v) { p.SetSegmentedResponseAccepted(v != 0); }, 1},
    };
    ConfirmedRequestPdu left;
    ConfirmedRequestPdu right;
    for (Row const& row : rows) {
        row.set(left, 0);
        row.set(right, 0);
    }
    EXPECT_TRUE(left == right);
    for (int i = static_cast<int>(std::size(rows)) - 1; i >= 0; --i) {
        SCOPED_TRACE(i);
        ConfirmedRequestPdu& greater = i % 2 == 0 ? left : right;
        ConfirmedRequestPdu& lesser = i % 2 == 0 ? right : left;
        rows[i].set(greater, rows[i].larger);
        EXPECT_EQ(greater.Compare(lesser), rows[i].larger);
        EXPECT_EQ(lesser.Compare(greater), -rows[i].larger);
    }
}

TEST(ConfirmedRequestPdu, CompareWithAnotherClassOfTheSameTypeThrowsBadCast) {
    ConfirmedRequestPdu pdu;
    ForgedPdu forged(PduTypeEnum::ConfirmedRequest);
    ForgedPdu abort(PduTypeEnum::Abort);
    EXPECT_THROW(pdu.Compare(forged), std::bad_cast);
    EXPECT_EQ(pdu.Compare(abort), -7);
}

TEST(ConfirmedRequestParser, ParsedRequestHasMaxSegmentsAndMaxApduOfItsSecondOctet) {
    auto const pdu = ParseAs<ConfirmedRequestPdu>("02 74 09 0C 0C 00 00 00 01 19 55");
    EXPECT_EQ(pdu->GetMaxSegmentsAccepted(), MaxSegments::MoreThan64);
    EXPECT_EQ(pdu->GetMaxApduLengthAccepted(), MaxApdu::Octets1024);
    auto const wide = ParseAs<ConfirmedRequestPdu>("02 F4 09 0C 0C 00 00 00 01 19 55");
    EXPECT_EQ(static_cast<int>(wide->GetMaxSegmentsAccepted()), 15);
    EXPECT_EQ(wide->GetMaxApduLengthAccepted(), MaxApdu::Octets1024);
}

TEST(ConfirmedRequestParser, ReadsHeaderFieldsAndServiceRequest) {
    auto const pdu = ParseAs<ConfirmedRequestPdu>("02 05 FE 0C 0C 02 00 04 D2 19 4D");
    EXPECT_FALSE(pdu->GetSegmentedMessage());
    EXPECT_FALSE(pdu->GetMoreFollows());
    EXPECT_TRUE(pdu->GetSegmentedResponseAccepted());
    EXPECT_EQ(pdu->GetInvokeId(), static_cast<char>(0xFE));
    EXPECT_EQ(pdu->GetServiceChoice(), Choice::ReadProperty);
    auto const& request = dynamic_cast<ReadPropertyRequest&>(*pdu->GetServiceRequest());
    EXPECT_EQ(request.GetObjectId().GetInstanceNumber(), 1234u);
    EXPECT_EQ(ToHex(pdu->GetBytes()), "02 05 FE 0C 0C 02 00 04 D2 19 4D");
}

TEST(ConfirmedRequestParser, SegmentedRequestIsParsedOnAndKeepsItsSegmentFields) {
    auto const pdu = ParseAs<ConfirmedRequestPdu>("0C 74 09 81 04 0C 0C 00 00 00 01 19 55");
    EXPECT_TRUE(pdu->GetSegmentedMessage());
    EXPECT_TRUE(pdu->GetMoreFollows());
    EXPECT_FALSE(pdu->GetSegmentedResponseAccepted());
    EXPECT_EQ(pdu->GetSequenceNumber(), static_cast<char>(0x81));
    EXPECT_EQ(pdu->GetProposedWindowSize(), 4);
    EXPECT_NE(pdu->GetServiceRequest(), nullptr);
}

TEST(ConfirmedRequestParser, EachTruncationIsRefused) {
    test::ExpectEachTruncationRefused("02 74 09 0C 0C 00 00 00 01 19 55");
    test::ExpectEachTruncationRefused("0E 74 09 00 04 0C 0C 00 00 00 01 19 55");
}

TEST(ConfirmedRequestParser, ParsesReadAndWritePropertyAndRefusesServicesWithoutAParser) {
    auto const parsers = ConfirmedRequestParser::GetDefaultRequestParsers();
    EXPECT_EQ(parsers.count(Choice::ReadProperty), 1u);
    EXPECT_EQ(parsers.count(Choice::WriteProperty), 1u);
    EXPECT_EQ(parsers.size(), 2u);
    for (int service = 0; service < 256; ++service) {
        if (service == 12 || service == 15) {
            continue;
        }
        SCOPED_TRACE(service);
        EXPECT_THROW(test::ParseApdu(Hex("02 74 09") + test::Octets{static_cast<char>(service)} +
                                     Hex("0C 00 00 00 01 19 55")),
                     FormatErrorException);
    }
}
