#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "PlantMetrics.h"
#include "Projects.h"
#include "Snapshots.h"

namespace test {

// Blocks with a cycle each, for the metrics of a run.
class MetricsPlant {
public:
    workbench::BlockConfig& AddBlock(std::string const& name) {
        blocks.emplace_back();
        blocks.back().name = name;
        blocks.back().address = "192.168.1.20:47808";
        return blocks.back();
    }

    workbench::VariableConfig& AddVariable(std::string const& name, _OpcUa_BuiltInType type) {
        workbench::BlockConfig& block = blocks.back();
        block.variables.push_back({name, DataValueOf(type), workbench::ObjectTypes().FindName("analog-value"),
                                   workbench::Properties().FindName("present-value"),
                                   static_cast<int>(block.variables.size() + 1), 0});
        return block.variables.back();
    }

    // A cycle of each block, with these values in the order of the variables.
    void Cycle(std::vector<OpcUa_VariantHlp> const& values) {
        snapshots.clear();
        std::size_t next = 0;
        for (workbench::BlockConfig const& block : blocks) {
            workbench::BlockSnapshot snapshot;
            snapshot.config = &block;
            snapshot.cycle = 3;
            snapshot.isReported = true;
            snapshot.time = Noon;
            for (workbench::VariableConfig const& variable : block.variables) {
                snapshot.variables.push_back(
                    {&variable,
                     {next < values.size() ? values[next] : OpcUa_VariantHlp(), OpcUa_Good, Noon}});
                ++next;
            }
            snapshots.push_back(snapshot);
        }
    }

    workbench::RunState State() const {
        workbench::RunState state;
        for (workbench::BlockSnapshot const& snapshot : snapshots) {
            state.blocks.push_back(std::make_shared<workbench::BlockSnapshot const>(snapshot));
        }
        state.counts.resize(blocks.size());
        state.traffic = traffic;
        state.outlets = outlets;
        return state;
    }

    std::string Text() const {
        return workbench::PlantMetrics({"plant.lua", "1.2.3", Noon, blocks, tasks}).Text(State());
    }

    std::deque<workbench::BlockConfig> blocks;
    std::vector<workbench::TaskConfig> tasks{{"Fast", 500}};
    std::vector<workbench::BlockSnapshot> snapshots;
    workbench::TrafficFigures traffic;
    std::vector<workbench::OutletState> outlets;
};

}  // namespace test
