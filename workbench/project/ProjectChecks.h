#pragma once

#include "LuaValue.h"
#include "Project.h"

namespace workbench {

// Convert the tables of a project to configuration, or throw ProjectError. They need no Lua state.

// Task{ Name=..., Period=milliseconds }.
TaskConfig CheckTask(LuaValue const& value);

// BACnet.new{ ... }. The message begins with "block \"Name\": " as soon as the name is known.
BlockConfig CheckBlock(LuaValue const& value);

// One entry of Vars; the message begins with its first field.
VariableConfig CheckVariable(LuaValue const& value);

}  // namespace workbench
