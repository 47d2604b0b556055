#pragma once

#include "Snapshot.h"
#include "TableLine.h"

namespace workbench {

// Colours for what words say too.
Colour QualityColour(OpcUa_StatusCode status);
Colour WriteColour(WriteStage stage);
Colour BlockColour(BlockSnapshot const& block);

}  // namespace workbench
