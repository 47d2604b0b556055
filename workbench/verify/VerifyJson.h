#pragma once

#include <string>

#include "VerifyReport.h"

namespace workbench {

// One JSON object on a line for each variable, then one for its block, and one for the summary at the end.
// The field "kind" says which: "variable", "block" or "summary".
std::string VerifyJson(VerifyReport const& report);

}  // namespace workbench
