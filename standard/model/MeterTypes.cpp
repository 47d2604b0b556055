#include "ObjectTypeRows.h"

// Averaging (clause 12.5), Accumulator (12.1) and Pulse Converter (12.23).
namespace standard::rows {

namespace {

constexpr PropertyRow AveragingRows[] = {
    Required(P::Minimum_Value, D::Real, "0"),
    Optional(P::Minimum_Value_Timestamp, D::DateTime, "'2024-01-01 00:00:00'"),
    Required(P::Average_Value, D::Real, "0"),
    Optional(P::Variance_Value, D::Real, "0"),
    Required(P::Maximum_Value, D::Real, "0"),
    Optional(P::Maximum_Value_Timestamp, D::DateTime, "'2024-01-01 00:00:00'"),
    Optional(P::Description, D::CharacterString, "''"),
    Required(P::Attempted_Samples, D::Unsigned, "0"),
    Required(P::Valid_Samples, D::Unsigned, "0"),
    Required(P::Object_Property_Reference, D::PropertyReference, "{'analog_input', 1, 'present_value'}"),
    Required(P::Window_Interval, D::Unsigned, "900"),
    Required(P::Window_Samples, D::Unsigned, "15"),
    // The standard does not have this property here, but some devices do.
    Optional(P::Status_Flags, D::StatusFlags),
    Optional(P::Profile_Name, D::CharacterString),
};

constexpr PropertyRow AccumulatorRows[] = {
    Required(P::Present_Value, D::Unsigned, "0"),
    Optional(P::Device_Type, D::CharacterString),
    Required(P::Scale, D::Scale, "{float_scale = 1}"),
    Required(P::Units, D::Units, "'no-units'"),
    Optional(P::Prescale, D::Prescale),
    Required(P::Max_Pres_Value, D::Unsigned, "4294967295"),
    Optional(P::Value_Change_Time, D::DateTime),
    Optional(P::Value_Before_Change, D::Unsigned),
    Optional(P::Value_Set, D::Unsigned),
    Optional(P::Pulse_Rate, D::Unsigned),
    Optional(P::High_Limit, D::Unsigned, "1000"),
    Optional(P::Low_Limit, D::Unsigned, "0"),
    Optional(P::Limit_Monitoring_Interval, D::Unsigned),
};

constexpr PropertyRow PulseConverterRows[] = {
    Required(P::Present_Value, D::Real, "0"),
    Optional(P::Input_Reference, D::PropertyReference),
    Required(P::Units, D::Units, "'no-units'"),
    Required(P::Scale_Factor, D::Real, "1"),
    Required(P::Adjust_Value, D::Real, "0"),
    Required(P::Count, D::Unsigned, "0"),
    Required(P::Update_Time, D::DateTime, "clock()"),
    Required(P::Count_Change_Time, D::DateTime, "'2024-01-01 00:00:00'"),
    Required(P::Count_Before_Change, D::Unsigned, "0"),
    Optional(P::COV_Increment, D::Real),
    Optional(P::COV_Period, D::Unsigned),
    Optional(P::High_Limit, D::Real, "100"),
    Optional(P::Low_Limit, D::Real, "0"),
    Optional(P::Deadband, D::Real, "1"),
};

constexpr ObjectType Types[] = {
    {18, "averaging", {Group(AveragingRows), {}, {}, {}}},
    {23, "accumulator", {Group(AccumulatorRows), Group(StateRows), Group(ReportingRows), {}}},
    {24, "pulse_converter", {Group(PulseConverterRows), Group(StateRows), Group(ReportingRows), {}}},
};

}  // namespace

ObjectTypes MeterTypes() {
    return {Types, std::size(Types)};
}

}  // namespace standard::rows
