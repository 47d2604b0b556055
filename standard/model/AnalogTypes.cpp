#include "ObjectTypeRows.h"

// Clauses 12.2 to 12.4, and the numeric values of clauses 12.39, 12.43 and 12.44, which differ only in
// the datatype of their numbers.
namespace standard::rows {

namespace {

// clang-format off
constexpr PropertyRow InputRows[] = {
    Required(P::Present_Value, D::Real, "0"),
    Optional(P::Device_Type, D::CharacterString),
    Optional(P::Update_Interval, D::Unsigned),
    Required(P::Units, D::Units, "'no-units'"),
    Optional(P::Min_Pres_Value, D::Real),
    Optional(P::Max_Pres_Value, D::Real),
    Optional(P::Resolution, D::Real, "0.1"),
    Optional(P::COV_Increment, D::Real),
    Optional(P::High_Limit, D::Real, "100"),
    Optional(P::Low_Limit, D::Real, "0"),
    Optional(P::Deadband, D::Real, "1"),
};
// clang-format on

constexpr PropertyRow OutputRows[] = {
    Required(P::Present_Value, D::Real, "0"),
    Optional(P::Device_Type, D::CharacterString),
    Required(P::Units, D::Units, "'percent'"),
    Optional(P::Min_Pres_Value, D::Real),
    Optional(P::Max_Pres_Value, D::Real),
    Optional(P::Resolution, D::Real, "0.1"),
    Required(P::Priority_Array, D::Priority, nullptr, Shape::Array),
    Required(P::Relinquish_Default, D::Real, "0"),
    Optional(P::COV_Increment, D::Real),
    Optional(P::High_Limit, D::Real, "100"),
    Optional(P::Low_Limit, D::Real, "0"),
    Optional(P::Deadband, D::Real, "1"),
};

// The four numeric value objects.
template <D number, D distance>
struct Numeric {
    static constexpr PropertyRow Rows[] = {
        Required(P::Present_Value, number, "0"),
        Required(P::Units, D::Units, "'no-units'"),
        Optional(P::Min_Pres_Value, number),
        Optional(P::Max_Pres_Value, number),
        Optional(P::Resolution, number, "1"),
        Optional(P::Priority_Array, D::Priority, nullptr, Shape::Array),
        Optional(P::Relinquish_Default, number),
        Optional(P::COV_Increment, distance),
        Optional(P::High_Limit, number, "100"),
        Optional(P::Low_Limit, number, "0"),
        Optional(P::Deadband, distance, "1"),
    };
};

constexpr ObjectType Types[] = {
    {0, "analog_input", {Group(InputRows), Group(StateRows), Group(ReportingRows), {}}},
    {1, "analog_output", {Group(OutputRows), Group(StateRows), Group(ReportingRows), {}}},
    {2, "analog_value", {Group(Numeric<D::Real, D::Real>::Rows), Group(StateRows), Group(ReportingRows), {}}},
    {45,
     "integer_value",
     {Group(Numeric<D::Signed, D::Unsigned>::Rows), Group(ValueStateRows), Group(ReportingRows), {}}},
    {46,
     "large_analog_value",
     {Group(Numeric<D::Double, D::Double>::Rows), Group(ValueStateRows), Group(ReportingRows), {}}},
    {48,
     "positive_integer_value",
     {Group(Numeric<D::Unsigned, D::Unsigned>::Rows), Group(ValueStateRows), Group(ReportingRows), {}}},
};

}  // namespace

ObjectTypes AnalogTypes() {
    return {Types, std::size(Types)};
}

}  // namespace standard::rows
