#pragma once

#include <string>
#include <vector>

namespace workbench {

// What the details of a variable show besides the newest cycle.
struct VariableFacts {
    std::vector<std::string> log;  // its last lines, oldest first
};

}  // namespace workbench
