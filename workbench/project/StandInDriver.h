#pragma once

struct lua_State;

namespace workbench {

// Gives a script the BACnet.new of the add-in without the add-in. The object that it returns has the fields
// that were passed and those that are set later, and a call of it runs no cycle. Unlike the add-in's it has
// no defaults. False when there is no memory.
bool OpenStandInDriver(lua_State* L);

}  // namespace workbench
