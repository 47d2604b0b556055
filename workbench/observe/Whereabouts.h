#pragma once

#include <cstdint>
#include <string_view>

#include "Project.h"

namespace workbench {

// What the driver is doing on a thread. Null where it is not known.
struct Whereabouts {
    BlockConfig const* block = nullptr;        // whose cycle is running
    VariableConfig const* object = nullptr;    // any variable of the object that is read or written
    VariableConfig const* variable = nullptr;  // the variable, if only one comes into question
};

// The state of the calling thread.
Whereabouts& Here();

// The object of the block is read now: sets the object, and the variable if the object has only one.
void EnterObject(std::uint32_t type, std::uint32_t number);

// The trace of the driver announces each object before its request, and the begin and the end of a poll. A
// line that does so changes the state of the thread; any other line has no effect.
void FollowTrace(std::string_view line);

}  // namespace workbench
