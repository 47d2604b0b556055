#pragma once

#include <string>
#include <vector>

#include "FieldReader.h"
#include "Finding.h"
#include "Project.h"
#include "ScriptValue.h"

namespace workbench {

// Convert the tables of a project to configuration. They need no Lua state. Each adds every mistake that it
// finds to the list, in the order of the fields, and goes on with the next field; what has a mistake keeps
// its default.

// Task{ Name=..., Period=milliseconds }.
TaskConfig CheckTask(tools::ScriptValue const& value, Place const& where, Findings& mistakes);

// BACnet.new{ ... }. Variables with mistakes are left out.
BlockConfig CheckBlock(tools::ScriptValue const& value, BlockSource const& source, Findings& mistakes);

// One entry of Vars. The mistakes name neither block nor variable.
VariableConfig CheckVariable(tools::ScriptValue const& value, Findings& mistakes);

// The fields of a variable and of a block that only the workbench has (WorkbenchFields.cpp), and their names.
void ReadWorkbenchFields(FieldReader const& fields, VariableConfig& variable, Findings& mistakes);
void ReadWorkbenchFields(FieldReader const& fields, BlockConfig& block, Findings& mistakes);
std::vector<std::string> const& WorkbenchFieldsOfVariable();
std::vector<std::string> const& WorkbenchFieldsOfBlock();

}  // namespace workbench
