#pragma once

#include "Project.h"

struct lua_State;

namespace workbench {

// Pushes the table from which the driver reads a block: its fields, and Vars in the form of the runtime, with
// codes instead of names and ids of the store instead of variables. May raise a Lua error when there is no
// memory; it holds no objects with destructors.
void PushDriverTable(lua_State* L, BlockConfig const& block);

}  // namespace workbench
