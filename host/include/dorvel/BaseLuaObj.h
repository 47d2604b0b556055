#pragma once

#include <mutex>
#include <string>

#include "HostApi.h"

struct lua_State;

// What the host keeps of an object that scripts can see, and serves under the reserved keys of
// CheckIndexProlog.
struct LuaObjState {
    mutable std::mutex Mutex;
    bool Finished = false;  // a cycle has told the fault state at least once
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

    // Whether the host serves this index itself. The key is at stack place index: one that gives no text
    // yields true, a text is answered by CheckIndexProlog.
    virtual bool check(lua_State* L, int index);

    // Called when the object has its fields: enters the userdata on top of the stack into the runtime that
    // owns the Lua state, if there is one (dorvel/Runtime.h).
    void Init(lua_State* L);

    LuaObjState const& State() const { return state; }

protected:
    LuaObjState state;
};

// The keys that the host serves for every block: "Fault" (boolean, nil before the first cycle) and
// "ErrorText". For a read (object and key on the stack) it pushes the value and gives 1; a write to one of
// them is a Lua error. 0 for every other key. state is the LuaObjState of the object.
DORVEL_HOST_API int CheckIndexProlog(lua_State* L, char const* key, void* state);
