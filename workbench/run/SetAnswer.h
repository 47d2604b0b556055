#pragma once

#include <string>

#include "opcua/OpcUa_Variant.h"

namespace workbench {

// The immediate answer to a value that the user sets.
struct SetAnswer {
    std::string target;      // "Block.Variable", or the line that is not a command
    OpcUa_VariantHlp value;  // null with a mistake
    std::string mistake;     // empty: the value is pending
};

// "AHU.Setpoint = 21.5: pending", or the mistake.
std::string AnswerText(SetAnswer const& answer, long long localDiff);

}  // namespace workbench
