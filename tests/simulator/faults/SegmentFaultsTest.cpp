#include "FaultFixture.h"

// Of an answer in four segments.
using SegmentFaults = test::FaultFixture;

TEST_F(SegmentFaults, ALostOneIsLeftOutAndTheNextComesInItsPlace) {
    Add("lost_segment");
    EXPECT_EQ(RequestLong(), "00+");
    EXPECT_EQ(Acknowledge("00"), "02+");
    EXPECT_EQ(Acknowledge("02"), "03");
    EXPECT_EQ(Acknowledge("03"), "");
}

TEST_F(SegmentFaults, TheFirstOrTheLastOneLost) {
    Add("lost_segment segment=0 times=1");
    EXPECT_EQ(RequestLong(), "01+");
    EXPECT_EQ(Acknowledge("01"), "02+");
    Add("lost_segment segment=3");
    EXPECT_EQ(RequestLong(), "00+");
    EXPECT_EQ(Acknowledge("00"), "01+");
    EXPECT_EQ(Acknowledge("01"), "02+");
    EXPECT_EQ(Acknowledge("02"), "");
    EXPECT_EQ(Pass(2000), "");
}

TEST_F(SegmentFaults, ALostOneOfAWindowNeverComesHoweverOftenItIsAskedFor) {
    Add("lost_segment");
    EXPECT_EQ(RequestLong(), "00+");
    EXPECT_EQ(Acknowledge("00", "03"), "02+ 03");
    EXPECT_EQ(Numbers(Deliveries("42 07 00 03")), "");
    EXPECT_EQ(Pass(2000), "02+ 03");
}

TEST_F(SegmentFaults, OutOfOrder) {
    Add("segments_out_of_order");
    EXPECT_EQ(RequestLong(), "00+");
    EXPECT_EQ(Acknowledge("00"), "02+ 01+");
    EXPECT_EQ(Acknowledge("02"), "03");
    EXPECT_EQ(Acknowledge("01"), "") << "it was acknowledged already";
}

TEST_F(SegmentFaults, OutOfOrderInAWindowAndAtBothEnds) {
    Add("segments_out_of_order times=1");
    RequestLong();
    EXPECT_EQ(Acknowledge("00", "03"), "02+ 01+ 03");
    Add("segments_out_of_order segment=0 times=1");
    EXPECT_EQ(RequestLong(), "01+ 00+");
    Add("segments_out_of_order segment=3 times=1");
    RequestLong();
    EXPECT_EQ(Acknowledge("00", "03"), "01+ 02+ 03") << "none follows";
}

TEST_F(SegmentFaults, Repeated) {
    Add("repeated_segment");
    EXPECT_EQ(RequestLong(), "00+");
    EXPECT_EQ(Acknowledge("00"), "01+ 01+");
    EXPECT_EQ(Acknowledge("01"), "02+");
    EXPECT_EQ(Acknowledge("01"), "");
}

TEST_F(SegmentFaults, AllAtOnceWithoutWaitingForAnAcknowledgement) {
    Add("segments_at_once");
    EXPECT_EQ(RequestLong(), "00+ 01+ 02+ 03");
    EXPECT_EQ(Acknowledge("00"), "");
    EXPECT_EQ(Acknowledge("03"), "");
    EXPECT_EQ(Pass(2000), "");
    EXPECT_EQ(ApdusOf(Read), Value) << "an answer in one piece passes untouched";
}

TEST_F(SegmentFaults, EndlessOnesFollowEachAcknowledgement) {
    Add("endless_segments");
    EXPECT_EQ(RequestLong(), "00+");
    for (int i = 0; i < 1000; ++i) {
        auto const number = test::ToHex({static_cast<char>(i)});
        ASSERT_EQ(Acknowledge(number), test::ToHex({static_cast<char>(i + 1)}) + "+");
    }
    EXPECT_EQ(Acknowledge("FE", "03"), "FF+ 00+ 01+");
    EXPECT_EQ(Acknowledge("00", "00"), "01+") << "a window of none counts as one";
    EXPECT_EQ(Deliveries("40 07 00 FF").size(), 127u);
    EXPECT_EQ(Pass(2000), "") << "none without acknowledgement";
}

TEST_F(SegmentFaults, EndlessOnesCarryWhatTheFirstOneCarried) {
    Add("endless_segments seconds=0.9");
    auto const first = SentBehind(11, ReadLong);
    EXPECT_EQ(first.substr(first.size() - 13), " after 900 ms");
    EXPECT_EQ(SentBehind(11, "40 07 00 01"), first);
}

TEST_F(SegmentFaults, EndlessOnesEndWhenTheFaultDoesOrTheClientAborts) {
    Add("endless_segments");
    EXPECT_EQ(RequestLong(), "00+");
    faulty->GetFaults().Clear();
    EXPECT_EQ(Acknowledge("00"), "");
    Add("endless_segments duration=1");
    EXPECT_EQ(RequestLong(), "00+");
    EXPECT_EQ(Acknowledge("00"), "01+");
    Pass(1000);
    EXPECT_EQ(Acknowledge("01"), "");
    Add("endless_segments");
    EXPECT_EQ(RequestLong(), "00+");
    EXPECT_EQ(Sent("70 07 00"), "");
    EXPECT_EQ(Acknowledge("00"), "");
    faulty->GetFaults().Clear();
    Add("endless_segments count=3");
    EXPECT_EQ(RequestLong(), "00+");
    EXPECT_EQ(Acknowledge("00", "10"), "01+ 02+");
    EXPECT_EQ(Acknowledge("02"), "");
}

TEST_F(SegmentFaults, EndlessOnesOnceLastForThatAnswerOnly) {
    Add("endless_segments times=1");
    EXPECT_EQ(RequestLong(), "00+");
    EXPECT_EQ(Acknowledge("00"), "01+");
    EXPECT_EQ(Sent(Read), Whole(Value));
    EXPECT_EQ(Acknowledge("01"), "02+");
    EXPECT_EQ(RequestLong(), "00+") << "a new request of the same invoke id";
    EXPECT_EQ(Acknowledge("02"), "");
    EXPECT_EQ(Acknowledge("00", "03"), "01+ 02+ 03");
}

TEST_F(SegmentFaults, OversizedOnesAreLongerByThatAndJoinToTheWholeAll) {
    Add("oversized_segments octets=3");
    auto const first = Deliveries(ReadLong);
    ASSERT_EQ(first.size(), 1u);
    EXPECT_EQ(first[0].datagram.octets.size(), 6u + 53);
    auto const rest = Deliveries("40 07 00 03");
    ASSERT_EQ(rest.size(), 2u);
    EXPECT_EQ(rest[0].datagram.octets.size(), 6u + 53);
    EXPECT_EQ(rest[1].datagram.octets.size(), 6u + 5 + 137 - 2 * 48);
    EXPECT_EQ(Numbers(rest), "01+ 02");
}

TEST_F(SegmentFaults, AnOversizedAnswerCanGoInOneApdu) {
    Add("oversized_segments octets=90");
    auto const all = Deliveries(ReadLong);
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all[0].datagram.octets.size(), 6u + 3 + 137);
}

TEST_F(SegmentFaults, AFaultOfTheAnswerMeetsAllSegmentsAndTheirRepetition) {
    Add("other_address times=1");
    EXPECT_TRUE(Deliveries(ReadLong).at(0).fromElsewhere);
    EXPECT_TRUE(Deliveries("40 07 00 01").at(0).fromElsewhere);
    now.sinceStart += std::chrono::seconds(2);
    EXPECT_TRUE(faulty->Tick(now).at(0).fromElsewhere);
    faulty->GetFaults().Clear();
    EXPECT_FALSE(Deliveries("40 07 01 01").at(0).fromElsewhere);
}

TEST_F(SegmentFaults, ALossTakesSingleSegmentsAndTheyAreRepeated) {
    Add("loss every=2 chance=1 times=1");
    EXPECT_EQ(RequestLong(), "00+");
    EXPECT_EQ(Acknowledge("00"), "");
    EXPECT_EQ(Pass(2000), "01+");
    EXPECT_EQ(Acknowledge("01"), "02+");
}

TEST_F(SegmentFaults, AnErrorInPlaceOfSegmentsIsAll) {
    for (char const* fault : {"error times=1", "reject times=1", "abort times=1", "silence times=1"}) {
        Add(fault);
        EXPECT_LE(Deliveries(ReadLong).size(), 1u);
        EXPECT_EQ(Pass(2000), "");
        EXPECT_EQ(Acknowledge("00"), "");
    }
}

TEST_F(SegmentFaults, AnInsertedPropertyMayMakeTheAnswerLonger) {
    Add("unasked_property code=85");
    auto const all = Deliveries("02 70 07 0E 0C 0B C0 00 01 1E 09 55 1F");
    ASSERT_EQ(all.size(), 1u);
    int count = 1;
    for (std::string number = "00"; count < 20; ++count) {
        std::string const next = Acknowledge(number);
        if (next.size() < 3) {
            break;
        }
        number = next.substr(0, 2);
    }
    EXPECT_EQ(count, 6) << "270 octets in segments of 45";
}

TEST_F(SegmentFaults, ExchangesAreForgottenBeyondTheirNumber) {
    Add("endless_segments");
    for (int i = 0; i < 40; ++i) {
        Deliveries(Read, {0x7F000001, static_cast<std::uint16_t>(50000 + i)});
    }
    EXPECT_EQ(Numbers(Deliveries("40 01 09 01", {0x7F000001, 50039})), "0A+");
    EXPECT_EQ(Numbers(Deliveries("40 01 09 01", {0x7F000001, 50000})), "") << "the oldest";
}
