#pragma once

#include <string>

#include "Project.h"
#include "opcua/OpcUa_Variant.h"

namespace workbench {

// The progress of a value that the user has set.
enum class WriteStage {
    None,         // nothing has been set
    Pending,      // waits for the write phase, or for the cycle that reads it back
    Written,      // the variable has been read since and had the value
    Unconfirmed,  // no failure was reported, but the value read since is another one
    Differs,      // the device holds another value than the one that was set, because that was sent to it
    Refused       // the driver reported a failure, or the device aborted
};

struct WriteState {
    WriteStage stage = WriteStage::None;
    OpcUa_VariantHlp value;
    std::string reason;    // the driver's or the device's, or what differs; empty for Written
    std::string device{};  // the value that the device holds, where it is another one and known
};

// "pending", "written", "unconfirmed", "differs", "refused"; empty for None.
char const* StageName(WriteStage stage);

// "21.5 °C pending" with the variable's unit or state text, with withReason followed by the reason in
// brackets, otherwise "200 differs (-56)" with the device's value; empty for None.
std::string WriteText(VariableConfig const& variable, WriteState const& write, long long localDiff,
                      bool withReason);
// The same with the value in other words.
std::string WriteText(std::string const& value, WriteState const& write, bool withReason);

}  // namespace workbench
