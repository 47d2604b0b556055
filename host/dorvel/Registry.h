#pragma once

#include <string>
#include <vector>

#include "dorvel/Registration.h"

namespace dorvel {

struct RegisteredProcessor {
    std::string Name;
    int Order;
    ConfigProcessor Processor;
    void const* Source;
};

struct RegisteredLibrary {
    std::string Name;
    lua_CFunction Open;
};

// What add-ins have registered in this process up to now: processors in the order in which they are called,
// libraries in the order of entry.
std::vector<RegisteredProcessor> RegisteredProcessors();
std::vector<RegisteredLibrary> RegisteredLibraries();

}  // namespace dorvel
