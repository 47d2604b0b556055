#pragma once

#include <deque>
#include <string>

#include "Observation.h"

namespace workbench {

// The values that were written at a priority and that the devices have acknowledged, one a line, and how to
// release them. Empty without any. To be called when the runtime has stopped.
std::string HeldWritesText(Observation const& observation, std::deque<BlockConfig> const& blocks);

}  // namespace workbench
