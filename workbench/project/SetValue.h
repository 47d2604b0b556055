#pragma once

#include <string>
#include <vector>

#include "Project.h"
#include "opcua/OpcUa_Variant.h"

namespace workbench {

// The value that a person means for a variable, of the variable's type; of the element's for a DataValue. The
// text is a value in its lexical form, a state text of the variable (exact, or in other letter case if only
// one is meant), or a number with the variable's unit after it, by symbol or name. What is a value of the
// type is that value, also if a state has it as its text. ProjectError for any other text, and for one that
// several states have.
OpcUa_VariantHlp SetValue(VariableConfig const& variable, std::string const& text);

// The state texts that SetValue takes for the variable, in their order.
std::vector<std::string> SettableWords(VariableConfig const& variable);

}  // namespace workbench
