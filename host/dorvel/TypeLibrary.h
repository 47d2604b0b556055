#pragma once

struct lua_State;

namespace dorvel {

// Gives a Lua state the table TYPES, with Elementary (name of the IEC 61131-3 type to the number of the
// built-in type that holds its values) and an empty StandardFB, and the function FBMetadata. May raise a Lua
// error.
void OpenTypes(lua_State* L);

}  // namespace dorvel
