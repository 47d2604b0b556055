#include "MemoryHistory.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <thread>

#include "Snapshots.h"

using namespace test;
using namespace workbench;

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr long long End = Noon + 1000000 * Second;
constexpr std::size_t All = 1000000;

OpcUa_VariantHlp FloatOf(double value) {
    OpcUa_VariantHlp variant;
    variant.SetFloat(static_cast<float>(value));
    return variant;
}

// One block with the variables "T" and "Name", and its samples in seconds after noon.
class OneTrend : public testing::Test {
protected:
    explicit OneTrend(std::size_t samples = 8) {
        blocks.emplace_back();
        blocks[0].name = "AHU";
        NameRow const* const input = ObjectTypes().FindCode(1);
        NameRow const* const value = Properties().FindCode(0);
        blocks[0].variables = {{"T", DataValueOf(OpcUaType_Float), input, value, 1},
                               {"Name", OpcUaType_String, input, Properties().FindCode(28), 1}};
        history = std::make_unique<MemoryHistory>(blocks, samples * MemoryHistory::OctetsOfSample());
    }

    void AddAt(int second, double value, OpcUa_StatusCode status = OpcUa_Good) {
        BlockSnapshot block;
        block.config = &blocks[0];
        block.time = Noon + second * Second;
        block.isStandby = isStandby;
        OpcUa_VariantHlp text;
        text.SetUTF8String("AI 1");
        block.variables = {{&T(), {FloatOf(value), status, block.time}},
                           {&blocks[0].variables[1], {text, OpcUa_Good, block.time}}};
        if (std::isnan(value)) {
            block.variables[0].state.Value = {};
        }
        history->Add(block);
    }

    VariableConfig const& T() const { return blocks[0].variables[0]; }
    std::vector<Sample> Found(int from, int to, std::size_t most = All) const {
        std::vector<Sample> samples = history->Samples(T(), Noon + from * Second, Noon + to * Second, most);
        for (Sample& sample : samples) {
            sample.time = (sample.time - Noon) / Second;
        }
        return samples;
    }

    std::deque<BlockConfig> blocks;
    std::unique_ptr<MemoryHistory> history;
    bool isStandby = false;
};

using Samples = std::vector<Sample>;
constexpr QualityKind Good = QualityKind::Good;
constexpr QualityKind Bad = QualityKind::Bad;

TEST_F(OneTrend, IsEmptyBeforeTheFirstNumber) {
    EXPECT_EQ(Found(-10, 10), Samples());
    AddAt(0, NaN, OpcUa_BadNoData);
    EXPECT_EQ(Found(-10, 10), Samples());
    EXPECT_EQ(history->Oldest(T()), 0);
}

TEST_F(OneTrend, KeepsChangesAndTheTimeUntilWhichTheLastIsKnown) {
    AddAt(0, 20);
    AddAt(1, 20);
    AddAt(2, 21);
    AddAt(3, 21);
    AddAt(4, 21);
    EXPECT_EQ(Found(-10, 10), (Samples{{0, 20, Good}, {2, 21, Good}, {4, 21, Good}}));
    EXPECT_EQ(history->Oldest(T()), Noon);
}

TEST_F(OneTrend, BeginsWithTheValueInForceAndEndsWithTheSpan) {
    AddAt(0, 20);
    AddAt(5, 21);
    AddAt(9, 22);
    EXPECT_EQ(Found(2, 7), (Samples{{2, 20, Good}, {5, 21, Good}, {7, 21, Good}}));
    EXPECT_EQ(Found(5, 5), (Samples{{5, 21, Good}}));
    EXPECT_EQ(Found(10, 20), Samples()) << "nobody knows the value of that time";
    EXPECT_EQ(Found(-5, -1), Samples());
}

TEST_F(OneTrend, HasAGapWhereTheQualityIsBad) {
    AddAt(0, 20);
    AddAt(1, NaN, OpcUa_Bad);
    AddAt(2, 20);
    EXPECT_EQ(Found(0, 10), (Samples{{0, 20, Good}, {1, NaN, Bad}, {2, 20, Good}}));
}

TEST_F(OneTrend, HasNoMoreDigitsThanAFloat) {
    AddAt(0, 21.1);
    AddAt(1, 0.1);
    AddAt(2, 1e30);
    AddAt(3, std::numeric_limits<double>::infinity());
    EXPECT_EQ(Found(0, 10), (Samples{{0, 21.1, Good},
                                     {1, 0.1, Good},
                                     {2, 1e30, Good},
                                     {3, std::numeric_limits<double>::infinity(), Good}}));
}

TEST_F(OneTrend, HasAGapWhileTheHostIsTheStandby) {
    AddAt(0, 20);
    isStandby = true;
    AddAt(1, 20);
    isStandby = false;
    AddAt(2, 20);
    EXPECT_EQ(Found(0, 10), (Samples{{0, 20, Good}, {1, 20, Bad}, {2, 20, Good}}));
}

TEST_F(OneTrend, KeepsTheNewestOfMoreThanItsRingHas) {
    for (int i = 0; i < 20; ++i) {
        AddAt(i, i);
    }
    Samples const found = Found(0, 100);
    ASSERT_EQ(found.size(), 8u);
    EXPECT_EQ(found.front(), (Sample{12, 12, Good}));
    EXPECT_EQ(found.back(), (Sample{19, 19, Good}));
    EXPECT_EQ(history->Oldest(T()), Noon + 12 * Second);
}

TEST_F(OneTrend, ForgetsWhatComesAfterAClockThatIsSetBack) {
    AddAt(0, 20);
    AddAt(5, 25);
    AddAt(9, 29);
    AddAt(3, 23);
    EXPECT_EQ(Found(-10, 100), (Samples{{0, 20, Good}, {3, 23, Good}}));
}

TEST_F(OneTrend, HasNothingOfTextsAndOfUnknownVariables) {
    AddAt(0, 20);
    VariableConfig const other = T();
    EXPECT_TRUE(history->Samples(blocks[0].variables[1], 0, End, All).empty());
    EXPECT_TRUE(history->Samples(other, 0, End, All).empty());
    EXPECT_EQ(history->Oldest(other), 0);
}

class LongTrend : public OneTrend {
protected:
    LongTrend() : OneTrend(4000) {}
};

TEST_F(LongTrend, KeepsPeaksWhenItIsThinnedOut) {
    for (int i = 0; i < 4000; ++i) {
        AddAt(i, i == 1234 ? 99 : i == 2345 ? -99 : i % 2);
    }
    Samples const found = Found(0, 4000, 100);
    EXPECT_LE(found.size(), 100u);
    EXPECT_GE(found.size(), 50u);
    EXPECT_EQ(std::count(found.begin(), found.end(), Sample{1234, 99, Good}), 1);
    EXPECT_EQ(std::count(found.begin(), found.end(), Sample{2345, -99, Good}), 1);
    EXPECT_EQ(found.front().time, 0);
    EXPECT_EQ(found.back().time, 3999);
    EXPECT_TRUE(std::is_sorted(found.begin(), found.end(), [](Sample const& left, Sample const& right) {
        return left.time < right.time;
    }));
}

TEST_F(LongTrend, IsReadWhileCyclesGoOn) {
    std::thread writer([&] {
        for (int i = 0; i < 4000; ++i) {
            AddAt(i, i);
        }
    });
    for (std::size_t count = 0; count < 4000;) {
        Samples const found = Found(-10, 10000);
        ASSERT_GE(found.size(), count);
        count = found.size();
        for (std::size_t i = 0; i < count; ++i) {
            ASSERT_EQ(found[i].value, static_cast<double>(i));
        }
    }
    writer.join();
}

TEST(MemoryHistoryLimits, AreThoseOfTheHeader) {
    std::deque<BlockConfig> blocks(1);
    blocks[0].variables.resize(10000);
    for (VariableConfig& variable : blocks[0].variables) {
        variable.type = OpcUaType_Float;
    }
    EXPECT_EQ(MemoryHistory(blocks).SamplesOfVariable(), 419u);
    blocks[0].variables.resize(64);
    EXPECT_EQ(MemoryHistory(blocks).SamplesOfVariable(), 65536u);
    EXPECT_EQ(64u * 65536u * MemoryHistory::OctetsOfSample(), MemoryHistory::MemoryLimit);
    blocks[0].variables.resize(1);
    EXPECT_EQ(MemoryHistory(blocks).SamplesOfVariable(), 65536u);
}

TEST(Thinned, KeepsGapsAndShortLists) {
    Samples const few = {{0, 1, Good}, {1, NaN, Bad}, {2, 3, Good}};
    EXPECT_EQ(Thinned(few, 4), few);
    Samples gaps;
    for (int i = 0; i < 100; ++i) {
        gaps.push_back({i, NaN, Bad});
    }
    EXPECT_EQ(Thinned(gaps, 4), (Samples{{0, NaN, Bad}, {99, NaN, Bad}}));
}

}  // namespace
