#pragma once

#include <optional>

#include "PointTable.h"
#include "WriteState.h"

namespace workbench {

// Whether the device holds what was set, by what it has answered since (BACnet by the standard, not as the
// driver reads it). Gives Written; Differs, if the device holds what was sent and that is another value; or
// Unconfirmed. No value if the device has not answered in this cycle, or if the values cannot be compared:
// dates, times and schedules.
std::optional<WriteState> CheckWrite(OpcUa_VariantHlp const& meant, PointWrite const& write,
                                     PointState const& point);

}  // namespace workbench
