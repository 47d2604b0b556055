// Values nested as deep as a segmented answer allows, read by the whole client on a thread whose stack has
// less than an octet for each level.

#include <random>
#include <utility>

#include "ComplexTag.h"
#include "Exceptions.h"
#include "FakeStream.h"
#include "LimitFixture.h"
#include "SmallStack.h"
#include "TagParser.h"

using namespace test;

namespace {

constexpr char Opening = 0x0E;
constexpr char Closing = 0x0F;

Octets Nested(std::size_t depth, Octets const& inside = {}) {
    return Octets(depth, Opening) + inside + Octets(depth, Closing);
}

// The greatest depth at which all tags are closed.
constexpr std::size_t MostDepth = (SegmentingDevice::MostOctets - 16) / 2;
static_assert(MostDepth > 190000);

class Depth : public LimitFixture {
protected:
    // One cycle of a block with one variable, with a device that answers this.
    void Poll(Octets const& payload, int objectType, int propertyCode) {
        SegmentingDevice device(payload);
        segments = device.Segments();
        LineNetwork network([&device](int line, Octets const& request) { return device(line, request); });
        OnSmallStack([&] {
            Block block;
            id = block.Add(objectType, propertyCode, 1, OpcUaType_String);
            block.driver.Inited();
            block.driver.Execute();
            hasFault = block.HasFault();
            text = block.TextOf(id);
            sent = network.TotalSent();
        });
    }

    std::size_t segments = 0;
    long long id = 0;
    bool hasFault = false;
    std::string text;
    unsigned long sent = 0;
};

TEST_F(Depth, TreeOfAWholeAnswerIsReadWrittenBackAndDestroyed) {
    Octets const octets = Nested(SegmentingDevice::MostOctets / 2);
    OnSmallStack([&octets] {
        FakeStream stream(octets);
        auto tag = TagParser::ReadTag(stream);
        EXPECT_TRUE(tag->GetBytes() == octets);
    });
}

// A device determines when a tree is destroyed. Without memory this must not end the process.
TEST_F(Depth, DestroyingATreeOfAnyShapeNeedsNoMemory) {
    std::mt19937 random(31);
    for (int i = 0; i < 200; ++i) {
        unsigned const opening = 1 + random() % 6, closing = 1 + random() % 6;
        Octets octets{Opening};
        for (std::size_t depth = 1; depth > 0;) {
            unsigned const choice = random() % 12;
            bool const opens = choice < opening && octets.size() < 2000;
            bool const closes = !opens && (choice < opening + closing || octets.size() >= 2000);
            depth += opens ? 1 : 0;
            depth -= closes ? 1 : 0;
            octets = std::move(octets) + (opens    ? Octets{Opening}
                                          : closes ? Octets{Closing}
                                                   : Octets{0x21, 0x05});
        }
        FakeStream stream(octets);
        long long const blocks = HeapBlocks();
        auto tag = TagParser::ReadTag(stream);
        ASSERT_EQ(stream.Available(), 0);
        ASSERT_TRUE(tag->GetBytes() == octets);
        long long const made = HeapTotalsSoFar().allocations;
        tag.reset();
        ASSERT_EQ(HeapTotalsSoFar().allocations, made);
        ASSERT_LE(HeapBlocks(), blocks);
    }
}

TEST_F(Depth, OpeningTagsAloneAreDestroyedWhenTheAnswerEnds) {
    OnSmallStack([] {
        FakeStream stream(Octets(SegmentingDevice::MostOctets, Opening));
        EXPECT_THROW(TagParser::ReadTag(stream), WrongLengthException);
    });
}

TEST_F(Depth, AnswerOfNothingButOpeningTagsIsAFailedAttempt) {
    Poll(Octets(SegmentingDevice::MostOctets, Opening), code::AnalogInput, code::PresentValue);
    EXPECT_EQ(segments, 256u);
    EXPECT_EQ(sent, 1 + 256u);
    EXPECT_TRUE(hasFault);
}

TEST_F(Depth, ValueOfNothingButOpeningTagsIsAFailedAttempt) {
    Octets payload = Hex("0C 00 00 00 01 1E 29 55 4E");
    payload.resize(SegmentingDevice::MostOctets, Opening);
    Poll(payload, code::AnalogInput, code::PresentValue);
    EXPECT_EQ(segments, 256u);
    EXPECT_TRUE(hasFault);
}

TEST_F(Depth, DeepValueWhereANumberIsExpectedIsAFailedAttempt) {
    Poll(ResultsOf(AnalogInput1Octets(), ResultOf(property::PresentValue, Nested(MostDepth))),
         code::AnalogInput, code::PresentValue);
    EXPECT_EQ(segments, 256u);
    EXPECT_TRUE(hasFault);
}

TEST_F(Depth, DeepDayOfAWeeklyScheduleIsAFailedAttempt) {
    Octets const days = Nested(MostDepth - 10) + Octets(6, Opening) + Octets(6, Closing);
    Poll(ResultsOf(Schedule1Octets(), ResultOf(property::WeeklySchedule, days)), code::Schedule,
         code::WeeklySchedule);
    EXPECT_EQ(segments, 256u);
    EXPECT_TRUE(hasFault);
}

// A period of an unknown form has the text "2,,", however deep it is.
TEST_F(Depth, DeepPeriodOfAnExceptionScheduleHasTheTextOfAnUnknownOne) {
    Octets const time = Hex("B4 0C 00 00 00 21 05");
    Octets const event = Nested(MostDepth - 20) + Hex("2E") + time + Hex("2F 39 03");
    Poll(ResultsOf(Schedule1Octets(), ResultOf(property::ExceptionSchedule, event)), code::Schedule,
         code::ExceptionSchedule);
    EXPECT_EQ(segments, 256u);
    EXPECT_FALSE(hasFault);
    EXPECT_EQ(text, "2,,3,12000000,2,1,5;");
}

TEST_F(Depth, MoreSegmentsThanNumbersOfOpeningTagsAreAFailedAttempt) {
    Poll(Octets(1000 * SegmentingDevice::Room, Opening), code::AnalogInput, code::PresentValue);
    EXPECT_EQ(segments, 1000u);
    EXPECT_TRUE(hasFault);
}

TEST_F(Depth, WorkAndMemoryGrowWithTheDepthAndNotFaster) {
    auto const measure = [](std::size_t depth, long long& peak) {
        Octets const octets = Nested(depth);
        AllocationWatch const watch;
        {
            FakeStream stream(octets);
            auto const tag = TagParser::ReadTag(stream);
            EXPECT_EQ(tag->GetBytes().size(), octets.size());
        }
        EXPECT_EQ(watch.Growth(), 0);
        peak = watch.Peak();
        return watch.Made();
    };
    constexpr std::size_t half = SegmentingDevice::MostOctets / 4;
    long long smallPeak = 0;
    long long largePeak = 0;
    HeapTotals const small = measure(half, smallPeak);
    HeapTotals const large = measure(2 * half, largePeak);
    EXPECT_LT(Ratio(large, small), 2.1);
    EXPECT_LT(largePeak, 2.1 * static_cast<double>(smallPeak));
    EXPECT_LT(largePeak / static_cast<long long>(2 * half), 256) << "octets for each level";
}

}  // namespace
