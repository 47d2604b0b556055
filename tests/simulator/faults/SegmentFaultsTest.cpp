#include "FaultFixture.h"

// Of an answer in four segments.
using SegmentFaults = test::FaultFixture;

TEST_F(SegmentFaults, ALostOneIsLeftOutAndTheNextComesInItsPlace) {
    add("lost_segment");
    EXPECT_EQ(readLong(), "00+");
    EXPECT_EQ(acknowledge("00"), "02+");
    EXPECT_EQ(acknowledge("02"), "03");
    EXPECT_EQ(acknowledge("03"), "");
}

TEST_F(SegmentFaults, TheFirstOrTheLastOneLost) {
    add("lost_segment segment=0 times=1");
    EXPECT_EQ(readLong(), "01+");
    EXPECT_EQ(acknowledge("01"), "02+");
    add("lost_segment segment=3");
    EXPECT_EQ(readLong(), "00+");
    EXPECT_EQ(acknowledge("00"), "01+");
    EXPECT_EQ(acknowledge("01"), "02+");
    EXPECT_EQ(acknowledge("02"), "");
    EXPECT_EQ(pass(2000), "");
}

TEST_F(SegmentFaults, ALostOneOfAWindowNeverComesHoweverOftenItIsAskedFor) {
    add("lost_segment");
    EXPECT_EQ(readLong(), "00+");
    EXPECT_EQ(acknowledge("00", "03"), "02+ 03");
    EXPECT_EQ(numbers(deliveries("42 07 00 03")), "");
    EXPECT_EQ(pass(2000), "02+ 03");
}

TEST_F(SegmentFaults, OutOfOrder) {
    add("segments_out_of_order");
    EXPECT_EQ(readLong(), "00+");
    EXPECT_EQ(acknowledge("00"), "02+ 01+");
    EXPECT_EQ(acknowledge("02"), "03");
    EXPECT_EQ(acknowledge("01"), "") << "it was acknowledged already";
}

TEST_F(SegmentFaults, OutOfOrderInAWindowAndAtBothEnds) {
    add("segments_out_of_order times=1");
    readLong();
    EXPECT_EQ(acknowledge("00", "03"), "02+ 01+ 03");
    add("segments_out_of_order segment=0 times=1");
    EXPECT_EQ(readLong(), "01+ 00+");
    add("segments_out_of_order segment=3 times=1");
    readLong();
    EXPECT_EQ(acknowledge("00", "03"), "01+ 02+ 03") << "none follows";
}

TEST_F(SegmentFaults, Repeated) {
    add("repeated_segment");
    EXPECT_EQ(readLong(), "00+");
    EXPECT_EQ(acknowledge("00"), "01+ 01+");
    EXPECT_EQ(acknowledge("01"), "02+");
    EXPECT_EQ(acknowledge("01"), "");
}

TEST_F(SegmentFaults, AllAtOnceWithoutWaitingForAnAcknowledgement) {
    add("segments_at_once");
    EXPECT_EQ(readLong(), "00+ 01+ 02+ 03");
    EXPECT_EQ(acknowledge("00"), "");
    EXPECT_EQ(acknowledge("03"), "");
    EXPECT_EQ(pass(2000), "");
    EXPECT_EQ(apdusOf(kRead), kValue) << "an answer in one piece passes untouched";
}

TEST_F(SegmentFaults, EndlessOnesFollowEachAcknowledgement) {
    add("endless_segments");
    EXPECT_EQ(readLong(), "00+");
    for (int i = 0; i < 1000; ++i) {
        auto const number = test::ToHex({static_cast<char>(i)});
        ASSERT_EQ(acknowledge(number), test::ToHex({static_cast<char>(i + 1)}) + "+");
    }
    EXPECT_EQ(acknowledge("FE", "03"), "FF+ 00+ 01+");
    EXPECT_EQ(acknowledge("00", "00"), "01+") << "a window of none counts as one";
    EXPECT_EQ(deliveries("40 07 00 FF").size(), 127u);
    EXPECT_EQ(pass(2000), "") << "none without acknowledgement";
}

TEST_F(SegmentFaults, EndlessOnesCarryWhatTheFirstOneCarried) {
    add("endless_segments seconds=0.9");
    auto const first = sentBehind(11, kReadLong);
    EXPECT_EQ(first.substr(first.size() - 13), " after 900 ms");
    EXPECT_EQ(sentBehind(11, "40 07 00 01"), first);
}

TEST_F(SegmentFaults, EndlessOnesEndWhenTheFaultDoesOrTheClientAborts) {
    add("endless_segments");
    EXPECT_EQ(readLong(), "00+");
    faulty->faults().clear();
    EXPECT_EQ(acknowledge("00"), "");
    add("endless_segments duration=1");
    EXPECT_EQ(readLong(), "00+");
    EXPECT_EQ(acknowledge("00"), "01+");
    pass(1000);
    EXPECT_EQ(acknowledge("01"), "");
    add("endless_segments");
    EXPECT_EQ(readLong(), "00+");
    EXPECT_EQ(sent("70 07 00"), "");
    EXPECT_EQ(acknowledge("00"), "");
    faulty->faults().clear();
    add("endless_segments count=3");
    EXPECT_EQ(readLong(), "00+");
    EXPECT_EQ(acknowledge("00", "10"), "01+ 02+");
    EXPECT_EQ(acknowledge("02"), "");
}

TEST_F(SegmentFaults, EndlessOnesOnceLastForThatAnswerOnly) {
    add("endless_segments times=1");
    EXPECT_EQ(readLong(), "00+");
    EXPECT_EQ(acknowledge("00"), "01+");
    EXPECT_EQ(sent(kRead), whole(kValue));
    EXPECT_EQ(acknowledge("01"), "02+");
    EXPECT_EQ(readLong(), "00+") << "a new request of the same invoke id";
    EXPECT_EQ(acknowledge("02"), "");
    EXPECT_EQ(acknowledge("00", "03"), "01+ 02+ 03");
}

TEST_F(SegmentFaults, OversizedOnesAreLongerByThatAndJoinToTheWholeAll) {
    add("oversized_segments octets=3");
    auto const first = deliveries(kReadLong);
    ASSERT_EQ(first.size(), 1u);
    EXPECT_EQ(first[0].datagram.octets.size(), 6u + 53);
    auto const rest = deliveries("40 07 00 03");
    ASSERT_EQ(rest.size(), 2u);
    EXPECT_EQ(rest[0].datagram.octets.size(), 6u + 53);
    EXPECT_EQ(rest[1].datagram.octets.size(), 6u + 5 + 137 - 2 * 48);
    EXPECT_EQ(numbers(rest), "01+ 02");
}

TEST_F(SegmentFaults, AnOversizedAnswerCanGoInOneApdu) {
    add("oversized_segments octets=90");
    auto const all = deliveries(kReadLong);
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all[0].datagram.octets.size(), 6u + 3 + 137);
}

TEST_F(SegmentFaults, AFaultOfTheAnswerMeetsAllSegmentsAndTheirRepetition) {
    add("other_address times=1");
    EXPECT_TRUE(deliveries(kReadLong).at(0).fromElsewhere);
    EXPECT_TRUE(deliveries("40 07 00 01").at(0).fromElsewhere);
    now.sinceStart += std::chrono::seconds(2);
    EXPECT_TRUE(faulty->tick(now).at(0).fromElsewhere);
    faulty->faults().clear();
    EXPECT_FALSE(deliveries("40 07 01 01").at(0).fromElsewhere);
}

TEST_F(SegmentFaults, ALossTakesSingleSegmentsAndTheyAreRepeated) {
    add("loss every=2 chance=1 times=1");
    EXPECT_EQ(readLong(), "00+");
    EXPECT_EQ(acknowledge("00"), "");
    EXPECT_EQ(pass(2000), "01+");
    EXPECT_EQ(acknowledge("01"), "02+");
}

TEST_F(SegmentFaults, ARefusalInPlaceOfSegmentsIsAll) {
    for (char const* fault : {"error times=1", "reject times=1", "abort times=1", "silence times=1"}) {
        add(fault);
        EXPECT_LE(deliveries(kReadLong).size(), 1u);
        EXPECT_EQ(pass(2000), "");
        EXPECT_EQ(acknowledge("00"), "");
    }
}

TEST_F(SegmentFaults, AnInsertedPropertyMayMakeTheAnswerLonger) {
    add("unasked_property code=85");
    auto const all = deliveries("02 70 07 0E 0C 0B C0 00 01 1E 09 55 1F");
    ASSERT_EQ(all.size(), 1u);
    int count = 1;
    for (std::string number = "00"; count < 20; ++count) {
        std::string const next = acknowledge(number);
        if (next.size() < 3) {
            break;
        }
        number = next.substr(0, 2);
    }
    EXPECT_EQ(count, 6) << "270 octets in segments of 45";
}

TEST_F(SegmentFaults, ExchangesAreForgottenBeyondTheirNumber) {
    add("endless_segments");
    for (int i = 0; i < 40; ++i) {
        deliveries(kRead, {0x7F000001, static_cast<std::uint16_t>(50000 + i)});
    }
    EXPECT_EQ(numbers(deliveries("40 01 09 01", {0x7F000001, 50039})), "0A+");
    EXPECT_EQ(numbers(deliveries("40 01 09 01", {0x7F000001, 50000})), "") << "the oldest";
}
