#pragma once

#include "QualityText.h"
#include "Snapshot.h"

namespace workbench {

// The quality with which a value leaves the workbench: that of the variable, but bad while its block is in
// fault, and uncertain at best while it is on standby, since nobody asks the device then. The driver changes
// the quality of a DataValue itself; a variable of another type would stay good.
QualityKind PublishedQuality(BlockSnapshot const& block, VariableSnapshot const& variable);

// "good", "uncertain", "bad".
char const* QualityName(QualityKind quality);

}  // namespace workbench
