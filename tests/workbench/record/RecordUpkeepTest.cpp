#include "RecordUpkeep.h"

#include "RecordFixture.h"

using namespace test;
using namespace workbench;

namespace {

using UpkeepTest = RecordTest;

TEST_F(UpkeepTest, CollectsTheValuesOfEachVariable) {
    Begin();
    for (int i = 0; i < 300; ++i) {
        CycleAndStep(i);
        Pass(1);
    }
    EXPECT_GE(NumberIn("SELECT count(*) FROM number WHERE variable = 1"), 200);
    EXPECT_LE(NumberIn("SELECT count(*) FROM recent"), 130);
    EXPECT_EQ(Rows("T").size(), 300U);
    EXPECT_EQ(NumberIn("SELECT count(*) FROM samples WHERE variable = 'T'"), 300);
}

TEST_F(UpkeepTest, RemovesWhatIsTooOldAndKeepsTheValueInForce) {
    limits.keep = 3600 * 1000;
    Begin();
    for (int i = 0; i < 3 * 3600; i += 30) {
        CycleAndStep(i);
        Pass(30);
    }
    long long const now = RecordTime(world.time);
    EXPECT_LE(now - NumberIn("SELECT min(time) FROM number WHERE variable = 1"), 3700 * 1000);
    EXPECT_EQ(NumberIn("SELECT count(*) FROM number WHERE variable = 2"), 1) << "it holds still";
    EXPECT_EQ(Rows("Mode", 3 * 3600 - 60).size(), 2U);
    EXPECT_EQ(Rows("Note", 3 * 3600 - 60).size(), 2U);
}

TEST_F(UpkeepTest, RemovesNothingForItsAgeWhileTheClockMayBeWrong) {
    limits.keep = 3600 * 1000;
    Begin();
    for (int i = 0; i < 1800; i += 10) {
        CycleAndStep(i);
        Pass(10);
    }
    long long const count = NumberIn("SELECT count(*) FROM samples");
    world.jump = 400LL * 24 * 3600 * Second;
    for (int i = 0; i < 300; i += 10) {
        Pass(10);
        CycleAndStep(i);
    }
    EXPECT_GE(NumberIn("SELECT count(*) FROM samples"), count);
    for (int i = 0; i < 1800; i += 10) {
        Pass(10);
        CycleAndStep(i);
    }
    EXPECT_GT(NumberIn("SELECT min(time) FROM samples"), RecordTime(Noon + world.jump))
        << "a clock that stays is believed";
}

TEST_F(UpkeepTest, RemovesTheOldestOfAFileThatIsTooLarge) {
    limits.most = 300 * 1024;
    Begin();
    for (int i = 0; i < 30000; ++i) {
        Cycle(i % 1000 + 0.5);
        if (i % 100 == 0) {
            recorder->Step();
        }
        Pass(1);
    }
    for (int i = 0; i < 100; ++i) {
        CycleAndStep(7);
        Pass(10);
    }
    EXPECT_LT(std::filesystem::file_size(path), 500U * 1024);
    EXPECT_LT(NumberIn("SELECT count(*) FROM number"), 15000);
    EXPECT_GT(NumberIn("SELECT count(*) FROM number"), 3000);
    EXPECT_EQ(TextIn("PRAGMA integrity_check"), "ok");
}

}  // namespace
