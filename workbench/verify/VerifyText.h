#pragma once

#include <string>

#include "TextStyle.h"
#include "VerifyReport.h"

namespace workbench {

// For each block a heading with its device, one line for each variable, and the explanation of each finding;
// then the summary.
std::string VerifyText(VerifyReport const& report, TextStyle const& style);

}  // namespace workbench
