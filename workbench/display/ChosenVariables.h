#pragma once

#include <cstddef>
#include <vector>

#include "Snapshot.h"

namespace workbench {

// The variables of a snapshot that are shown, by their indices.
using ChosenVariables = std::vector<std::size_t>;

ChosenVariables AllVariables(BlockSnapshot const& block);

}  // namespace workbench
