#pragma once

#include <cstddef>
#include <string>

#include "VerifyReport.h"

namespace workbench {

// How the result is shown to people.
struct TextStyle {
    std::size_t width = 0;  // of the terminal; 0: no limit
    bool isColoured = false;
};

// For each block a heading with its device, one line for each variable, and the explanation of each finding;
// then the summary.
std::string VerifyText(VerifyReport const& report, TextStyle const& style);

}  // namespace workbench
