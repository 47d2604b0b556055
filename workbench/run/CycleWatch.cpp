#include "CycleWatch.h"

#include <utility>

#include "Whereabouts.h"

namespace workbench {

CycleWatch::CycleWatch(LoadedProject& watchedProject, Follower cycleFollower)
    : project(watchedProject), follower(std::move(cycleFollower)), times(project.Tasks(), project.Blocks()) {
    for (BlockConfig const& block : project.Blocks()) {
        configs[block.protocol] = &block;
    }
    project.Runtime().SetBeginObserver([this](ScadaProtocol& protocol) { Begin(protocol); });
    project.Runtime().SetCycleObserver(
        [this](ScadaProtocol& protocol, unsigned long long cycle, bool ran) { End(protocol, cycle, ran); });
}

CycleWatch::~CycleWatch() {
    project.Runtime().SetBeginObserver({});
    project.Runtime().SetCycleObserver({});
}

void CycleWatch::Begin(ScadaProtocol const& protocol) {
    BlockConfig const& config = ConfigOf(protocol);
    Here() = {&config, nullptr, nullptr};
    times.Begin(config);
}

void CycleWatch::End(ScadaProtocol const& protocol, unsigned long long cycle, bool ran) {
    BlockConfig const& config = ConfigOf(protocol);
    CycleFigures const figures = times.End(config);
    Here() = {&config, nullptr, nullptr};
    BlockSnapshot snapshot = TakeSnapshot(config, cycle, project.Runtime().Variables());
    snapshot.isStandby = !ran && dorvel::IsStandby();
    snapshot.times = figures;
    follower(snapshot);
    Here() = {};
}

BlockConfig const& CycleWatch::ConfigOf(ScadaProtocol const& protocol) const {
    return *configs.at(&protocol);
}

}  // namespace workbench
