#pragma once

#include "OutletList.h"
#include "OutletParts.h"
#include "RunOptions.h"

namespace workbench {

// Makes the outlets that the options ask for. std::runtime_error for one that cannot begin.
void AddOutlets(OutletList& outlets, RunOptions const& options, OutletParts const& parts);

}  // namespace workbench
