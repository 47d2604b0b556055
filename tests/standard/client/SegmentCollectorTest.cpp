#include "SegmentCollector.h"

#include <gtest/gtest.h>

#include "Hex.h"

using namespace standard;

namespace {

// A device with an answer of `count` segments, each of which has its number as its only octet.
struct Segments {
    explicit Segments(std::size_t segmentCount, std::uint8_t proposedWindow = 4, std::uint8_t largest = 16,
                      std::size_t longest = 10000)
        : count(segmentCount), window(proposedWindow), collector(largest, longest) {}

    // "ack N of W", "nak N of W" or "".
    std::string Take(std::size_t number) {
        Octets const apdu{static_cast<char>(number + 1 < count ? 0x3C : 0x38),
                          1,
                          static_cast<char>(number),
                          static_cast<char>(window),
                          14,
                          static_cast<char>(number)};
        auto const ack = collector.Take(*AnswerPdu::Decode(apdu), apdu);
        return ack ? (ack->isNegative ? "nak " : "ack ") + std::to_string(ack->sequenceNumber) + " of " +
                         std::to_string(ack->windowSize)
                   : "";
    }

    std::size_t count;
    std::uint8_t window;
    SegmentCollector collector;
};

}  // namespace

TEST(SegmentCollector, TheFirstSegmentIsAcknowledgedThenEachWindow) {
    Segments segments(8, 3);
    EXPECT_EQ(segments.Take(0), "ack 0 of 3");
    EXPECT_EQ(segments.Take(1), "");
    EXPECT_EQ(segments.Take(2), "");
    EXPECT_EQ(segments.Take(3), "ack 3 of 3");
    EXPECT_EQ(segments.Take(4), "");
    EXPECT_EQ(segments.Take(5), "");
    EXPECT_EQ(segments.Take(6), "ack 6 of 3");
    EXPECT_FALSE(segments.collector.IsComplete());
    EXPECT_EQ(segments.Take(7), "ack 7 of 3");
    EXPECT_TRUE(segments.collector.IsComplete());
    EXPECT_EQ(test::ToHex(segments.collector.Content()), "00 01 02 03 04 05 06 07");
    EXPECT_EQ(segments.collector.Count(), 8u);
}

TEST(SegmentCollector, TheWindowIsTheSmallerOfBoth) {
    EXPECT_EQ(Segments(3, 20, 16).Take(0), "ack 0 of 16");
    EXPECT_EQ(Segments(3, 16, 20).Take(0), "ack 0 of 16");
    EXPECT_EQ(Segments(3, 0, 16).Take(0), "ack 0 of 1");
    EXPECT_EQ(Segments(3, 255, 127).Take(0), "ack 0 of 127");
}

TEST(SegmentCollector, AnAnswerOfOneSegmentIsComplete) {
    Segments segments(1);
    EXPECT_EQ(segments.Take(0), "ack 0 of 4");
    EXPECT_TRUE(segments.collector.IsComplete());
}

TEST(SegmentCollector, AGapIsReportedOnce) {
    Segments segments(8);
    segments.Take(0);
    EXPECT_EQ(segments.Take(1), "");
    EXPECT_EQ(segments.Take(3), "nak 1 of 4");
    EXPECT_EQ(segments.Take(4), "");
    EXPECT_EQ(segments.collector.Gaps(), 2u);
    EXPECT_EQ(segments.Take(2), "");
    EXPECT_EQ(segments.Take(3), "");
    EXPECT_EQ(segments.Take(4), "");
    EXPECT_EQ(segments.Take(5), "ack 5 of 4");
}

TEST(SegmentCollector, AGapThatIsRepeatedIsReportedAgain) {
    Segments segments(8);
    segments.Take(0);
    EXPECT_EQ(segments.Take(2), "nak 0 of 4");
    EXPECT_EQ(segments.Take(3), "");
    EXPECT_EQ(segments.Take(2), "nak 0 of 4");
    EXPECT_EQ(segments.Take(1), "");
}

TEST(SegmentCollector, EachGapIsReported) {
    Segments segments(8);
    segments.Take(0);
    EXPECT_EQ(segments.Take(2), "nak 0 of 4");
    EXPECT_EQ(segments.Take(1), "");
    EXPECT_EQ(segments.Take(3), "nak 1 of 4");
}

TEST(SegmentCollector, ARepeatedSegmentOfTheWindowIsDropped) {
    Segments segments(4);
    segments.Take(0);
    segments.Take(1);
    EXPECT_EQ(segments.Take(1), "");
    EXPECT_EQ(segments.collector.Repeated(), 1u);
    EXPECT_EQ(segments.Take(2), "");
    EXPECT_EQ(segments.Take(3), "ack 3 of 4");
    EXPECT_EQ(test::ToHex(segments.collector.Content()), "00 01 02 03");
}

TEST(SegmentCollector, AWindowThatIsRepeatedLostItsAck) {
    Segments segments(9, 2);
    segments.Take(0);
    segments.Take(1);
    EXPECT_EQ(segments.Take(2), "ack 2 of 2");
    EXPECT_EQ(segments.Take(1), "nak 2 of 2");
    EXPECT_EQ(segments.Take(2), "");
    EXPECT_EQ(segments.Take(3), "");
    EXPECT_EQ(segments.Take(4), "ack 4 of 2");
}

TEST(SegmentCollector, ReorderedSegmentsAreRequestedAgain) {
    Segments segments(5, 4);
    segments.Take(0);
    EXPECT_EQ(segments.Take(2), "nak 0 of 4");
    EXPECT_EQ(segments.Take(1), "");
    EXPECT_EQ(segments.Take(2), "");
    EXPECT_EQ(segments.Take(3), "");
    EXPECT_EQ(segments.Take(4), "ack 4 of 4");
    EXPECT_TRUE(segments.collector.IsComplete());
}

TEST(SegmentCollector, NothingBeginsInTheMiddle) {
    Segments segments(5);
    EXPECT_EQ(segments.Take(1), "");
    EXPECT_EQ(segments.Take(4), "");
    EXPECT_EQ(segments.collector.Count(), 0u);
    EXPECT_EQ(segments.Take(0), "ack 0 of 4");
}

TEST(SegmentCollector, SequenceNumbersWrap) {
    for (int const window : {1, 3, 16, 127}) {
        Segments segments(1000, static_cast<std::uint8_t>(window), 127);
        std::size_t acks = 0;
        for (std::size_t i = 0; i < 1000; ++i) {
            std::string const ack = segments.Take(i);
            acks += ack.empty() ? 0 : 1;
            EXPECT_NE(ack.substr(0, 3), "nak") << i;
        }
        EXPECT_TRUE(segments.collector.IsComplete());
        EXPECT_EQ(segments.collector.Content().size(), 1000u);
        EXPECT_EQ(acks, 1 + (999 + window - 1) / static_cast<std::size_t>(window)) << window;
    }
}

TEST(SegmentCollector, TheAnswerIsBounded) {
    Segments segments(100, 4, 16, 10);
    for (std::size_t i = 0; i < 10; ++i) {
        segments.Take(i);
        EXPECT_FALSE(segments.collector.IsTooLong());
    }
    segments.Take(10);
    EXPECT_TRUE(segments.collector.IsTooLong());
    EXPECT_FALSE(segments.collector.IsComplete());
    EXPECT_EQ(segments.collector.Content().size(), 10u);
}
