#pragma once

#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "CycleCounter.h"
#include "MeasuringEnvironment.h"
#include "MetricsText.h"
#include "OutletState.h"
#include "Snapshot.h"

namespace workbench {

// A run at one time. blocks and counts are in the order of the project.
struct RunState {
    std::vector<SharedSnapshot> blocks;
    std::vector<BlockCounts> counts;
    TrafficFigures traffic;
    std::vector<OutletState> outlets;
};

// Writes the metrics of a run. Needs no clock and holds no lock. Does not change after its constructor.
class PlantMetrics {
public:
    struct Run {
        std::string project;  // its path
        std::string version;  // of the program
        long long started;    // a file time
        std::deque<BlockConfig> const& blocks;
        std::vector<TaskConfig> const& tasks;
    };

    // The labels are made here: names that look the same when they are written get a number, "T (2)", since a
    // series that is there twice makes a scrape invalid. The configuration must outlive the object.
    explicit PlantMetrics(Run const& run);

    // As a scrape has it (MetricFamilies.h).
    std::string Text(RunState const& state) const;

private:
    struct VariableLabels {
        std::string own;  // {block=...,variable=...}
        // The same with what is known of the variable; empty if its values are not numbers.
        std::string value;
    };
    struct BlockLabels {
        std::string name;
        std::string own;
        std::string info;
        bool hasWrites = false;
        std::vector<VariableLabels> variables;
    };

    struct TaskLabels {
        std::string name;
        std::string own;  // {task=...}
    };

    void AddBlock(BlockConfig const& block, std::set<std::string>& taken);
    void WriteVariables(RunState const& state, MetricsText& text) const;
    void WriteBlocks(RunState const& state, MetricsText& text) const;
    void WriteCauses(RunState const& state, MetricsText& text) const;
    void WriteWrites(RunState const& state, MetricsText& text) const;
    void WriteTasks(RunState const& state, MetricsText& text) const;

    Run run;
    std::map<TaskConfig const*, TaskLabels> tasks;
    std::vector<BlockLabels> labels;
};

}  // namespace workbench
