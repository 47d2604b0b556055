#pragma once

#include <string>

#include "Snapshot.h"

namespace workbench {

// A block's cycle as plain lines, one a variable, each with its line end. Thirteen columns with a tab between
// them, for cut and awk: time, block, cycle, state, variable, object, property, value, type, quality, status,
// time of the value ("-" before the first), write ("-" before the variable is set, then "21.5 pending" or the
// like).
std::string FormatLines(BlockSnapshot const& block);

// A line with the names of the columns, after a "#".
std::string LinesHeader();

}  // namespace workbench
