#include "ComplexAck.h"

#include <gtest/gtest.h>

#include <typeinfo>

#include "Apdu.h"
#include "ReadPropertyMultipleAck.h"

using test::operator+;
using test::ForgedPdu;
using test::Hex;
using test::Octets;
using test::ParseAs;
using test::StubAck;
using test::ToHex;

namespace {

using Choice = ConfirmedServiceChoiceEnum;

ComplexAck AckOf(int order) {
    return ComplexAck(9, Choice::ReadProperty, std::make_unique<StubAck>(order));
}

ComplexAck SegmentOf(std::string_view payload) {
    FakeStream stream(Hex(payload));
    return ComplexAck(9, Choice::ReadPropertyMultiple, true, 0, 4, stream);
}

}  // namespace

TEST(ComplexAck, SegmentReturnsItsOctetsUnchanged) {
    FakeStream more(Hex("0C FF 80"));
    ComplexAck const first(9, Choice::ReadPropertyMultiple, true, 0, 4, more);
    EXPECT_EQ(ToHex(first.GetBytes()), "3C 09 00 04 0E 0C FF 80");
    EXPECT_EQ(more.Available(), 0);
    FakeStream last(Hex("7F"));
    ComplexAck const second(9, Choice::ReadPropertyMultiple, false, 1, 4, last);
    EXPECT_EQ(ToHex(second.GetBytes()), "38 09 01 04 0E 7F");
}

TEST(ComplexAck, SegmentWithItsFlagsClearedIsTheHeaderOfAnUnsegmentedAck) {
    auto const segment = ParseAs<ComplexAck>("3C 09 00 04 0E 0C 00");
    segment->SetSegmentedMessage(false);
    segment->SetMoreFollows(false);
    EXPECT_EQ(ToHex(segment->GetBytes()), "30 09 0E 0C 00");
}

TEST(ComplexAck, UnsegmentedAckWritesItsServiceAck) {
    ComplexAck const ack(9, Choice::ReadProperty, new StubAck(0, "AA BB"));
    EXPECT_EQ(ToHex(ack.GetBytes()), "30 09 0C AA BB");
    EXPECT_FALSE(ack.GetSegmentedMessage());
    EXPECT_TRUE(ack.GetRawPayload().empty());
}

TEST(ComplexAck, DefaultIsAnEmptyAckOfReadProperty) {
    ComplexAck const ack;
    EXPECT_EQ(ToHex(ack.GetBytes()), "30 00 0C");
    EXPECT_EQ(ack.GetServiceAck(), nullptr);
    EXPECT_EQ(ack.PduType(), PduTypeEnum::ComplexAck);
}

TEST(ComplexAck, CopyIsAnEmptyAck) {
    ComplexAck const segment = SegmentOf("AA BB");
    ComplexAck const copy(segment);  // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(ToHex(copy.GetBytes()), "30 00 0C");
    EXPECT_FALSE(copy.GetSegmentedMessage());
}

TEST(ComplexAck, OwnsItsServiceAck) {
    int destroyed = 0;
    {
        auto* const service = new StubAck(0, "", &destroyed);
        ComplexAck const ack(9, Choice::ReadProperty, service);
        EXPECT_EQ(ack.GetServiceAck(), service);
    }
    EXPECT_EQ(destroyed, 1);
}

TEST(ComplexAck, ComparesTheServiceAcksAndNoHeaderField) {
    ComplexAck low = AckOf(2);
    ComplexAck high = AckOf(5);
    ComplexAck otherHeader(77, Choice::ReadPropertyMultiple, std::make_unique<StubAck>(2));
    EXPECT_EQ(low.Compare(high), -3);
    EXPECT_EQ(high.Compare(low), 3);
    EXPECT_TRUE(low == otherHeader);
    EXPECT_FALSE(low.Equals(low));
}

TEST(ComplexAck, SortsAmongOtherPdusByItsType) {
    ComplexAck ack = AckOf(5);
    ForgedPdu simple(PduTypeEnum::SimpleAck);
    ForgedPdu abort(PduTypeEnum::Abort);
    EXPECT_EQ(ack.Compare(simple), 1);
    EXPECT_EQ(ack.Compare(abort), -4);
}

TEST(ComplexAck, SegmentSortsBeforeAnAckWithServiceData) {
    ComplexAck ack = AckOf(0);
    ComplexAck segment = SegmentOf("AA");
    EXPECT_LT(segment.Compare(ack), 0);
    EXPECT_GT(ack.Compare(segment), 0);
}

TEST(ComplexAck, SegmentsCompareByTheirRawPayloads) {
    ComplexAck low = SegmentOf("7F");
    ComplexAck same = SegmentOf("7F");
    ComplexAck high = SegmentOf("80");
    ComplexAck longer = SegmentOf("00 00");
    ComplexAck empty = SegmentOf("");
    EXPECT_TRUE(low == same);
    EXPECT_LT(low.Compare(high), 0);
    EXPECT_GT(longer.Compare(high), 0);
    EXPECT_LT(empty.Compare(low), 0);
    EXPECT_TRUE(empty == empty);
}

TEST(ComplexAck, CompareWithAnotherClassOfTheSameTypeThrowsBadCast) {
    ComplexAck ack = AckOf(0);
    ForgedPdu forged(PduTypeEnum::ComplexAck);
    ComplexAck otherService(9, Choice::ReadPropertyMultiple, std::make_unique<ReadPropertyMultipleAck>());
    EXPECT_THROW(ack.Compare(forged), std::bad_cast);
    EXPECT_THROW(ack.Compare(otherService), std::bad_cast);
}

TEST(ComplexAckParser, SegmentKeepsItsPayloadRaw) {
    auto const ack = ParseAs<ComplexAck>("3C 09 00 04 0E 0C 00 FF");
    EXPECT_TRUE(ack->GetSegmentedMessage());
    EXPECT_TRUE(ack->GetMoreFollows());
    EXPECT_EQ(ack->GetInvokeId(), 9);
    EXPECT_EQ(ack->GetSequenceNumber(), 0);
    EXPECT_EQ(ack->GetProposedWindowSize(), 4);
    EXPECT_EQ(ack->GetServiceChoice(), Choice::ReadPropertyMultiple);
    EXPECT_EQ(ack->GetServiceAck(), nullptr);
    EXPECT_EQ(ToHex(ack->GetRawPayload()), "0C 00 FF");
    EXPECT_FALSE(ParseAs<ComplexAck>("38 09 00 04 0E 0C 00 FF")->GetMoreFollows());
}

TEST(ComplexAckParser, SegmentOfAServiceWithoutAParserIsKeptToo) {
    EXPECT_EQ(ToHex(ParseAs<ComplexAck>("38 FF 80 7F FE")->GetBytes()), "38 FF 80 7F FE");
}

TEST(ComplexAckParser, MoreFollowsWithoutSegmentedMessageIsAnUnsegmentedAck) {
    auto const ack = ParseAs<ComplexAck>("34 09 0E 0C 00 00 00 01 1E 1F");
    EXPECT_FALSE(ack->GetSegmentedMessage());
    EXPECT_FALSE(ack->GetMoreFollows());
    EXPECT_NE(ack->GetServiceAck(), nullptr);
}

TEST(ComplexAckParser, EachTruncationIsRefused) {
    test::ExpectEachTruncationRefused("30 09 0E 0C 00 00 00 01 1E 29 55 4E 44 3F 80 00 00 4F 1F");
    test::ExpectEachTruncationRefused("30 09 0C 0C 00 00 00 01 19 55 3E 44 3F 80 00 00 3F");
    test::ExpectEachTruncationRefused("3C 09 00 04 0E");
}

TEST(ComplexAckParser, ServiceWithoutAParserIsRefused) {
    for (int service = 0; service < 256; ++service) {
        if (service == 12 || service == 14) {
            continue;
        }
        SCOPED_TRACE(service);
        EXPECT_THROW(
            test::ParseApdu(Hex("30 09") + Octets{static_cast<char>(service)} + Hex("0C 00 00 00 01 1E 1F")),
            FormatErrorException);
    }
}

TEST(ComplexAckParser, HasParsersForReadPropertyAndReadPropertyMultiple) {
    auto const parsers = ComplexAckParser::GetDefaultAckParsers();
    EXPECT_EQ(parsers.size(), 2u);
    EXPECT_NE(parsers.at(Choice::ReadProperty), nullptr);
    EXPECT_NE(parsers.at(Choice::ReadPropertyMultiple), nullptr);
}
