#include "ObjectTypeRows.h"

// Clauses 12.6 to 12.8.
namespace standard::rows {

namespace {

// What the three have in common besides the value itself.
// clang-format off
constexpr PropertyRow kHistory[] = {
    optional(P::Inactive_Text, D::CharacterString),
    optional(P::Active_Text, D::CharacterString),
    optional(P::Change_Of_State_Time, D::DateTime),
    optional(P::Change_Of_State_Count, D::Unsigned),
    optional(P::Time_Of_State_Count_Reset, D::DateTime),
    optional(P::Elapsed_Active_Time, D::Unsigned),
    optional(P::Time_Of_Active_Time_Reset, D::DateTime),
};
// clang-format on

constexpr PropertyRow kInput[] = {
    required(P::Present_Value, D::BinaryPv, "'inactive'"),
    optional(P::Device_Type, D::CharacterString),
    required(P::Polarity, D::Polarity, "'normal'"),
    optional(P::Alarm_Value, D::BinaryPv),
};

constexpr PropertyRow kOutput[] = {
    required(P::Present_Value, D::BinaryPv, "'inactive'"),
    optional(P::Device_Type, D::CharacterString),
    required(P::Polarity, D::Polarity, "'normal'"),
    optional(P::Minimum_Off_Time, D::Unsigned),
    optional(P::Minimum_On_Time, D::Unsigned),
    required(P::Priority_Array, D::Priority, nullptr, Shape::Array),
    required(P::Relinquish_Default, D::BinaryPv, "'inactive'"),
    optional(P::Feedback_Value, D::BinaryPv, "'inactive'"),
};

constexpr PropertyRow kValue[] = {
    required(P::Present_Value, D::BinaryPv, "'inactive'"),
    optional(P::Minimum_Off_Time, D::Unsigned),
    optional(P::Minimum_On_Time, D::Unsigned),
    optional(P::Priority_Array, D::Priority, nullptr, Shape::Array),
    optional(P::Relinquish_Default, D::BinaryPv),
    optional(P::Alarm_Value, D::BinaryPv),
};

constexpr ObjectType kTypes[] = {
    {3, "binary_input", {group(kInput), group(kState), group(kHistory), group(kReporting)}},
    {4, "binary_output", {group(kOutput), group(kState), group(kHistory), group(kReporting)}},
    {5, "binary_value", {group(kValue), group(kState), group(kHistory), group(kReporting)}},
};

}  // namespace

ObjectTypes binaryTypes() {
    return {kTypes, std::size(kTypes)};
}

}  // namespace standard::rows
