#pragma once

#include <string>
#include <vector>

#include "FindingCode.h"
#include "Project.h"

namespace workbench {

// One thing that is wrong with a project, or that will surprise its author. Names are as in the project and
// may have any octets; empty means none.
struct Finding {
    FindingCode code;
    Place where;
    std::string block;
    std::string subject;  // what has no name or is neither block nor variable: "variable 2", "task"
    std::string variable;
    std::string field;
    std::string message;  // what is wrong, and its effect at run time
    std::string advice;   // empty: that of the code

    // Everything but the place, as one line: block "B": variable "V": field "F": message.
    std::string Text() const;
    // The message with the effect, if it is of the code.
    std::string FullMessage() const;
    std::string Advice() const { return advice.empty() ? RowOf(code).advice : advice; }
};

using Findings = std::vector<Finding>;

}  // namespace workbench
