#pragma once

#include "Snapshot.h"

namespace workbench {

// What counts as a difference between a cycle that somebody has and a later one.

// Whether the value is another one. Of numbers only a difference beyond the dead band counts; states and
// Booleans have no dead band; a number that becomes NaN is another one, NaN again is the same.
bool HasOtherValue(VariableConfig const& variable, OpcUa_VariantHlp const& shown, OpcUa_VariantHlp const& now,
                   double deadBand);

// Whether both have the same fault, reason, standby and causes, and had a cycle. Counts and times of causes
// do not count.
bool HasSameState(BlockSnapshot const& left, BlockSnapshot const& right);

// All that HasSameState compares.
BlockSnapshot WithoutVariables(BlockSnapshot const& block);

}  // namespace workbench
