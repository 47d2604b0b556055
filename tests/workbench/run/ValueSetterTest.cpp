#include "ValueSetter.h"

#include <gtest/gtest.h>

#include <thread>

#include "FakeEnvironment.h"
#include "Projects.h"
#include "dorvelshare/Trace.h"

using namespace test;
using namespace workbench;

namespace {

std::string Writable(std::string const& name, std::string const& type = "Float") {
    return "{Name='" + name + "', Type='DataValue', ElementType='" + type +
           "', ObjectType='analog-value', ObjectProperties='present-value', ObjectNumber=1, Write=true}";
}

// The fake driver with a device that keeps what is written and rejects a value above 100.
class Writing : public testing::Test {
protected:
    using Values = std::vector<std::pair<std::size_t, OpcUa_VariantHlp>>;

    Writing() {
        dorvel::SetEnvironment(&world);
        dorvel::SetLogSink([this](std::string_view piece) { log.Add(piece); });
        addIn.onCycle = [this](FakeDriver& driver) { Cycle(driver); };
    }
    ~Writing() override {
        setter.reset();
        dorvel::SetLogSink({});
        dorvel::SetEnvironment(nullptr);
    }

    void Load(std::string const& fields) {
        project.Load(SourceText(Block(R"(Name="AHU", Address="192.168.1.20:47808")" + fields,
                                      Writable("T") + ", " + Writable("U"))));
        setter = std::make_unique<ValueSetter>(project.Runtime(), log);
        project.Runtime().SetCycleObserver([this](ScadaProtocol&, unsigned long long cycle, bool) {
            BlockConfig const& block = project.Blocks().front();
            snapshot = TakeSnapshot(block, cycle, project.Runtime().Variables());
            setter->AfterCycle(block, IsFault(snapshot));
            setter->Show(snapshot);
        });
    }

    void Cycle(FakeDriver& driver) {
        if (silent) {
            driver.Report(true, "No connection");
            return;
        }
        driver.Deliver(0, device[0]);
        driver.Deliver(1, device[1]);
        driver.Report(false, "");
        driver.WritePhase([this](std::size_t place, OpcUa_VariantHlp const& value) {
            written.emplace_back(place, value);
            double number = 0;
            value.GetDouble(number);
            if (number > 100) {
                logMsg("Error! Error packet. Class: Property Code: ValueOutOfRange");
            } else if (!deaf) {
                device[place] = value;
            }
        });
    }

    void Run(int cycles = 1) {
        for (int i = 0; i < cycles; ++i) {
            project.Runtime().RunOnce();
        }
    }

    void Set(std::string const& assignment) { setter->Set(ReadAssignment(project.Blocks(), assignment)); }

    // The current state, such as "21.5 pending".
    std::string State(std::size_t place = 0) {
        setter->Show(snapshot);
        return WriteText(*snapshot.variables[place].config, snapshot.variables[place].write, 0, true);
    }

    FakeEnvironment world;
    FakeAddIn addIn;
    LogBuffer log{nullptr};
    LoadedProject project{"p.lua", {}};
    std::unique_ptr<ValueSetter> setter;
    BlockSnapshot snapshot;
    std::vector<OpcUa_VariantHlp> device{Float(20), Float(20)};
    bool silent = false;
    bool deaf = false;
    Values written;
};

TEST_F(Writing, OnlyValuesThatAreSetAreWritten) {
    Load(", WriteCondition='Always'");
    Run(4);
    EXPECT_EQ(written, Values());
    EXPECT_EQ(State(), "");
}

TEST_F(Writing, AValueIsSentAfterAGoodCycleAndIsWrittenWhenItIsReadBack) {
    Load("");
    Set("AHU.T = 21.5");
    EXPECT_EQ(written, Values());
    Run();
    EXPECT_EQ(written, Values());
    EXPECT_EQ(State(), "21.5 pending");
    Run();
    EXPECT_EQ(written, (Values{{0, Float(21.5f)}}));
    EXPECT_EQ(State(), "21.5 pending");
    Run();
    EXPECT_EQ(State(), "21.5 written");
    Run(3);
    EXPECT_EQ(State(), "21.5 written");
    EXPECT_EQ(written.size(), 1u);
    EXPECT_EQ(State(1), "");
}

TEST_F(Writing, AValueThatTheDeviceHasAlreadyIsSentToo) {
    Load("");
    Set("AHU.T = 20");
    Run(3);
    EXPECT_EQ(written, (Values{{0, Float(20)}}));
    EXPECT_EQ(State(), "20 written");
    Set("AHU.T = 20");
    Run(3);
    EXPECT_EQ(written.size(), 2u);
}

TEST_F(Writing, ARefusedWriteHasTheDriversTextAndAffectsNoOther) {
    Load("");
    Set("AHU.T = 101");
    Set("AHU.U = 22");
    Run(2);
    EXPECT_EQ(State(0), "101 refused (Error! Error packet. Class: Property Code: ValueOutOfRange)");
    EXPECT_EQ(State(1), "22 pending");
    Run();
    EXPECT_EQ(State(0).find("101 refused"), 0u);
    EXPECT_EQ(State(1), "22 written");
}

TEST_F(Writing, ARefusedWriteCanBeTriedAgain) {
    Load("");
    Set("AHU.T = 101");
    Run(2);
    Set("AHU.T = 101");
    EXPECT_EQ(State(), "101 pending");
    Run(2);
    EXPECT_EQ(written.size(), 2u);
    EXPECT_EQ(State().find("101 refused"), 0u);
    Set("AHU.T = 21");
    Run(3);
    EXPECT_EQ(State(), "21 written");
}

TEST_F(Writing, AnotherValueReadBackIsReported) {
    Load("");
    deaf = true;
    Set("AHU.T = 21.5");
    Run(3);
    EXPECT_EQ(State(), "21.5 unconfirmed (reads back 20)");
    device[0] = Float(21.5f);
    Run();
    EXPECT_EQ(State(), "21.5 written");
}

TEST_F(Writing, WaitsUntilTheDeviceAnswers) {
    Load("");
    silent = true;
    Set("AHU.T = 21.5");
    Run(5);
    EXPECT_EQ(State(), "21.5 pending");
    silent = false;
    Run();
    silent = true;  // after the value is stored in the runtime and before it is written
    Run(2);
    EXPECT_EQ(written, Values());
    silent = false;
    Run(2);
    EXPECT_EQ(written.size(), 1u);
    EXPECT_EQ(State(), "21.5 written");
}

TEST_F(Writing, AFaultBeforeTheValueIsReadBackLeavesItPending) {
    Load("");
    Set("AHU.T = 21.5");
    Run(2);
    silent = true;
    Run(2);
    EXPECT_EQ(State(), "21.5 pending");
    silent = false;
    Run();
    EXPECT_EQ(State(), "21.5 written");
}

TEST_F(Writing, OnlyTheLatestValueIsSent) {
    Load("");
    Set("AHU.T = 21");
    Set("AHU.T = 22");
    Run(3);
    EXPECT_EQ(written, (Values{{0, Float(22)}}));
    EXPECT_EQ(State(), "22 written");
}

TEST_F(Writing, AlwaysWritesInEveryCycleAndFollowsTheDevice) {
    Load(", WriteCondition='Always'");
    Set("AHU.T = 21");
    Run(4);
    EXPECT_EQ(written.size(), 3u);
    EXPECT_EQ(State(), "21 written");
    deaf = true;
    device[0] = Float(19);
    Run(2);
    EXPECT_EQ(State(), "21 unconfirmed (reads back 19)");
    Set("AHU.T = 102");
    Run(3);
    EXPECT_EQ(State().find("102 refused"), 0u);
    deaf = false;
    Set("AHU.T = 23");
    Run(3);
    EXPECT_EQ(State(), "23 written");
}

TEST_F(Writing, OnTriggerWritesOnceForEverySet) {
    Load(", WriteCondition='OnTrigger'");
    Set("AHU.T = 21");
    Run(5);
    EXPECT_EQ(written, (Values{{0, Float(21)}}));
    EXPECT_EQ(State(), "21 written");
    Set("AHU.T = 21");
    Run(4);
    EXPECT_EQ(written.size(), 2u);
}

TEST_F(Writing, AValueSetWhileTheTriggerIsOnWaitsForTheNextTrigger) {
    Load(", WriteCondition='OnTrigger'");
    Set("AHU.T = 21");
    Run();
    Set("AHU.U = 22");
    Run();  // writes T; the trigger goes off
    EXPECT_EQ(written, (Values{{0, Float(21)}}));
    Run(3);  // on again: all values that have been set are written
    EXPECT_EQ(written, (Values{{0, Float(21)}, {0, Float(21)}, {1, Float(22)}}));
    EXPECT_EQ(State(0), "21 written");
    EXPECT_EQ(State(1), "22 written");
}

TEST_F(Writing, ALineLoggedElsewhereIsNotAFailure) {
    Load("");
    auto const cycle = addIn.onCycle;
    addIn.onCycle = [&](FakeDriver& driver) {
        logMsg("read trouble\n");
        driver.Deliver(0, device[0]);
        driver.Report(false, "");
        driver.WritePhase([&](std::size_t, OpcUa_VariantHlp const& value) {
            std::thread([] { logMsg("another block's trouble\n"); }).join();
            device[0] = value;
        });
    };
    Set("AHU.T = 21");
    Run(3);
    logMsg("after the cycle\n");
    EXPECT_EQ(State(), "21 written");
}

TEST_F(Writing, OnlyTheFirstLineOfAWriteIsItsReason) {
    Load("");
    addIn.onCycle = [](FakeDriver& driver) {
        driver.Report(false, "");
        driver.WritePhase([](std::size_t, OpcUa_VariantHlp const&) { logMsg("first\nsecond\n"); });
    };
    Set("AHU.T = 21");
    Run(2);
    EXPECT_EQ(State(), "21 refused (first)");
}

TEST_F(Writing, ADoubleOnARealPropertyIsReadBackWithItsDigits) {
    project.Load(SourceText(Block(R"(Name="AHU", Address="192.168.1.20:47808")", Writable("T", "Double"))));
    setter = std::make_unique<ValueSetter>(project.Runtime(), log);
    BlockConfig const& block = project.Blocks().front();
    addIn.onCycle = [this](FakeDriver& driver) {
        driver.Deliver(0, device[0]);
        driver.Report(false, "");
        driver.WritePhase([this](std::size_t, OpcUa_VariantHlp const& value) {
            device[0] = Float(static_cast<float>(value.Value.Double));
        });
    };
    Set("AHU.T = 21.3");
    for (unsigned long long i = 1; i <= 3; ++i) {
        Run();
        snapshot = TakeSnapshot(block, i, project.Runtime().Variables());
        setter->AfterCycle(block, false);
    }
    EXPECT_EQ(State(), "21.3 written");
}

}  // namespace
