#pragma once

#include <string>
#include <vector>

#include "OutletState.h"
#include "Snapshot.h"

namespace workbench {

// The state of a run in one line: "4 blocks, 2 in fault: AHU (No connection), Chiller (No connection); mqtt
// waiting: no broker". Blocks beyond the third one in fault are counted only; an outlet is left out while it
// is good. Names and texts of others are printable.
std::string RunStatus(std::vector<SharedSnapshot> const& blocks, std::vector<OutletState> const& outlets);

}  // namespace workbench
