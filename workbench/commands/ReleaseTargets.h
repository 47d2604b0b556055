#pragma once

#include <string>
#include <vector>

#include "CommonOptions.h"
#include "PriorityRelease.h"

namespace workbench {

// The objects whose present value a project can write: those of variables with Write = true, each once. Runs
// the project's script, without the add-in. Throws ProjectError.
std::vector<ReleaseTarget> WritablePointsOf(std::string const& project, Params const& params);

}  // namespace workbench
