#include "Whereabouts.h"

#include <cstdio>
#include <string>

namespace workbench {

Whereabouts& Here() {
    thread_local Whereabouts here;
    return here;
}

void EnterObject(std::uint32_t type, std::uint32_t number) {
    Whereabouts& here = Here();
    here.object = here.variable = nullptr;
    if (!here.block) {
        return;
    }
    for (VariableConfig const& variable : here.block->variables) {
        if (static_cast<std::uint32_t>(variable.objectType->bacnetNumber) != type ||
            static_cast<std::uint32_t>(variable.objectNumber) != number) {
            continue;
        }
        here.variable = here.object ? nullptr : &variable;
        if (here.object) {
            return;
        }
        here.object = &variable;
    }
}

void FollowTrace(std::string_view line) {
    constexpr std::string_view object = "Object type ";
    if (line.compare(0, object.size(), object) == 0) {
        std::uint32_t type = 0;
        std::uint32_t number = 0;
        if (std::sscanf(std::string(line).c_str(), "Object type %u number %u", &type, &number) == 2) {
            EnterObject(type, number);
        }
    } else if (line == "read start" || line == "read done") {
        Here().object = Here().variable = nullptr;
    }
}

}  // namespace workbench
