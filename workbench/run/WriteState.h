#pragma once

#include <string>

#include "opcua/OpcUa_Variant.h"

namespace workbench {

// The progress of a value that the user has set.
enum class WriteStage {
    None,         // nothing has been set
    Pending,      // waits for the write phase, or for the cycle that reads it back
    Written,      // the variable has been read since and had the value
    Unconfirmed,  // the driver reported no failure, but the value read since is another one
    Refused       // the driver reported a failure
};

struct WriteState {
    WriteStage stage = WriteStage::None;
    OpcUa_VariantHlp value;
    std::string reason;  // for Refused the driver's text, for Unconfirmed the value read, otherwise empty
};

// "pending", "written", "unconfirmed", "refused"; empty for None.
char const* StageName(WriteStage stage);

// "21.5 pending", with withReason followed by the reason in brackets; empty for None.
std::string WriteText(WriteState const& write, long long localDiff, bool withReason);

}  // namespace workbench
