#include "ObjectTypeRows.h"

// Clauses 12.18 to 12.20.
namespace standard::rows {

namespace {

constexpr PropertyRow kInput[] = {
    required(P::Present_Value, D::Unsigned, "1"),
    optional(P::Device_Type, D::CharacterString),
    required(P::Number_Of_States, D::Unsigned, "4"),
    optional(P::State_Text, D::CharacterString, nullptr, Shape::Array),
    optional(P::Alarm_Values, D::Unsigned, nullptr, Shape::List),
    optional(P::Fault_Values, D::Unsigned, nullptr, Shape::List),
};

constexpr PropertyRow kOutput[] = {
    required(P::Present_Value, D::Unsigned, "1"),
    optional(P::Device_Type, D::CharacterString),
    required(P::Number_Of_States, D::Unsigned, "4"),
    optional(P::State_Text, D::CharacterString, nullptr, Shape::Array),
    required(P::Priority_Array, D::Priority, nullptr, Shape::Array),
    required(P::Relinquish_Default, D::Unsigned, "1"),
    optional(P::Feedback_Value, D::Unsigned, "1"),
};

constexpr PropertyRow kValue[] = {
    required(P::Present_Value, D::Unsigned, "1"),
    required(P::Number_Of_States, D::Unsigned, "4"),
    optional(P::State_Text, D::CharacterString, nullptr, Shape::Array),
    optional(P::Priority_Array, D::Priority, nullptr, Shape::Array),
    optional(P::Relinquish_Default, D::Unsigned),
    optional(P::Alarm_Values, D::Unsigned, nullptr, Shape::List),
    optional(P::Fault_Values, D::Unsigned, nullptr, Shape::List),
};

constexpr ObjectType kTypes[] = {
    {13, "multi_state_input", {group(kInput), group(kState), group(kReporting), {}}},
    {14, "multi_state_output", {group(kOutput), group(kState), group(kReporting), {}}},
    {19, "multi_state_value", {group(kValue), group(kState), group(kReporting), {}}},
};

}  // namespace

ObjectTypes multiStateTypes() {
    return {kTypes, std::size(kTypes)};
}

}  // namespace standard::rows
