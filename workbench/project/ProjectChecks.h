#pragma once

#include "Project.h"
#include "ScriptValue.h"

namespace workbench {

// Convert the tables of a project to configuration, or throw ProjectError. They need no Lua state.

// Task{ Name=..., Period=milliseconds }.
TaskConfig CheckTask(tools::ScriptValue const& value);

// BACnet.new{ ... }. The message begins with "block \"Name\": " as soon as the name is known.
BlockConfig CheckBlock(tools::ScriptValue const& value);

// One entry of Vars; the message begins with its first field.
VariableConfig CheckVariable(tools::ScriptValue const& value);

}  // namespace workbench
