#include "CycleWatch.h"

#include <utility>

#include "Printable.h"
#include "Whereabouts.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

CycleWatch::CycleWatch(LoadedProject& watchedProject, Observation& datagrams, Follower cycleFollower)
    : project(watchedProject),
      observation(datagrams),
      follower(std::move(cycleFollower)),
      times(project.Tasks(), project.Blocks()) {
    for (BlockConfig const& block : project.Blocks()) {
        configs[block.protocol] = &block;
        begins[&block] = 0;
    }
    observation.Watch(project.Blocks());
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
    begins.at(&config) = dorvel::Environment().Now();
    observation.BeginCycle(config);
    times.Begin(config);
}

void CycleWatch::End(ScadaProtocol const& protocol, unsigned long long cycle, bool ran) {
    BlockConfig const& config = ConfigOf(protocol);
    CycleFigures const figures = times.End(config);
    Here() = {&config, nullptr, nullptr};
    BlockSnapshot snapshot = TakeSnapshot(config, cycle, project.Runtime().Variables());
    // Not asked of the host, whose state may have changed since: blocks have no other reason not to run.
    snapshot.isStandby = !ran;
    snapshot.times = figures;
    Explain(snapshot, begins.at(&config));
    follower(snapshot);
    Here() = {};
}

// Adds what the datagrams show.
void CycleWatch::Explain(BlockSnapshot& snapshot, long long begin) {
    BlockObserver* const observer = observation.Of(*snapshot.config);
    for (VariableSnapshot& variable : snapshot.variables) {
        PointState const& point = observer->Points().StateOf(*variable.config);
        variable.suspect = point.suspect;
        bool const isTaken = variable.state.Time >= begin;
        if (point.isFresh && point.suspect.empty() && !isTaken && !IsFault(snapshot)) {
            observer->AddCause(CauseKind::NotTaken, variable.config,
                               "the driver takes no value for " + tools::Printable(variable.config->name) +
                                   " from this answer",
                               observation.Time());
        }
    }
    snapshot.causes = observation.EndCycle(*snapshot.config);
}

BlockConfig const& CycleWatch::ConfigOf(ScadaProtocol const& protocol) const {
    return *configs.at(&protocol);
}

}  // namespace workbench
