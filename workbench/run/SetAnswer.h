#pragma once

#include <string>

#include "opcua/OpcUa_Variant.h"

namespace workbench {

// What the user is told at once about a value to be set.
struct SetAnswer {
    std::string target;      // "Block.Variable", or the line that was not understood
    OpcUa_VariantHlp value;  // null with a mistake
    std::string mistake;     // empty: the value is on its way
};

// "AHU.Setpoint = 21.5: pending", or the mistake.
std::string AnswerText(SetAnswer const& answer, long long localDiff);

}  // namespace workbench
