#pragma once

#include "HostApi.h"

struct lua_State;
class ControllerConfig;

using lua_CFunction = int (*)(lua_State* L);

// Stages of the runtime that configuration processors are told of, in the order in which they come.
enum class ConfigProcessorMode : int {
    Load = 1,
    Loaded = 2,
    Start = 6,    // the tasks are about to run
    Running = 7,  // the tasks run
    Stop = 8,     // the tasks are to end
    Stopped = 9   // the tasks have ended
};

using ConfigProcessor = int (*)(void const* source, ConfigProcessorMode mode, ControllerConfig* config);

// Enters a callback under a name. Processors are called by ascending order number, the same number in order
// of entry. 0, or -1 when the name is taken. The last three arguments are kept for the host.
DORVEL_HOST_API int RegisterConfigProcessor(char const* name, int order, ConfigProcessor processor,
                                            void const* source, void* reserved1, void* reserved2);

// Enters a library under a name; the runtime calls open for every Lua state that it prepares. 0, or -1 when
// the name is taken.
DORVEL_HOST_API int RegisterExternalSTLib(char const* name, lua_CFunction open);
