#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "Project.h"
#include "opcua/OpcUa_Variant.h"

namespace workbench {

// A value that the user wants in a variable of the device, checked.
struct SetRequest {
    BlockConfig const* block;
    VariableConfig const* variable;
    OpcUa_VariantHlp value;  // of the variable's type; of the element's for a DataValue
};

_OpcUa_BuiltInType ValueType(VariableConfig const& variable);

// "Block.Variable".
std::string FullName(BlockConfig const& block, VariableConfig const& variable);

// Of the variables that can be set.
std::vector<std::string> WritableNames(std::deque<BlockConfig> const& blocks);

// Whether a write goes to the property that the variable reads. The driver writes the constants of a loop and
// the schedules of a schedule themselves, and everything else to the present value.
bool IsWrittenItself(VariableConfig const& variable);

// name is "Block.Variable", text the value in its lexical form. ProjectError for a variable that is not there
// or has not Write = true, and for a text that is no value of its type: with a suggestion where one is near.
SetRequest MakeSetRequest(std::deque<BlockConfig> const& blocks, std::string const& name,
                          std::string const& text);

// The same from "Block.Variable = value", blanks around both parts left out. Names may hold "=" too.
SetRequest ReadAssignment(std::deque<BlockConfig> const& blocks, std::string_view assignment);

}  // namespace workbench
