#pragma once

#include "RunOptions.h"

namespace workbench {

// Throws an exception that becomes a mistake on the command line if the options ask for a part that this
// program was built without. Call it when the command line is complete, so that --help still works.
void RefuseMissingParts(RunOptions const& options);

}  // namespace workbench
