#pragma once

#include <deque>
#include <string>
#include <vector>

#include "Observation.h"

namespace workbench {

// The values that were written at a priority and that the devices hold, or may hold because there was no
// answer, one a line, and how to release them. Of blocks that write the same, the last write counts. Empty
// without any. To be called when the runtime has stopped.
std::string HeldWritesText(Observation const& observation, std::deque<BlockConfig> const& blocks);

// The same as lines that each stand alone, without their ends.
std::vector<std::string> HeldWriteLines(Observation const& observation,
                                        std::deque<BlockConfig> const& blocks);

}  // namespace workbench
