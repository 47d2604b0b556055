#pragma once

#include "Project.h"

struct lua_State;

namespace workbench {

// Pushes the table that the driver reads a block from: its fields, and Vars in the raw form of the runtime,
// where names have become codes and variables are ids of the store. May raise a Lua error when memory is out;
// it holds nothing of its own then.
void PushDriverTable(lua_State* L, BlockConfig const& block);

}  // namespace workbench
