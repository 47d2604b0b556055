#pragma once

#include "ScriptValue.h"

struct lua_State;

namespace simulator {

// Takes the value on top of the stack off it. Throws Mistake for what a device file cannot mean: a
// function, a table with keys that are neither names nor 1, 2, 3 ..., or one nested without end.
ScriptValue ReadScriptValue(lua_State* lua);

}  // namespace simulator
