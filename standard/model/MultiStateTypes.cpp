#include "ObjectTypeRows.h"

// Clauses 12.18 to 12.20.
namespace standard::rows {

namespace {

constexpr PropertyRow InputRows[] = {
    Required(P::Present_Value, D::Unsigned, "1"),
    Optional(P::Device_Type, D::CharacterString),
    Required(P::Number_Of_States, D::Unsigned, "4"),
    Optional(P::State_Text, D::CharacterString, nullptr, Shape::Array),
    Optional(P::Alarm_Values, D::Unsigned, nullptr, Shape::List),
    Optional(P::Fault_Values, D::Unsigned, nullptr, Shape::List),
};

constexpr PropertyRow OutputRows[] = {
    Required(P::Present_Value, D::Unsigned, "1"),
    Optional(P::Device_Type, D::CharacterString),
    Required(P::Number_Of_States, D::Unsigned, "4"),
    Optional(P::State_Text, D::CharacterString, nullptr, Shape::Array),
    Required(P::Priority_Array, D::Priority, nullptr, Shape::Array),
    Required(P::Relinquish_Default, D::Unsigned, "1"),
    Optional(P::Feedback_Value, D::Unsigned, "1"),
};

constexpr PropertyRow ValueRows[] = {
    Required(P::Present_Value, D::Unsigned, "1"),
    Required(P::Number_Of_States, D::Unsigned, "4"),
    Optional(P::State_Text, D::CharacterString, nullptr, Shape::Array),
    Optional(P::Priority_Array, D::Priority, nullptr, Shape::Array),
    Optional(P::Relinquish_Default, D::Unsigned),
    Optional(P::Alarm_Values, D::Unsigned, nullptr, Shape::List),
    Optional(P::Fault_Values, D::Unsigned, nullptr, Shape::List),
};

constexpr ObjectType Types[] = {
    {13, "multi_state_input", {Group(InputRows), Group(StateRows), Group(ReportingRows), {}}},
    {14, "multi_state_output", {Group(OutputRows), Group(StateRows), Group(ReportingRows), {}}},
    {19, "multi_state_value", {Group(ValueRows), Group(StateRows), Group(ReportingRows), {}}},
};

}  // namespace

ObjectTypes MultiStateTypes() {
    return {Types, std::size(Types)};
}

}  // namespace standard::rows
