#pragma once

#include <vector>

#include "Project.h"

namespace workbench {

// The task that calls a block. Null if it is not among these.
TaskConfig const* TaskOf(BlockConfig const& block, std::vector<TaskConfig> const& tasks);

}  // namespace workbench
