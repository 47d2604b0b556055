#include "dorvel/Runtime.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <stdexcept>
#include <thread>

#include "LogCapture.h"
#include "LuaState.h"
#include "TestBlock.h"
#include "dorvel/Registration.h"
#include "dorvelshare/LuaDataProvider.h"

using namespace test;
using namespace std::chrono_literals;
using dorvel::Runtime;

namespace {

constexpr auto LongPeriod = 1h;
constexpr auto Patience = 30s;  // only a failing test waits that long

// Blocks a thread until another thread opens it.
class Gate {
public:
    void Open() {
        std::lock_guard<std::mutex> const lock(mutex);
        isOpen = true;
        opened.notify_all();
    }
    bool Wait() {
        std::unique_lock<std::mutex> lock(mutex);
        return opened.wait_for(lock, Patience, [this] { return isOpen; });
    }

private:
    std::mutex mutex;
    std::condition_variable opened;
    bool isOpen = false;
};

class RuntimeTest : public testing::Test {
protected:
    RuntimeTest() {
        TestBinding::Open(lua);
        TestBlock::onMade = [this](TestBlock& made) { made.onInited = onInited; };
    }
    ~RuntimeTest() override { TestBlock::onMade = nullptr; }

    TestBlock& MakeBlock(char const* name) {
        lua.Run(std::string("TestBlock{ Name = '") + name + "' }");
        return static_cast<TestBlock&>(*runtime.Blocks().back());
    }
    TestBlock& MakeReadyBlock(char const* name) {
        TestBlock& block = MakeBlock(name);
        runtime.InitBlock(block);
        return block;
    }

    LuaState lua;
    Runtime runtime{lua};
    std::function<void()> onInited;
};

}  // namespace

TEST_F(RuntimeTest, IsFoundByItsLuaState) {
    EXPECT_EQ(dorvel::FindRuntime(lua), &runtime);
    LuaState other;
    EXPECT_EQ(dorvel::FindRuntime(other), nullptr);
    EXPECT_EQ(dorvel::FindRuntime(nullptr), nullptr);
    EXPECT_EQ(dorvel::FindRuntime(lua_newthread(lua)), &runtime);
}

TEST_F(RuntimeTest, ALuaStateHasOneRuntime) {
    EXPECT_THROW(Runtime second(lua), std::logic_error);
    EXPECT_THROW(Runtime none(nullptr), std::logic_error);
    EXPECT_EQ(dorvel::FindRuntime(lua), &runtime);
}

TEST(RuntimeLife, ALuaStateCanHaveOneAfterAnother) {
    LuaState lua;
    { Runtime first(lua); }
    EXPECT_EQ(dorvel::FindRuntime(lua), nullptr);
    Runtime second(lua);
    EXPECT_EQ(dorvel::FindRuntime(lua), &second);
}

TEST(RuntimeLife, BlocksOutliveTheirRuntimeInTheScript) {
    LuaState lua;
    TestBinding::Open(lua);
    {
        Runtime runtime(lua);
        runtime.AddTask("main", LongPeriod);
        lua.Run("b = TestBlock{}");
        runtime.InitBlock(*runtime.Blocks()[0]);
    }
    EXPECT_EQ(TestBlock::alive, 1);
    EXPECT_EQ(lua.Eval("b()"), "false");
    lua.Run("b = nil collectgarbage()");
    EXPECT_EQ(TestBlock::alive, 0);
}

TEST_F(RuntimeTest, KeepsBlocksAliveThatScriptsHaveForgotten) {
    MakeBlock("one");
    lua.Run("collectgarbage()");
    EXPECT_EQ(TestBlock::alive, 1);
    EXPECT_EQ(runtime.Blocks().size(), 1u);
}

TEST_F(RuntimeTest, BlocksAreInTheOrderOfTheirCreation) {
    for (char const* name : {"c", "a", "b"}) {
        MakeBlock(name);
    }
    std::string names;
    for (ScadaProtocol* const block : runtime.Blocks()) {
        names += static_cast<TestBlock*>(block)->name;
    }
    EXPECT_EQ(names, "cab");
}

TEST_F(RuntimeTest, TasksHaveSettings) {
    STTask& fast = runtime.AddTask("fast", 50ms);
    STTask& slow = runtime.AddTask("slow", 2000ms);
    EXPECT_EQ(GetTaskSettings(&fast)->Number, 1);
    EXPECT_EQ(GetTaskSettings(&slow)->Number, 2);
    EXPECT_EQ(GetTaskSettings(&slow)->Name, "slow");
    EXPECT_EQ(GetTaskSettings(&slow)->PeriodMilliseconds, 2000u);
    EXPECT_EQ(runtime.FindTask("slow"), &slow);
    EXPECT_EQ(runtime.FindTask("none"), nullptr);
    EXPECT_THROW(runtime.AddTask("slow", 1ms), std::logic_error);
    EXPECT_THROW(runtime.AddTask("negative", -1ms), std::invalid_argument);
}

TEST_F(RuntimeTest, TheSettingsOfNoTaskHaveTheNumberZero) {
    EXPECT_EQ(FindSTTask(nullptr), nullptr);
    EXPECT_EQ(GetTaskSettings(nullptr)->Number, 0);
}

TEST_F(RuntimeTest, ABlockGetsTheDataProviderOfItsTask) {
    STTask& first = runtime.AddTask("first", LongPeriod);
    STTask& second = runtime.AddTask("second", LongPeriod);
    TestBlock& one = MakeReadyBlock("one");
    TestBlock& two = MakeBlock("two");
    runtime.Assign(two, second);
    runtime.InitBlock(two);
    EXPECT_EQ(FindSTTask(one.DataProvider()), &first);
    EXPECT_EQ(FindSTTask(two.DataProvider()), &second);
    EXPECT_EQ(&one.DataProvider()->Store(), &runtime.Variables());
}

TEST_F(RuntimeTest, InitBlockNeedsATaskAndRunsOnce) {
    TestBlock& block = MakeBlock("one");
    EXPECT_THROW(runtime.InitBlock(block), std::logic_error);
    STTask& task = runtime.AddTask("main", LongPeriod);
    runtime.InitBlock(block);
    EXPECT_THROW(runtime.InitBlock(block), std::logic_error);
    EXPECT_THROW(runtime.Assign(block, task), std::logic_error);
    EXPECT_EQ(block.initedCalls, 1);
    TestBlock stranger;
    EXPECT_THROW(runtime.InitBlock(stranger), std::logic_error);
    EXPECT_THROW(runtime.Assign(stranger, task), std::logic_error);
}

TEST_F(RuntimeTest, AnExceptionOfInitedPassesUnchanged) {
    runtime.AddTask("main", LongPeriod);
    onInited = [] { throw std::out_of_range("stoul"); };
    TestBlock& block = MakeBlock("one");
    try {
        runtime.InitBlock(block);
        FAIL();
    } catch (std::out_of_range const& failure) {
        EXPECT_STREQ(failure.what(), "stoul");
    }
}

TEST_F(RuntimeTest, AWriteThatTheConditionPassesIsObserved) {
    runtime.AddTask("main", LongPeriod);
    TestBlock& block = MakeReadyBlock("a");
    std::vector<std::pair<long long, int>> writes;
    runtime.SetWriteObserver([&](ScadaProtocol& writer, long long id, OpcUa_Variant const& value) {
        EXPECT_EQ(&writer, &block);
        EXPECT_EQ(value.Datatype, OpcUaType_Int32);
        writes.emplace_back(id, value.Value.Int32);
    });
    DriverVarDsc descriptor;
    descriptor.WriteId = 7;
    OpcUa_VariantHlp value;
    for (int const number : {1, 2, 2, 3}) {  // the first value counts as written
        value.SetInt(number);
        block.IsNeedWriteValue(value, descriptor);
    }
    EXPECT_EQ(writes, (std::vector<std::pair<long long, int>>{{7, 2}, {7, 3}}));
}

TEST_F(RuntimeTest, ARequestedWriteGoesThroughOnceUnchanged) {
    runtime.AddTask("main", LongPeriod);
    TestBlock& block = MakeReadyBlock("a");
    DriverVarDsc descriptor;
    descriptor.WriteId = 7;
    OpcUa_VariantHlp value;
    runtime.RequestWrite(7);
    EXPECT_EQ(block.IsNeedWriteValue(value, descriptor), 0);  // null stays unwritten and the request open
    value.SetInt(1);
    EXPECT_NE(block.IsNeedWriteValue(value, descriptor), 0);
    EXPECT_EQ(block.IsNeedWriteValue(value, descriptor), 0);
    runtime.RequestWrite(8);
    EXPECT_EQ(block.IsNeedWriteValue(value, descriptor), 0);
    runtime.RequestWrite(7);
    value.SetInt(2);
    EXPECT_NE(block.IsNeedWriteValue(value, descriptor), 0);
    EXPECT_EQ(block.IsNeedWriteValue(value, descriptor), 0);  // one request, one write
}

TEST_F(RuntimeTest, RunOnceRunsEveryBlockOfEveryTaskOnThisThread) {
    runtime.AddTask("first", LongPeriod);
    STTask& second = runtime.AddTask("second", LongPeriod);
    TestBlock& one = MakeBlock("one");
    TestBlock& two = MakeBlock("two");
    runtime.Assign(one, second);
    runtime.InitBlock(one);
    runtime.InitBlock(two);
    std::string order;
    one.onExecute = [&] { order += "one "; };
    two.onExecute = [&] { order += "two "; };
    runtime.RunOnce();
    runtime.RunOnce();
    EXPECT_EQ(order, "two one two one ");
}

TEST_F(RuntimeTest, TheObserverSeesEveryCycle) {
    runtime.AddTask("main", LongPeriod);
    TestBlock& runs = MakeReadyBlock("runs");
    TestBlock& waits = MakeReadyBlock("waits");
    waits.ExecuteItemId = 999;
    std::string seen;
    runtime.SetCycleObserver([&](ScadaProtocol& block, unsigned long long cycle, bool ran) {
        seen += static_cast<TestBlock&>(block).name + std::to_string(cycle) + (ran ? "+ " : "- ");
    });
    runtime.RunOnce();
    runtime.RunOnce();
    EXPECT_EQ(seen, "runs1+ waits1- runs2+ waits2- ");
    EXPECT_EQ(runs.executeCalls, 2);
}

TEST_F(RuntimeTest, TheBeginObserverIsCalledBeforeEveryCycle) {
    runtime.AddTask("main", LongPeriod);
    std::string seen;
    TestBlock& one = MakeReadyBlock("one");
    one.onExecute = [&] { seen += "runs "; };
    runtime.SetBeginObserver(
        [&](ScadaProtocol& block) { seen += static_cast<TestBlock&>(block).name + " "; });
    runtime.SetCycleObserver([&](ScadaProtocol&, unsigned long long, bool) { seen += "ends "; });
    runtime.RunOnce();
    EXPECT_EQ(seen, "one runs ends ");
}

TEST_F(RuntimeTest, StartWithCyclesEndsByItself) {
    runtime.AddTask("first", 1ms);
    STTask& second = runtime.AddTask("second", 0ms);
    TestBlock& one = MakeReadyBlock("one");
    TestBlock& two = MakeBlock("two");
    runtime.Assign(two, second);
    runtime.InitBlock(two);
    runtime.Start(5);
    EXPECT_TRUE(runtime.WaitFinished(Patience));
    runtime.Stop();
    EXPECT_EQ(one.executeCalls, 5);
    EXPECT_EQ(two.executeCalls, 5);
}

TEST_F(RuntimeTest, EachTaskHasItsOwnThread) {
    runtime.AddTask("first", LongPeriod);
    STTask& second = runtime.AddTask("second", LongPeriod);
    TestBlock& one = MakeReadyBlock("one");
    TestBlock& two = MakeBlock("two");
    runtime.Assign(two, second);
    runtime.InitBlock(two);
    Gate first;
    Gate other;
    one.onExecute = [&] {
        first.Open();
        EXPECT_TRUE(other.Wait());  // both are in their cycles at once
    };
    two.onExecute = [&] {
        other.Open();
        EXPECT_TRUE(first.Wait());
    };
    runtime.Start(1);
    EXPECT_TRUE(runtime.WaitFinished(Patience));
    runtime.Stop();
}

TEST_F(RuntimeTest, StopEndsTheWaitBetweenCyclesAtOnce) {
    runtime.AddTask("main", LongPeriod);
    TestBlock& block = MakeReadyBlock("one");
    Gate ran;
    block.onExecute = [&] { ran.Open(); };
    runtime.Start();
    ASSERT_TRUE(ran.Wait());
    EXPECT_FALSE(runtime.WaitFinished(0ms));
    auto const start = std::chrono::steady_clock::now();
    runtime.Stop();
    EXPECT_LT(std::chrono::steady_clock::now() - start, Patience);
    EXPECT_EQ(block.executeCalls, 1);
}

TEST_F(RuntimeTest, RequestStopFromAnotherThreadEndsTheTasks) {
    runtime.AddTask("main", LongPeriod);
    TestBlock& block = MakeReadyBlock("one");
    TestBlock& next = MakeReadyBlock("two");
    block.onExecute = [&] { std::thread([&] { runtime.RequestStop(); }).join(); };
    runtime.Start();
    EXPECT_TRUE(runtime.WaitFinished(Patience));
    runtime.Stop();
    EXPECT_EQ(next.executeCalls, 0);
}

TEST_F(RuntimeTest, RunsAgainAfterAStop) {
    runtime.AddTask("main", 0ms);
    TestBlock& block = MakeReadyBlock("one");
    for (int i = 0; i < 2; ++i) {
        runtime.Start(3);
        runtime.WaitFinished(Patience);
        runtime.Stop();
    }
    EXPECT_EQ(block.executeCalls, 6);
}

TEST_F(RuntimeTest, ARunningRuntimeCannotBeStartedAgain) {
    runtime.AddTask("main", LongPeriod);
    runtime.Start();
    EXPECT_THROW(runtime.Start(), std::logic_error);
    EXPECT_THROW(runtime.RunOnce(), std::logic_error);
    EXPECT_THROW(runtime.AddTask("late", 1ms), std::logic_error);
}

TEST_F(RuntimeTest, StopWithoutStartDoesNothing) {
    runtime.Stop();
    EXPECT_TRUE(runtime.WaitFinished(0ms));
    EXPECT_TRUE(runtime.WaitFinished(std::chrono::milliseconds::max()));
}

TEST_F(RuntimeTest, ADriverThatThrowsIsCalledAgain) {
    runtime.AddTask("main", 0ms);
    TestBlock& block = MakeReadyBlock("one");
    block.onExecute = [] { throw std::runtime_error("broken"); };
    runtime.Start(3);
    EXPECT_TRUE(runtime.WaitFinished(Patience));
    runtime.Stop();
    EXPECT_EQ(block.executeCalls, 3);
    EXPECT_EQ(block.State().ErrorText, "broken");
}

TEST_F(RuntimeTest, AnObserverThatThrowsEndsItsTaskAloneAndIsLogged) {
    LogCapture const log;
    runtime.AddTask("main", 0ms);
    MakeReadyBlock("one");
    runtime.SetCycleObserver(
        [](ScadaProtocol&, unsigned long long, bool) { throw std::runtime_error("full"); });
    runtime.Start();
    EXPECT_TRUE(runtime.WaitFinished(Patience));
    runtime.Stop();
    EXPECT_EQ(log.Text(), "Task 'main' has ended: full\n");
}

TEST_F(RuntimeTest, TheStateOfABlockCanBeReadWhileItRuns) {
    runtime.AddTask("main", 0ms);
    TestBlock& block = MakeReadyBlock("one");
    block.onExecute = [&] { block.UpdateFaultState(true, "a text that is longer than a short string"); };
    runtime.Start(200);
    lua_State* const L = lua;
    while (!runtime.WaitFinished(0ms)) {
        lua_settop(L, 0);
        lua_pushnil(L);
        lua_pushnil(L);
        EXPECT_EQ(CheckIndexProlog(L, "ErrorText", const_cast<LuaObjState*>(&block.State())), 1);
    }
    runtime.Stop();
}
