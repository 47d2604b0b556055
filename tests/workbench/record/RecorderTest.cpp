#include "Recorder.h"

#include <limits>

#include "RecordFixture.h"
#include "RecordLock.h"
#include "RecordSchema.h"

using namespace test;
using namespace workbench;

namespace {

using RecorderTest = RecordTest;

TEST_F(RecorderTest, KeepsChangesAndTheTimeUntilWhichTheLastIsKnown) {
    Begin();
    CycleAndStep(20);
    Pass(1);
    CycleAndStep(20);
    Pass(1);
    CycleAndStep(21.1);
    Pass(1);
    CycleAndStep(21.1);
    EXPECT_EQ(Rows("T"), (Lines{"0 20.0 g", "2 21.1 g", "3 21.1 g"}));
    EXPECT_EQ(NumberIn("SELECT count(*) FROM recent WHERE value = 21.1"), 1) << "a Float has its own digits";
    EXPECT_EQ(status.State().health, OutletHealth::Good);
}

TEST_F(RecorderTest, RecordsTextsWhenTheyChange) {
    Begin();
    CycleAndStep(20, "one");
    Pass(1);
    CycleAndStep(20, "two");
    EXPECT_EQ(Rows("Note"), (Lines{"0 one g", "1 two g"}));
}

TEST_F(RecorderTest, RecordsQualityAndStandby) {
    Begin();
    Cycle(20);
    Pass(1);
    Cycle(20, "as built", OpcUa_Bad);
    Pass(1);
    isStandby = true;
    Cycle(20);
    recorder->Step();
    EXPECT_EQ(Rows("T"), (Lines{"0 20.0 g", "1 20.0 b", "2 20.0 b"}));
    EXPECT_EQ(Rows("Mode"), (Lines{"0 2.00 g", "2 2.00 b"}));
    EXPECT_EQ(TextIn("SELECT event FROM event"), "standby");
}

TEST_F(RecorderTest, LeavesAGapBetweenRuns) {
    Begin();
    CycleAndStep(20);
    Pass(5);
    CycleAndStep(20);
    recorder->End();
    recorder.reset();
    Pass(100);
    Begin();
    CycleAndStep(22);
    EXPECT_EQ(Rows("T"), (Lines{"0 20.0 g", "5 20.0 g", "5 nan b", "105 22.0 g"}));
    EXPECT_EQ(NumberIn("SELECT count(*) FROM run WHERE ended IS NOT NULL"), 1);
    EXPECT_EQ(NumberIn("SELECT count(*) FROM run"), 2);
    EXPECT_EQ(TextIn("SELECT version || project FROM run"), "1.2.3p.lua");
}

TEST_F(RecorderTest, LeavesAGapWhereNobodyPolledForAWhile) {
    Begin();
    CycleAndStep(20);
    Pass(59);
    CycleAndStep(20);
    Pass(600);
    CycleAndStep(20);
    EXPECT_EQ(Rows("T"), (Lines{"0 20.0 g", "59 20.0 g", "59 nan b", "659 20.0 g"}));
}

TEST_F(RecorderTest, BeginsAnIntervalWithTheValueInForce) {
    Begin();
    CycleAndStep(20);
    Pass(10);
    CycleAndStep(21);
    Pass(10);
    CycleAndStep(21);
    EXPECT_EQ(Rows("T", 5, 15), (Lines{"5 20.0 g", "10 21.0 g", "15 21.0 g"}));
    EXPECT_EQ(Rows("T", 12, 14), (Lines{"12 21.0 g", "14 21.0 g"}));
    EXPECT_EQ(Rows("T", 21, 30), Lines()) << "nobody knows the value of that time";
}

TEST_F(RecorderTest, KeepsTheIdentityOfAVariableAndItsPeriods) {
    Begin();
    CycleAndStep(20);
    recorder->End();
    blocks[0].variables[0].objectNumber = 7;
    Pass(10);
    Begin();
    CycleAndStep(21);
    EXPECT_EQ(NumberIn("SELECT count(*) FROM variable"), 3);
    EXPECT_EQ(NumberIn("SELECT count(*) FROM period"), 4) << "only the first one has changed";
    RecordReader reader(path);
    std::vector<RecordedVariable> const variables = reader.Variables();
    ASSERT_EQ(variables.size(), 3U);
    EXPECT_EQ(variables[0].object, "analog-input 7");
    EXPECT_EQ(variables[0].unit, "degrees-celsius");
    EXPECT_EQ(variables[0].description, "Supply");
    EXPECT_EQ(variables[1].states, (std::vector<std::string>{"off", "on"}));
}

TEST_F(RecorderTest, KeepsWhatItHasWhenTheClockIsSetBack) {
    Begin();
    CycleAndStep(20);
    Pass(3600);
    CycleAndStep(21);
    Pass(-3000);
    CycleAndStep(22);
    EXPECT_EQ(NumberIn("SELECT count(*) FROM samples WHERE variable = 'T'"), 3);
    EXPECT_EQ(TextIn("SELECT text FROM event WHERE event = 'clock'"),
              "the clock of this machine was set back by 3000 s");
    EXPECT_EQ(NumberIn("SELECT count(*) FROM polled"), 3) << "an hour without a cycle, and the clock";
}

TEST_F(RecorderTest, HidesNothingOfATimeWithinWhichTheClockWasWrong) {
    Begin();
    for (double const number : {20, 21, 22}) {
        CycleAndStep(number);
        Pass(50);
    }
    Pass(-140);
    CycleAndStep(30);
    Pass(1000);
    CycleAndStep(40);
    EXPECT_EQ(Rows("T"),
              (Lines{"0 20.0 g", "10 30.0 g", "50 21.0 g", "100 22.0 g", "100 nan b", "1010 40.0 g"}));
}

TEST_F(RecorderTest, RecordsNotANumberOnce) {
    Begin();
    for (int i = 0; i < 3; ++i) {
        CycleAndStep(std::numeric_limits<double>::quiet_NaN());
        Pass(1);
    }
    EXPECT_EQ(Rows("T"), (Lines{"0 nan g", "2 nan g"}));
}

TEST_F(RecorderTest, OpensAPathThatBeginsWithTwoSlashes) {
    path = "/" + path;
    Begin();
    CycleAndStep(20);
    EXPECT_EQ(Rows("T"), (Lines{"0 20.0 g"}));
}

TEST_F(RecorderTest, CountsAndReportsOnceWhatIsWrittenAgain) {
    Begin();
    CycleAndStep(20);
    Pass(-100);
    {
        Database other(path, Database::Access::Create, 0);
        Transaction const lock(other);
        CycleAndStep(21);
    }
    recorder->Step();
    OutletState const state = status.State();
    ASSERT_FALSE(state.counts.empty());
    EXPECT_EQ(state.counts[0].second,
              static_cast<unsigned long long>(NumberIn("SELECT count(*) FROM samples")));
    EXPECT_EQ(NumberIn("SELECT count(*) FROM event WHERE event = 'clock'"), 1);
}

TEST_F(RecorderTest, KeepsOtherRecordersAwayWhileItCannotRecord) {
    Begin();
    CycleAndStep(20);
    {
        Database other(path, Database::Access::Create, 0);
        other.Run("ALTER TABLE text RENAME TO hidden");
    }
    Pass(1);
    CycleAndStep(21, "other");
    EXPECT_EQ(status.State().health, OutletHealth::Failed) << status.State().text;
    EXPECT_THROW(RecordLock{path}, RecordMistake);
    {
        Database other(path, Database::Access::Create, 0);
        other.Run("ALTER TABLE hidden RENAME TO text");
    }
    Pass(20);
    CycleAndStep(22);
    EXPECT_EQ(status.State().health, OutletHealth::Good) << status.State().text;
    EXPECT_EQ(Rows("Note").size(), 4U);
}

TEST_F(RecorderTest, IsReadAsItWasWhenItWasHeld) {
    Begin();
    CycleAndStep(20);
    RecordReader reader(path);
    reader.Hold();
    for (int i = 0; i < 200; ++i) {
        Pass(1);
        CycleAndStep(21 + i);
    }
    ASSERT_GT(NumberIn("SELECT count(*) FROM number"), 0);
    RecordedVariable const variable = reader.Find("AHU", "T");
    std::size_t rows = 0;
    reader.Read(variable, 0, RecordTime(Noon) * 2, [&](RecordRow const& row) {
        EXPECT_EQ(row.time, RecordTime(Noon));
        EXPECT_EQ(row.number, 20);
        return ++rows < 10;
    });
    EXPECT_EQ(rows, 1U);
    EXPECT_EQ(Rows("T").size(), 201U) << "another reader";
}

TEST_F(RecorderTest, RecordsCyclesThatWaited) {
    Begin();
    for (int i = 0; i < 5; ++i) {
        Cycle(i);
        Pass(1);
    }
    recorder->Step();
    EXPECT_EQ(Rows("T"), (Lines{"0 0.00 g", "1 1.00 g", "2 2.00 g", "3 3.00 g", "4 4.00 g"}));
}

TEST_F(RecorderTest, WaitsForAnotherProgramsLockAndLosesNothing) {
    Begin();
    CycleAndStep(20);
    {
        Database other(path, Database::Access::Create, 0);
        Transaction const lock(other);
        Pass(1);
        CycleAndStep(21);
        EXPECT_EQ(status.State().health, OutletHealth::Waiting);
        EXPECT_NE(status.State().text.find("holds a lock"), std::string::npos) << status.State().text;
    }
    Pass(1);
    CycleAndStep(22);
    EXPECT_EQ(status.State().health, OutletHealth::Good);
    EXPECT_EQ(Rows("T"), (Lines{"0 20.0 g", "1 21.0 g", "2 22.0 g"}));
}

TEST_F(RecorderTest, BeginsAFileAgainThatWasRemoved) {
    Begin();
    CycleAndStep(20);
    std::filesystem::remove(path);
    Pass(1);
    CycleAndStep(21);
    Pass(1);
    CycleAndStep(22);
    EXPECT_EQ(Rows("T"), (Lines{"1 21.0 g", "2 22.0 g"}));
    EXPECT_EQ(status.State().health, OutletHealth::Good);
}

TEST_F(RecorderTest, LeavesAFileThatIsReplacedByAnotherOneAlone) {
    Begin();
    CycleAndStep(20);
    std::filesystem::remove(path);
    folder.Write("plant.sqlite", "something else, and rather more of it than a header has");
    Pass(1);
    CycleAndStep(21);
    EXPECT_EQ(status.State().health, OutletHealth::Failed);
    EXPECT_NE(status.State().text.find("not a database of SQLite"), std::string::npos) << status.State().text;
    std::filesystem::remove(path);
    Pass(20);
    CycleAndStep(22);
    EXPECT_EQ(status.State().health, OutletHealth::Good);
    EXPECT_EQ(Rows("T"), (Lines{"1 21.0 g", "21 22.0 g"})) << "what waited is not lost";
}

TEST_F(RecorderTest, SaysWhatIsWrongWithAFileAtTheStart) {
    Begin();
    EXPECT_THROW(Recorder(path, limits, {"1", "p", blocks, tasks}, events, status), RecordMistake);
    recorder.reset();
    path = folder.Write("text.sqlite", "a text that is long enough to be taken for a header of a database");
    EXPECT_NE(BeginMistake().find("not a database of SQLite"), std::string::npos);
    path = folder.Path() + "/other.sqlite";
    Database(path, Database::Access::Create, 0).Run("CREATE TABLE t (x)");
    EXPECT_NE(BeginMistake().find("a database of another program"), std::string::npos);
    path = folder.Path() + "/newer.sqlite";
    Database(path, Database::Access::Create, 0)
        .Run("CREATE TABLE t (x); PRAGMA application_id = " + std::to_string(RecordApplication) +
             "; PRAGMA user_version = 2");
    EXPECT_NE(BeginMistake().find("has version 2, and this program knows version 1"), std::string::npos);
    path = folder.Path() + "/missing/plant.sqlite";
    EXPECT_NE(BeginMistake().find("does not exist; create it"), std::string::npos);
    path = folder.Path();
    EXPECT_NE(BeginMistake().find("cannot be opened for writing"), std::string::npos);
}

TEST_F(RecorderTest, RefusesADamagedFile) {
    Begin();
    CycleAndStep(20);
    recorder->End();
    recorder.reset();
    std::filesystem::resize_file(path, std::filesystem::file_size(path) / 2);
    std::string const mistake = BeginMistake();
    EXPECT_NE(mistake.find("the file is damaged"), std::string::npos) << mistake;
}

TEST_F(RecorderTest, HasOneFileAtItsEnd) {
    Begin();
    CycleAndStep(20);
    EXPECT_TRUE(std::filesystem::exists(path + "-wal"));
    recorder->End();
    EXPECT_FALSE(std::filesystem::exists(path + "-wal"));
    EXPECT_EQ(TextIn("PRAGMA integrity_check"), "ok");
}

TEST(RecordQueue, DropsTheOldestOfTooMany) {
    RecordQueue queue(10);
    BlockSnapshot block;
    block.variables.resize(3);  // with the block itself 4
    for (unsigned cycle = 1; cycle <= 4; ++cycle) {
        block.cycle = cycle;
        queue.Add(std::make_shared<BlockSnapshot const>(block));
    }
    EXPECT_EQ(queue.TakeDropped(), 2U);
    EXPECT_EQ(queue.TakeDropped(), 0U);
    std::vector<SharedSnapshot> const taken = queue.Take(1);
    ASSERT_EQ(taken.size(), 1U);
    EXPECT_EQ(taken[0]->cycle, 3U);
    queue.PutBack(taken);
    EXPECT_EQ(queue.Take(100).size(), 2U);
    EXPECT_TRUE(queue.IsEmpty());
}

TEST(RecordQueue, FreesWhatItDropsWithoutItsLock) {
    RecordQueue queue(1);
    bool isFreed = false;
    auto const release = [&](BlockSnapshot const* block) {
        isFreed = !queue.IsEmpty();  // would wait for the lock for ever
        delete block;
    };
    queue.Add(SharedSnapshot(new BlockSnapshot, release));
    queue.Add(std::make_shared<BlockSnapshot const>());
    EXPECT_TRUE(isFreed);
}

TEST(RecordQueue, KeepsACycleThatIsLargerThanItself) {
    RecordQueue queue(2);
    BlockSnapshot block;
    block.variables.resize(30);
    queue.Add(std::make_shared<BlockSnapshot const>(block));
    EXPECT_EQ(queue.Take(1).size(), 1U);
}

}  // namespace
