#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Input.h"
#include "NameTable.h"
#include "OutletStatus.h"
#include "ShownValue.h"
#include "Snapshot.h"

namespace fuzz {

// Two blocks without a driver, named by the input: the first variable of a block is a number, the second one
// a text.
class PlayedPlant {
public:
    static constexpr std::size_t BlockCount = 2;
    static constexpr std::size_t VariableCount = 2;  // of a block

    explicit PlayedPlant(Input& input) {
        for (std::size_t block = 0; block < BlockCount; ++block) {
            blocks.emplace_back();
            blocks.back().name = input.Text(input.Octet());
            for (std::size_t i = 0; i < VariableCount; ++i) {
                workbench::VariableConfig variable;
                variable.name = input.Text(input.Octet());
                variable.type = i == 0 ? OpcUaType_Float : OpcUaType_String;
                variable.objectType = workbench::ObjectTypes().FindName("analog-value");
                variable.property = workbench::Properties().FindName("present-value");
                std::size_t const id = block * VariableCount + i + 1;
                variable.readId = static_cast<long long>(id);
                variable.writeId = variable.readId + 100;
                variable.write = input.Below(8) != 0;
                blocks.back().variables.push_back(std::move(variable));
            }
        }
        for (workbench::BlockConfig const& block : blocks) {
            snapshots.emplace_back();
            snapshots.back().config = &block;
            for (workbench::VariableConfig const& variable : block.variables) {
                snapshots.back().variables.push_back({&variable, {}});
            }
        }
    }

    std::vector<workbench::SharedSnapshot> Shared() const {
        std::vector<workbench::SharedSnapshot> shared;
        for (workbench::BlockSnapshot const& snapshot : snapshots) {
            shared.push_back(std::make_shared<workbench::BlockSnapshot const>(snapshot));
        }
        return shared;
    }

    std::deque<workbench::BlockConfig> blocks;
    std::vector<workbench::BlockSnapshot> snapshots;
};

// A new value, of the input, a second after the one before.
inline void ChangeValue(Input& input, workbench::VariableSnapshot& variable) {
    variable.state.Time += 10000000;
    if (workbench::ValueType(*variable.config) == OpcUaType_Float) {
        variable.state.Value.SetFloat(static_cast<float>(input.Octet()) / 8);
    } else {
        std::string const text = input.Text(input.Octet());
        variable.state.Value.SetUTF8String(text.data(), static_cast<int>(text.size()));
    }
}

inline unsigned long long CountOf(workbench::OutletStatus const& status, std::string const& figure) {
    for (auto const& count : status.State().counts) {
        if (count.first == figure) {
            return count.second;
        }
    }
    return 0;
}

}  // namespace fuzz
