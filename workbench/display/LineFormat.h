#pragma once

#include <string>

#include "ChosenVariables.h"
#include "Snapshot.h"

namespace workbench {

// A block's cycle as plain lines, one a variable, each with its line end. Seventeen columns with a tab
// between them, for cut and awk: time, block, cycle, state, variable, object, property, value, type, quality,
// status, time of the value ("-" before the first), write ("-" before the variable is set, then "21.5
// pending" or the like), suspect ("-", or the error of the device that was read as a value), why (the causes
// of the block's state, "-" for none), the time that the cycle took in milliseconds, overruns of the period.
// New columns come after these.
std::string FormatLines(BlockSnapshot const& block);
// The same with only these variables.
std::string FormatLines(BlockSnapshot const& block, ChosenVariables const& variables);

// A line with the names of the columns, after a "#".
std::string LinesHeader();

}  // namespace workbench
