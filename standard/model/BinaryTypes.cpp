#include "ObjectTypeRows.h"

// Clauses 12.6 to 12.8.
namespace standard::rows {

namespace {

// The rows that the three have in common, without Present_Value.
// clang-format off
constexpr PropertyRow HistoryRows[] = {
    Optional(P::Inactive_Text, D::CharacterString),
    Optional(P::Active_Text, D::CharacterString),
    Optional(P::Change_Of_State_Time, D::DateTime),
    Optional(P::Change_Of_State_Count, D::Unsigned),
    Optional(P::Time_Of_State_Count_Reset, D::DateTime),
    Optional(P::Elapsed_Active_Time, D::Unsigned),
    Optional(P::Time_Of_Active_Time_Reset, D::DateTime),
};
// clang-format on

constexpr PropertyRow InputRows[] = {
    Required(P::Present_Value, D::BinaryPv, "'inactive'"),
    Optional(P::Device_Type, D::CharacterString),
    Required(P::Polarity, D::Polarity, "'normal'"),
    Optional(P::Alarm_Value, D::BinaryPv),
};

constexpr PropertyRow OutputRows[] = {
    Required(P::Present_Value, D::BinaryPv, "'inactive'"),
    Optional(P::Device_Type, D::CharacterString),
    Required(P::Polarity, D::Polarity, "'normal'"),
    Optional(P::Minimum_Off_Time, D::Unsigned),
    Optional(P::Minimum_On_Time, D::Unsigned),
    Required(P::Priority_Array, D::Priority, nullptr, Shape::Array),
    Required(P::Relinquish_Default, D::BinaryPv, "'inactive'"),
    Optional(P::Feedback_Value, D::BinaryPv, "'inactive'"),
};

constexpr PropertyRow ValueRows[] = {
    Required(P::Present_Value, D::BinaryPv, "'inactive'"),
    Optional(P::Minimum_Off_Time, D::Unsigned),
    Optional(P::Minimum_On_Time, D::Unsigned),
    Optional(P::Priority_Array, D::Priority, nullptr, Shape::Array),
    Optional(P::Relinquish_Default, D::BinaryPv),
    Optional(P::Alarm_Value, D::BinaryPv),
};

constexpr ObjectType Types[] = {
    {3, "binary_input", {Group(InputRows), Group(StateRows), Group(HistoryRows), Group(ReportingRows)}},
    {4, "binary_output", {Group(OutputRows), Group(StateRows), Group(HistoryRows), Group(ReportingRows)}},
    {5, "binary_value", {Group(ValueRows), Group(StateRows), Group(HistoryRows), Group(ReportingRows)}},
};

}  // namespace

ObjectTypes BinaryTypes() {
    return {Types, std::size(Types)};
}

}  // namespace standard::rows
