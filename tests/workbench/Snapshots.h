#pragma once

#include <deque>
#include <string>

#include "NameTable.h"
#include "Project.h"
#include "Projects.h"
#include "Snapshot.h"

namespace test {

constexpr long long Second = 10000000;
constexpr long long Hour = 3600 * Second;
// 15 March 2024 11:34:56.789 UTC, an hour less than local.
constexpr long long Noon = 116444736000000000LL + 1710502496LL * Second + 7890000;

// Blocks after a cycle, without a runtime.
class Plant {
public:
    // Adds a block without variables. The reference stays valid.
    workbench::BlockSnapshot& AddBlock(std::string const& name, unsigned long long cycle = 3) {
        blocks.emplace_back();
        blocks.back().name = name;
        blocks.back().address = "192.168.1.20:47808";
        snapshots.emplace_back();
        workbench::BlockSnapshot& snapshot = snapshots.back();
        snapshot.config = &blocks.back();
        snapshot.cycle = cycle;
        snapshot.isReported = cycle > 0;
        snapshot.time = Noon;
        snapshot.localDiff = Hour;
        return snapshot;
    }

    workbench::VariableConfig& AddVariable(std::string const& name, OpcUa_BuiltInTypeHlp const& type,
                                           OpcUa_VariantHlp value, OpcUa_StatusCode status = OpcUa_Good,
                                           long long time = Noon) {
        variables.push_back({name, type, workbench::ObjectTypes().FindCode(1),
                             workbench::Properties().FindCode(0),
                             static_cast<int>(snapshots.back().variables.size() + 1), 0});
        snapshots.back().variables.push_back({&variables.back(), {std::move(value), status, time}});
        return variables.back();
    }

    std::vector<workbench::BlockSnapshot> All() const { return {snapshots.begin(), snapshots.end()}; }
    std::vector<workbench::SharedSnapshot> Shared() const {
        std::vector<workbench::SharedSnapshot> shared;
        for (workbench::BlockSnapshot const& snapshot : snapshots) {
            shared.push_back(std::make_shared<workbench::BlockSnapshot const>(snapshot));
        }
        return shared;
    }

private:
    std::deque<workbench::BlockConfig> blocks;
    std::deque<workbench::VariableConfig> variables;
    std::deque<workbench::BlockSnapshot> snapshots;
};

inline OpcUa_BuiltInTypeHlp DataValueOf(_OpcUa_BuiltInType type) {
    return {OpcUaType_DataValue, type};
}

}  // namespace test
