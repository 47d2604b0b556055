#pragma once

#include <string>
#include <vector>

#include "OutletState.h"
#include "TableLine.h"

namespace workbench {

// {"outlet":"mqtt","health":"good","text":"connected to ...","since":...,"counts":{"messages":1234}}, without
// a line end. Times and octets that are not UTF-8 as in JsonFormat.h.
std::string OutletJson(OutletState const& outlet, long long localDiff);
// {"outlets":[...]}, without a line end.
std::string OutletsJson(std::vector<OutletState> const& outlets, long long localDiff);

// A line for each outlet: "mqtt: good, connected to ...; 1234 messages, 3 commands".
std::string OutletLines(std::vector<OutletState> const& outlets);

Colour HealthColour(OutletHealth health);

}  // namespace workbench
