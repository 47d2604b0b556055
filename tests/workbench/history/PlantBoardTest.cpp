#include "PlantBoard.h"

#include <gtest/gtest.h>

#include <thread>

#include "Snapshots.h"

using namespace test;
using namespace workbench;

namespace {

SharedSnapshot Shared(BlockSnapshot const& block) {
    return std::make_shared<BlockSnapshot const>(block);
}

constexpr std::chrono::milliseconds Ever{60000};
constexpr std::chrono::milliseconds AtOnce{0};

class BoardOfTwo : public testing::Test {
protected:
    Plant plant;
    SharedSnapshot ahu = Shared(plant.AddBlock("AHU", 0));
    SharedSnapshot boiler = Shared(plant.AddBlock("Boiler", 0));
    PlantBoard board{{ahu, boiler}};

    SharedSnapshot Next(SharedSnapshot const& block) const {
        BlockSnapshot next = *block;
        ++next.cycle;
        return Shared(next);
    }
};

TEST_F(BoardOfTwo, HasTheBlocksInTheirOrderBeforeTheFirstCycle) {
    EXPECT_EQ(board.All(), (std::vector{ahu, boiler}));
    EXPECT_EQ(board.Generation(), 0u);
}

TEST_F(BoardOfTwo, SharesTheNewestSnapshotOfEachBlock) {
    SharedSnapshot const next = Next(boiler);
    board.Put(next);
    EXPECT_EQ(board.Latest(*boiler->config), next);
    EXPECT_EQ(board.Latest(*ahu->config), ahu);
    EXPECT_EQ(board.All(), (std::vector{ahu, next}));
    EXPECT_EQ(board.Generation(), 1u);
}

TEST_F(BoardOfTwo, IgnoresABlockThatItDoesNotHave) {
    SharedSnapshot const other = Shared(plant.AddBlock("Chiller"));
    board.Put(other);
    EXPECT_EQ(board.Latest(*other->config), nullptr);
    EXPECT_EQ(board.Generation(), 0u);
}

TEST_F(BoardOfTwo, WaitsNoLongerThanForAnotherGeneration) {
    EXPECT_EQ(board.Wait(0, AtOnce), 0u);
    board.Put(Next(ahu));
    EXPECT_EQ(board.Wait(0, Ever), 1u);
    std::thread writer([&] { board.Put(Next(ahu)); });
    EXPECT_EQ(board.Wait(1, Ever), 2u);
    writer.join();
}

TEST_F(BoardOfTwo, EndsEveryWaitWhenItIsClosed) {
    std::thread closer([&] { board.Close(); });
    EXPECT_EQ(board.Wait(0, Ever), 0u);
    closer.join();
    EXPECT_TRUE(board.IsClosed());
    EXPECT_EQ(board.Wait(0, Ever), 0u);
}

TEST_F(BoardOfTwo, KeepsNoSnapshotThatIsReplaced) {
    std::weak_ptr<BlockSnapshot const> const first = boiler;
    boiler.reset();
    board.Put(Next(first.lock()));
    EXPECT_TRUE(first.expired());
}

}  // namespace
