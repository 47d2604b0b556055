#pragma once

#include <memory>

#include "MetricsOptions.h"
#include "Outlet.h"
#include "OutletParts.h"

namespace workbench {

// Null without --metrics. Binds the address: std::runtime_error if that is not possible.
std::unique_ptr<Outlet> MakeMetrics(MetricsOptions const& options, OutletParts const& parts);

}  // namespace workbench
