#include "ObjectTypeRows.h"

// Averaging (clause 12.5), Accumulator (12.1) and Pulse Converter (12.23).
namespace standard::rows {

namespace {

constexpr PropertyRow kAveraging[] = {
    required(P::Minimum_Value, D::Real, "0"),
    optional(P::Minimum_Value_Timestamp, D::DateTime, "'2024-01-01 00:00:00'"),
    required(P::Average_Value, D::Real, "0"),
    optional(P::Variance_Value, D::Real, "0"),
    required(P::Maximum_Value, D::Real, "0"),
    optional(P::Maximum_Value_Timestamp, D::DateTime, "'2024-01-01 00:00:00'"),
    optional(P::Description, D::CharacterString, "''"),
    required(P::Attempted_Samples, D::Unsigned, "0"),
    required(P::Valid_Samples, D::Unsigned, "0"),
    required(P::Object_Property_Reference, D::PropertyReference, "{'analog_input', 1, 'present_value'}"),
    required(P::Window_Interval, D::Unsigned, "900"),
    required(P::Window_Samples, D::Unsigned, "15"),
    // Not of this type in the standard; devices that add it exist.
    optional(P::Status_Flags, D::StatusFlags),
    optional(P::Profile_Name, D::CharacterString),
};

constexpr PropertyRow kAccumulator[] = {
    required(P::Present_Value, D::Unsigned, "0"),
    optional(P::Device_Type, D::CharacterString),
    required(P::Scale, D::Scale, "{float_scale = 1}"),
    required(P::Units, D::Units, "'no-units'"),
    optional(P::Prescale, D::Prescale),
    required(P::Max_Pres_Value, D::Unsigned, "4294967295"),
    optional(P::Value_Change_Time, D::DateTime),
    optional(P::Value_Before_Change, D::Unsigned),
    optional(P::Value_Set, D::Unsigned),
    optional(P::Pulse_Rate, D::Unsigned),
    optional(P::High_Limit, D::Unsigned, "1000"),
    optional(P::Low_Limit, D::Unsigned, "0"),
    optional(P::Limit_Monitoring_Interval, D::Unsigned),
};

constexpr PropertyRow kPulseConverter[] = {
    required(P::Present_Value, D::Real, "0"),
    optional(P::Input_Reference, D::PropertyReference),
    required(P::Units, D::Units, "'no-units'"),
    required(P::Scale_Factor, D::Real, "1"),
    required(P::Adjust_Value, D::Real, "0"),
    required(P::Count, D::Unsigned, "0"),
    required(P::Update_Time, D::DateTime, "clock()"),
    required(P::Count_Change_Time, D::DateTime, "'2024-01-01 00:00:00'"),
    required(P::Count_Before_Change, D::Unsigned, "0"),
    optional(P::COV_Increment, D::Real),
    optional(P::COV_Period, D::Unsigned),
    optional(P::High_Limit, D::Real, "100"),
    optional(P::Low_Limit, D::Real, "0"),
    optional(P::Deadband, D::Real, "1"),
};

constexpr ObjectType kTypes[] = {
    {18, "averaging", {group(kAveraging), {}, {}, {}}},
    {23, "accumulator", {group(kAccumulator), group(kState), group(kReporting), {}}},
    {24, "pulse_converter", {group(kPulseConverter), group(kState), group(kReporting), {}}},
};

}  // namespace

ObjectTypes meterTypes() {
    return {kTypes, std::size(kTypes)};
}

}  // namespace standard::rows
