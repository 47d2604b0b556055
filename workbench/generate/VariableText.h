#pragma once

#include <string>

#include "PointChoice.h"

namespace workbench {

struct VariableStyle {
    bool isWritten = false;  // Write = true
    bool isBrief = false;    // without Description and Point
};

// The table of one variable in a project, in one line or several, without a comma after it: "{ Name = ...,
// ... }". Lines after the first have `indent` blanks and two more.
std::string VariableText(ObjectRecord const& object, std::string const& name, PointChoice const& choice,
                         VariableStyle const& style, std::size_t indent);

}  // namespace workbench
