#pragma once

#include <memory>

#include "Outlet.h"
#include "OutletParts.h"
#include "RecordOptions.h"

namespace workbench {

// Throws an exception that becomes a mistake on the command line for an age or a size that is not one. Call
// it when the command line is complete.
void CheckRecordOptions(RecordOptions const& options);

// The recording of a run; null without --record. Throws std::runtime_error for a file that cannot be recorded
// into.
std::unique_ptr<Outlet> MakeRecording(RecordOptions const& options, OutletParts const& parts);

}  // namespace workbench
