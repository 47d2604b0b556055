// Answers with as many segments as there are sequence numbers, and with more.

#include "LimitFixture.h"

using namespace test;

namespace {

constexpr long long Wait = 1000;

// A payload of this number of segments of 4 octets: a text that needs all of them.
Octets TextPayload(std::size_t segments) {
    std::size_t const textOctets = 4 * segments - 18;
    Octets text = {0x75, '\xFE', static_cast<char>((textOctets + 1) >> 8), static_cast<char>(textOctets + 1),
                   0};
    for (std::size_t i = 0; i < textOctets; ++i) {
        text.push_back(static_cast<char>('a' + i % 26));
    }
    return ResultsOf(AnalogInput1Octets(), ResultOf(property::Description, text));
}

class TextInSegments : public LimitFixture {
protected:
    void Poll(std::size_t segments) {
        SegmentingDevice device(TextPayload(segments), 4);
        ASSERT_EQ(device.Segments(), segments);
        LineNetwork network([&device](int line, Octets const& request) { return device(line, request); });
        Block block;
        long long const id = block.Add(code::AnalogInput, code::Description, 1, OpcUaType_String);
        block.driver.Inited();
        block.driver.Execute();
        hasFault = block.HasFault();
        text = block.TextOf(id);
        sent = network.TotalSent();
        elapsed = network.Elapsed(0);
    }

    // The value that the complete answer delivers.
    static std::string Whole(std::size_t segments) {
        Octets const payload = TextPayload(segments);
        return std::string(payload.begin() + 14, payload.end() - 2);
    }

    bool hasFault = false;
    std::string text;
    unsigned long sent = 0;
    long long elapsed = 0;
};

TEST_F(TextInSegments, Of255AreJoined) {
    Poll(255);
    EXPECT_FALSE(hasFault);
    EXPECT_EQ(text, Whole(255));
    EXPECT_EQ(sent, 1 + 255u) << "the request and an acknowledgement each";
    EXPECT_EQ(elapsed, Wait) << "the last acknowledgement waits for its whole time";
}

TEST_F(TextInSegments, Of256AreJoined) {
    Poll(256);
    EXPECT_FALSE(hasFault);
    EXPECT_EQ(text, Whole(256));
    EXPECT_EQ(sent, 1 + 256u);
    EXPECT_EQ(elapsed, Wait);
}

// The 257th has the number of the first and replaces it, so the joined octets are not an answer.
TEST_F(TextInSegments, Of257AreReceivedAndNotJoinedToTheAnswer) {
    Poll(257);
    EXPECT_TRUE(hasFault);
    EXPECT_EQ(text, "");
    EXPECT_EQ(sent, 1 + 257u) << "all are acknowledged";
    EXPECT_EQ(elapsed, Wait);
}

TEST_F(TextInSegments, Of1000AreReceivedAndNotJoinedToTheAnswer) {
    Poll(1000);
    EXPECT_TRUE(hasFault);
    EXPECT_EQ(text, "");
    EXPECT_EQ(sent, 1 + 1000u);
    EXPECT_EQ(elapsed, Wait);
}

// A device that sends segments without end occupies its block, but the block's memory does not grow.
class SegmentsWithoutEnd : public LimitFixture {
protected:
    // The most octets held at any time while this number of segments of the largest size arrives.
    static long long PeakOf(std::size_t segments) {
        Octets const part(SegmentingDevice::Room, 0x0E);
        std::size_t next = 0;
        LineNetwork network([&](int, Octets const& request) -> std::vector<LineAnswer> {
            next = IsSegmentAck(request) ? next + 1 : 0;
            if (next >= segments) {
                return {};
            }
            return {{SegmentAnswer(InvokeIdOf(request), next, next + 1 < segments, part)}};
        });
        Block block;
        block.Add(code::AnalogInput, code::PresentValue, 1, OpcUaType_Double);
        block.driver.Inited();
        AllocationWatch const watch;
        block.driver.Execute();
        EXPECT_EQ(network.TotalSent(), segments + 1);
        EXPECT_TRUE(block.HasFault());
        return watch.Peak();
    }
};

TEST_F(SegmentsWithoutEnd, NeedNoMoreMemoryThan256OfThem) {
    long long const of256 = PeakOf(256);
    long long const of20000 = PeakOf(20000);
    EXPECT_LT(of20000, of256 + of256 / 10);
}

TEST_F(SegmentsWithoutEnd, LeaveNothing) {
    PeakOf(1000);  // builds the tables of the first use
    AllocationWatch const watch;
    PeakOf(1000);
    EXPECT_EQ(watch.Growth(), 0);
}

}  // namespace
