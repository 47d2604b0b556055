#pragma once

#include "HostApi.h"

struct lua_State;
class ControllerConfig;

using lua_CFunction = int (*)(lua_State* L);

// Stages of the runtime, in order. Configuration processors are called at each.
enum class ConfigProcessorMode : int {
    Load = 1,
    Loaded = 2,
    Start = 6,    // the tasks are about to run
    Running = 7,  // the tasks run
    Stop = 8,     // the tasks are about to end
    Stopped = 9   // the tasks have ended
};

using ConfigProcessor = int (*)(void const* source, ConfigProcessorMode mode, ControllerConfig* config);

// Registers a callback under a name. Processors are called in ascending order number, equal numbers in the
// order of registration. Returns 0, or -1 when the name is taken or the name or the processor is null. source
// is passed to the processor; the reserved arguments are ignored.
DORVEL_HOST_API int RegisterConfigProcessor(char const* name, int order, ConfigProcessor processor,
                                            void const* source, void* reserved1, void* reserved2);

// Registers a library under a name. The runtime calls open for every Lua state that it prepares. Returns 0,
// or -1 when the name is taken or an argument is null.
DORVEL_HOST_API int RegisterExternalSTLib(char const* name, lua_CFunction open);
