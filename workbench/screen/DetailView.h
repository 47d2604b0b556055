#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "PlantRows.h"
#include "Screen.h"
#include "ValuesForPeople.h"
#include "VariableFacts.h"

namespace workbench {

// All that is known of a variable, as lines for the screen; long texts take several. block and variable are
// indexes in the plant.
std::vector<std::string> DetailLines(PlantRows const& rows, std::size_t block, std::size_t variable,
                                     VariableFacts const& facts, ValuesForPeople& values,
                                     Screen const& screen, long long now);

}  // namespace workbench
