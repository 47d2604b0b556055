#pragma once

#include <memory>

#include "MqttOptions.h"
#include "Outlet.h"
#include "OutletParts.h"

namespace workbench {

// The outlet of --mqtt; null without. What its user should know goes to the log. std::runtime_error for a
// file with a mistake, and if the program was built without it.
std::unique_ptr<Outlet> MakeMqtt(MqttOptions const& options, OutletParts const& parts);

}  // namespace workbench
