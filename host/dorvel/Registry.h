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

// What add-ins have registered in this process up to now: processors in the order in which they are called,
// libraries in the order of entry.
std::vector<RegisteredProcessor> RegisteredProcessors();
std::vector<RegisteredLibrary> RegisteredLibraries();

}  // namespace dorvel
