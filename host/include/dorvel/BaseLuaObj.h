#pragma once

#include <mutex>
#include <string>

#include "HostApi.h"

struct lua_State;

// The state of an object that scripts can see. CheckIndexProlog serves it under the reserved keys.
struct LuaObjState {
    mutable std::mutex Mutex;
    bool Finished = false;  // the fault state has been reported at least once
    bool Fault = false;
    std::string ErrorText;
};

// Base of the objects that live inside a Lua userdata.
class DORVEL_HOST_API BaseLuaObj {
public:
    BaseLuaObj() = default;
    BaseLuaObj(BaseLuaObj const&) = delete;
    BaseLuaObj& operator=(BaseLuaObj const&) = delete;
    virtual ~BaseLuaObj();

    // True when the host serves the key at this stack index itself. A key without a text form yields true; a
    // text is passed to CheckIndexProlog.
    virtual bool check(lua_State* L, int index);

    // Called once the object has its fields. Registers the userdata on top of the stack with the runtime that
    // owns the Lua state, if there is one (dorvel/Runtime.h).
    void Init(lua_State* L);

    LuaObjState const& State() const { return state; }

protected:
    LuaObjState state;
};

// The keys that the host serves for every block: "Fault" (boolean, nil before the first cycle) and
// "ErrorText". For a read (object and key on the stack) pushes the value and returns 1; a write to one of
// them is a Lua error. Returns 0 for every other key. state is the LuaObjState of the object.
DORVEL_HOST_API int CheckIndexProlog(lua_State* L, char const* key, void* state);
