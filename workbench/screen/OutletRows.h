#pragma once

#include <string>
#include <vector>

#include "OutletState.h"
#include "Screen.h"

namespace workbench {

// The outlets of a run on a terminal: "mqtt       waiting  connection refused by ...  12 s", a line each. On
// a low screen one line has the names and healths of all. Nothing without outlets. now is a file time.
std::vector<std::string> OutletRows(std::vector<OutletState> const& outlets, Screen const& screen,
                                    long long now);

}  // namespace workbench
