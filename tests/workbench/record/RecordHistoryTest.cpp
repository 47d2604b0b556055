#include "RecordHistory.h"

#include <atomic>
#include <cmath>
#include <thread>
#include <utility>

#include "MemoryHistory.h"
#include "RecordFixture.h"

using namespace test;
using namespace workbench;

namespace {

constexpr QualityKind Good = QualityKind::Good;
using Samples = std::vector<Sample>;

// A recording, and a memory of eight samples beside it.
class HistoryTest : public RecordTest {
protected:
    HistoryTest() : memory(blocks, 16 * MemoryHistory::OctetsOfSample()), history(path, blocks, memory) {}

    void Both(double number) {
        Cycle(number);
        BlockSnapshot block = *recorder->Queue().Take(1000).front();
        memory.Add(block);
        recorder->Queue().Add(std::make_shared<BlockSnapshot const>(block));
        recorder->Step();
    }

    VariableConfig const& T() const { return blocks[0].variables[0]; }
    Samples Found(int from, int to, std::size_t most = 100000) const {
        Samples samples = history.Samples(T(), Noon + from * Second, Noon + to * Second, most);
        for (Sample& sample : samples) {
            sample.time = (sample.time - Noon) / Second;
        }
        return samples;
    }

    MemoryHistory memory;
    RecordHistory history;
};

TEST_F(HistoryTest, GoesOnWhereMemoryEnds) {
    Begin();
    for (int i = 0; i < 30; ++i) {
        Both(i);
        Pass(1);
    }
    Samples const found = Found(0, 100);
    ASSERT_EQ(found.size(), 30U);
    for (int i = 0; i < 30; ++i) {
        EXPECT_EQ(found[static_cast<std::size_t>(i)], (Sample{i, static_cast<double>(i), Good}));
    }
    EXPECT_EQ(history.Oldest(T()), Noon);
    EXPECT_EQ(Found(28, 29), (Samples{{28, 28, Good}, {29, 29, Good}}));
}

TEST_F(HistoryTest, ShowsTheRunBefore) {
    Begin();
    for (int i = 0; i < 3; ++i) {
        CycleAndStep(i);
        Pass(1);
    }
    recorder->End();
    Pass(97);
    Begin();
    Both(50);
    Samples const found = Found(-10, 200);
    ASSERT_EQ(found.size(), 5U);
    EXPECT_EQ(found[2], (Sample{2, 2, Good}));
    EXPECT_TRUE(std::isnan(found[3].value));
    EXPECT_EQ(found[4], (Sample{100, 50, Good}));
}

TEST_F(HistoryTest, HasTheSamplesOfMemoryWithoutAFile) {
    Begin();
    Both(1);
    recorder->End();
    std::filesystem::remove(path);
    EXPECT_EQ(Found(-10, 10), (Samples{{0, 1, Good}}));
    EXPECT_EQ(history.Oldest(T()), Noon);
}

TEST_F(HistoryTest, KeepsPeaksOfALongTime) {
    Begin();
    for (int i = 0; i < 90000; ++i) {
        Cycle(i == 12345 ? 99 : i == 54321 ? -99 : i % 2);
        Pass(1);
        if (i % 2000 == 0) {
            recorder->Step();
        }
    }
    recorder->Step();
    Samples const found = Found(0, 90000, 400);
    EXPECT_LE(found.size(), 400U);
    EXPECT_EQ(std::count(found.begin(), found.end(), Sample{12345, 99, Good}), 1);
    EXPECT_EQ(std::count(found.begin(), found.end(), Sample{54321, -99, Good}), 1);
    EXPECT_EQ(found.back().time, 89999);
}

TEST_F(HistoryTest, IsEmptyForTextsAndUnknownVariables) {
    Begin();
    Both(1);
    VariableConfig const other = T();
    EXPECT_TRUE(history.Samples(blocks[0].variables[2], 0, Noon * 2, 100).empty());
    EXPECT_TRUE(history.Samples(other, 0, Noon * 2, 100).empty());
    EXPECT_EQ(history.Oldest(other), 0);
}

TEST_F(HistoryTest, IsReadByThreadsWhileARunRecords) {
    Begin();
    CycleAndStep(0);
    std::atomic<bool> isEnd{false};
    std::atomic<int> readersWithMany{0};
    std::vector<std::thread> readers;
    for (int i = 0; i < 3; ++i) {
        readers.emplace_back([&] {
            for (bool hasMany = false; !isEnd;) {
                if (history.Samples(T(), 0, Noon * 2, 1000).size() >= 50 && !std::exchange(hasMany, true)) {
                    ++readersWithMany;
                }
            }
        });
    }
    for (int i = 1; readersWithMany < 3; ++i) {
        Pass(1);
        CycleAndStep(i);
    }
    history.EndReads();
    history.Close();
    isEnd = true;
    for (std::thread& reader : readers) {
        reader.join();
    }
    recorder->End();
    EXPECT_EQ(TextIn("PRAGMA integrity_check"), "ok");
}

TEST_F(HistoryTest, CutsReadsShortAtTheEndOfARun) {
    Begin();
    for (int i = 0; i < 30; ++i) {
        Both(i);
        Pass(1);
    }
    history.EndReads();
    EXPECT_LT(Found(0, 100).size(), 15U);
}

TEST_F(HistoryTest, IsOnlyMemoryOnceItIsClosed) {
    Begin();
    for (int i = 0; i < 30; ++i) {
        Both(i);
        Pass(1);
    }
    history.Close();
    EXPECT_LT(Found(0, 100).size(), 30U);
}

}  // namespace
