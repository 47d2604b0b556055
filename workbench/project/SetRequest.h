#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "Project.h"
#include "opcua/OpcUa_Variant.h"

namespace workbench {

// A checked value that the user sets for a variable.
struct SetRequest {
    BlockConfig const* block;
    VariableConfig const* variable;
    OpcUa_VariantHlp value;  // of the variable's type; of the element's for a DataValue
};

// "Block.Variable".
std::string FullName(BlockConfig const& block, VariableConfig const& variable);

// The full names of the variables that can be set.
std::vector<std::string> WritableNames(std::deque<BlockConfig> const& blocks);
// What may be typed for them: these names, and "Chiller.Mode = manual" for each state text.
std::vector<std::string> Completions(std::deque<BlockConfig> const& blocks);

// The variables by their full names, for many requests. The blocks must outlive it and stay as they are.
class VariableIndex {
public:
    explicit VariableIndex(std::deque<BlockConfig> const& allBlocks);

    // As the function below.
    SetRequest MakeSetRequest(std::string const& name, std::string const& text) const;

private:
    std::deque<BlockConfig> const& blocks;
    std::unordered_map<std::string, std::pair<BlockConfig const*, VariableConfig const*>> variables;
};

// name is "Block.Variable", text the value as SetValue reads it (SetValue.h), or a schedule for people
// (ScheduleVariable.h). ProjectError for an unknown
// variable, one without Write = true, and a text that is not a value of it; with a suggestion where one is
// near.
SetRequest MakeSetRequest(std::deque<BlockConfig> const& blocks, std::string const& name,
                          std::string const& text);

// The same for a variable that is known; blanks around the value are ignored.
SetRequest MakeSetRequest(BlockConfig const& block, VariableConfig const& variable, std::string const& text);

// The same from "Block.Variable = value"; blanks around both parts are ignored. Names may contain "=".
SetRequest ReadAssignment(std::deque<BlockConfig> const& blocks, std::string_view assignment);

}  // namespace workbench
