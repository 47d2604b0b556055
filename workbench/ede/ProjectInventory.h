#pragma once

#include <deque>
#include <map>
#include <string>

#include "DeviceRecord.h"
#include "Project.h"

namespace workbench {

// The devices and objects of a project, as its fields describe them: DeviceInstance of a block, Unit,
// StateTexts, Description and Point of a variable. Blocks of the same device are one device, variables of the
// same object one object. Its name is ObjectName in Point, otherwise that of the variable that reads its
// value. Throws ProjectError with file and line if a block has no DeviceInstance.
Inventory InventoryOfProject(std::deque<BlockConfig> const& blocks);

// The same, of a file. Runs its script, without the add-in. Throws ProjectError for its first mistake.
Inventory InventoryOfProject(std::string const& path, std::map<std::string, std::string> const& params);

}  // namespace workbench
