#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Project.h"
#include "opcua/OpcUa_Variant.h"

namespace workbench {

// Values of variables for people, with the units and state texts of the project.

// How the numbers of a variable stand for states: those of a multi-state object begin at 1, those of a binary
// one at 0. Only the present value of such an object, and what can become it, is a state; the present value
// of a schedule is one if its type is Boolean or a whole number.
enum class States { None, FromZero, FromOne };
States StatesOf(VariableConfig const& variable);

_OpcUa_BuiltInType ValueType(VariableConfig const& variable);  // of the element for a DataValue
bool IsNumeric(_OpcUa_BuiltInType type);
// Whether its unit is shown: it has one, and its values are numbers and not states.
bool HasUnit(VariableConfig const& variable);

// The text of the state that the value is; none without one, or if it is empty.
std::optional<std::string> TextOfState(VariableConfig const& variable, OpcUa_Variant const& value);

// "21.5 °C", "2 (automatic)", "true (released)"; without unit and state text as ValueText (ValueText.h).
std::string ShownValue(VariableConfig const& variable, OpcUa_Variant const& value, long long localDiff);

}  // namespace workbench
