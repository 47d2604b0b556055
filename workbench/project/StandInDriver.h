#pragma once

struct lua_State;

namespace workbench {

// Gives a script the BACnet.new of the add-in without the add-in: it returns an object without fields and
// does nothing. False when there is no memory.
bool OpenStandInDriver(lua_State* L);

}  // namespace workbench
