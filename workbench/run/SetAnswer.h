#pragma once

#include <string>

#include "Project.h"
#include "opcua/OpcUa_Variant.h"

namespace workbench {

// The immediate answer to a value that the user sets.
struct SetAnswer {
    std::string target;                        // "Block.Variable", or the line that is not a command
    OpcUa_VariantHlp value;                    // null with a mistake
    std::string mistake;                       // empty: the value is pending
    VariableConfig const* variable = nullptr;  // null with a mistake
};

// "AHU.Setpoint = 21.5 °C: pending", or the mistake.
std::string AnswerText(SetAnswer const& answer, long long localDiff);

}  // namespace workbench
