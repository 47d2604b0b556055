#pragma once

#include <string>
#include <vector>

#include "dorvel/Registration.h"

namespace dorvel {

struct RegisteredProcessor {
    std::string name;
    int order;
    ConfigProcessor processor;
    void const* source;
};

struct RegisteredLibrary {
    std::string name;
    lua_CFunction open;
};

// The registrations of add-ins in this process: processors in the order of their calls, libraries in the
// order of registration.
std::vector<RegisteredProcessor> RegisteredProcessors();
std::vector<RegisteredLibrary> RegisteredLibraries();

}  // namespace dorvel
