#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "FakeEnvironment.h"
#include "PlantMemory.h"
#include "Projects.h"
#include "Snapshots.h"
#include "ValueSetter.h"

namespace test {

// A project whose drivers are the test's, and whose cycles are followed as a run does it.
class FollowedRun : public testing::Test {
protected:
    FollowedRun(std::string const& text, long long begin, bool keepsTrends)
        : addIn([this](FakeDriver& driver) { Cycle(driver); }) {
        dorvel::SetEnvironment(&world);
        world.time = begin;
        project.Load(workbench::SourceText(text));
        setter = std::make_unique<workbench::ValueSetter>(project.Runtime(), log);
        memory = std::make_unique<workbench::PlantMemory>(project.Blocks(), First(), keepsTrends);
        project.Runtime().SetCycleObserver(
            [this](ScadaProtocol& protocol, unsigned long long cycle, bool) { Follow(protocol, cycle); });
    }

    ~FollowedRun() override {
        project.Runtime().SetCycleObserver({});
        setter.reset();
        dorvel::SetEnvironment(nullptr);
    }

    virtual void Cycle(FakeDriver& driver) = 0;
    // What the test changes in a snapshot before it is shown.
    virtual void Complete(workbench::BlockSnapshot& /*snapshot*/) {}

    // A cycle of all blocks, a second after the one before.
    void RunOnce() {
        world.time += Second;
        project.Runtime().RunOnce();
    }

    FakeEnvironment world;
    FakeAddIn addIn;
    workbench::LogBuffer log{nullptr};
    workbench::LoadedProject project{"p.lua", {}};
    std::unique_ptr<workbench::ValueSetter> setter;
    std::unique_ptr<workbench::PlantMemory> memory;

private:
    std::vector<workbench::SharedSnapshot> First() {
        std::vector<workbench::SharedSnapshot> snapshots;
        for (workbench::BlockConfig const& block : project.Blocks()) {
            snapshots.push_back(std::make_shared<workbench::BlockSnapshot const>(
                workbench::TakeSnapshot(block, 0, project.Runtime().Variables())));
        }
        return snapshots;
    }

    void Follow(ScadaProtocol const& protocol, unsigned long long cycle) {
        for (workbench::BlockConfig const& block : project.Blocks()) {
            if (block.protocol == &protocol) {
                auto snapshot = workbench::TakeSnapshot(block, cycle, project.Runtime().Variables());
                setter->AfterCycle(block, IsFault(snapshot));
                setter->Show(snapshot);
                Complete(snapshot);
                memory->Follow(std::make_shared<workbench::BlockSnapshot const>(snapshot));
            }
        }
    }
};

}  // namespace test
