#include "ObjectTypeRows.h"

// Clauses 12.2 to 12.4, and the numeric values of clauses 12.39, 12.43 and 12.44, which differ only in
// the datatype of their numbers.
namespace standard::rows {

namespace {

// clang-format off
constexpr PropertyRow kInput[] = {
    required(P::Present_Value, D::Real, "0"),
    optional(P::Device_Type, D::CharacterString),
    optional(P::Update_Interval, D::Unsigned),
    required(P::Units, D::Units, "'no-units'"),
    optional(P::Min_Pres_Value, D::Real),
    optional(P::Max_Pres_Value, D::Real),
    optional(P::Resolution, D::Real, "0.1"),
    optional(P::COV_Increment, D::Real),
    optional(P::High_Limit, D::Real, "100"),
    optional(P::Low_Limit, D::Real, "0"),
    optional(P::Deadband, D::Real, "1"),
};
// clang-format on

constexpr PropertyRow kOutput[] = {
    required(P::Present_Value, D::Real, "0"),
    optional(P::Device_Type, D::CharacterString),
    required(P::Units, D::Units, "'percent'"),
    optional(P::Min_Pres_Value, D::Real),
    optional(P::Max_Pres_Value, D::Real),
    optional(P::Resolution, D::Real, "0.1"),
    required(P::Priority_Array, D::Priority, nullptr, Shape::Array),
    required(P::Relinquish_Default, D::Real, "0"),
    optional(P::COV_Increment, D::Real),
    optional(P::High_Limit, D::Real, "100"),
    optional(P::Low_Limit, D::Real, "0"),
    optional(P::Deadband, D::Real, "1"),
};

// The four numeric value objects.
template <D number, D distance>
struct Numeric {
    static constexpr PropertyRow rows[] = {
        required(P::Present_Value, number, "0"),
        required(P::Units, D::Units, "'no-units'"),
        optional(P::Min_Pres_Value, number),
        optional(P::Max_Pres_Value, number),
        optional(P::Resolution, number, "1"),
        optional(P::Priority_Array, D::Priority, nullptr, Shape::Array),
        optional(P::Relinquish_Default, number),
        optional(P::COV_Increment, distance),
        optional(P::High_Limit, number, "100"),
        optional(P::Low_Limit, number, "0"),
        optional(P::Deadband, distance, "1"),
    };
};

constexpr ObjectType kTypes[] = {
    {0, "analog_input", {group(kInput), group(kState), group(kReporting), {}}},
    {1, "analog_output", {group(kOutput), group(kState), group(kReporting), {}}},
    {2, "analog_value", {group(Numeric<D::Real, D::Real>::rows), group(kState), group(kReporting), {}}},
    {45,
     "integer_value",
     {group(Numeric<D::Signed, D::Unsigned>::rows), group(kValueState), group(kReporting), {}}},
    {46,
     "large_analog_value",
     {group(Numeric<D::Double, D::Double>::rows), group(kValueState), group(kReporting), {}}},
    {48,
     "positive_integer_value",
     {group(Numeric<D::Unsigned, D::Unsigned>::rows), group(kValueState), group(kReporting), {}}},
};

}  // namespace

ObjectTypes analogTypes() {
    return {kTypes, std::size(kTypes)};
}

}  // namespace standard::rows
