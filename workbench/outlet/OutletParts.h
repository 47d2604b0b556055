#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "LogBuffer.h"
#include "MeasuringEnvironment.h"
#include "OutletState.h"
#include "PlantMemory.h"
#include "Project.h"
#include "ValueSetter.h"

namespace workbench {

// What an outlet may know of a run. All of it outlives the outlets, and is thread-safe or does not change.
struct OutletParts {
    std::string project;  // its path
    std::string version;  // of the program
    std::deque<BlockConfig> const& blocks;
    std::vector<TaskConfig> const& tasks;
    PlantMemory const& memory;
    ValueSetter& setter;
    LogBuffer& log;
    std::function<TrafficFigures()> traffic;
    std::function<std::vector<OutletState>()> outlets{};  // of all outlets; may be empty
};

}  // namespace workbench
