#pragma once

#include <string>

#include "opcua/OpcUa_Variant.h"

namespace workbench {

// How far a value has come that the user has set.
enum class WriteStage {
    None,         // nothing has been set
    Pending,      // it waits for the write phase, or for the cycle that reads it back
    Written,      // the variable has been read since, and had the value
    Unconfirmed,  // the driver told no failure, but the value read since is another one
    Refused       // the driver told a failure
};

struct WriteState {
    WriteStage stage = WriteStage::None;
    OpcUa_VariantHlp value;
    std::string reason;  // of Refused the driver's words; of Unconfirmed what was read; else empty
};

// "pending", "written", "unconfirmed", "refused"; "" for None.
char const* StageName(WriteStage stage);

// "21.5 pending", with the reason behind it in brackets when asked for; "" for None.
std::string WriteText(WriteState const& write, long long localDiff, bool withReason);

}  // namespace workbench
