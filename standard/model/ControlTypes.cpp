#include "ObjectTypeRows.h"

// Loop (clause 12.17), Schedule (12.24) and Lighting Output (12.54).
namespace standard::rows {

namespace {

constexpr PropertyRow kLoop[] = {
    required(P::Present_Value, D::Real, "0"),
    optional(P::Update_Interval, D::Unsigned),
    required(P::Output_Units, D::Units, "'percent'"),
    required(P::Manipulated_Variable_Reference, D::PropertyReference,
             "{'analog_output', 1, 'present_value'}"),
    required(P::Controlled_Variable_Reference, D::PropertyReference, "{'analog_input', 1, 'present_value'}"),
    required(P::Controlled_Variable_Value, D::Real, "0"),
    required(P::Controlled_Variable_Units, D::Units, "'degrees-celsius'"),
    required(P::Setpoint_Reference, D::SetpointReference, "{}"),
    required(P::Setpoint, D::Real, "0"),
    required(P::Action, D::Action, "'direct'"),
    optional(P::Proportional_Constant, D::Real, "1"),
    optional(P::Proportional_Constant_Units, D::Units, "'no-units'"),
    optional(P::Integral_Constant, D::Real, "0"),
    optional(P::Integral_Constant_Units, D::Units, "'seconds'"),
    optional(P::Derivative_Constant, D::Real, "0"),
    optional(P::Derivative_Constant_Units, D::Units, "'seconds'"),
    optional(P::Bias, D::Real, "0"),
    optional(P::Maximum_Output, D::Real),
    optional(P::Minimum_Output, D::Real),
    required(P::Priority_For_Writing, D::Unsigned, "16"),
    optional(P::COV_Increment, D::Real),
    optional(P::Error_Limit, D::Real),
    optional(P::Deadband, D::Real, "1"),
};

constexpr PropertyRow kSchedule[] = {
    required(P::Present_Value, D::Any, "0"),
    optional(P::Description, D::CharacterString, "''"),
    required(P::Effective_Period, D::DateRange, "{}"),
    optional(P::Weekly_Schedule, D::DailySchedule, "{}", Shape::Array),
    optional(P::Exception_Schedule, D::SpecialEvent, "{}", Shape::Array),
    required(P::Schedule_Default, D::Any, "0"),
    required(P::List_Of_Object_Property_References, D::PropertyReference, "{}", Shape::List),
    required(P::Priority_For_Writing, D::Unsigned, "16"),
    required(P::Status_Flags, D::StatusFlags, nullptr),
    required(P::Reliability, D::Reliability, "'no-fault-detected'"),
    required(P::Out_Of_Service, D::Boolean, "false"),
    optional(P::Profile_Name, D::CharacterString),
};

constexpr PropertyRow kLightingOutput[] = {
    required(P::Present_Value, D::Real, "0"),
    required(P::Tracking_Value, D::Real, "0"),
    required(P::Lighting_Command, D::LightingCommand, "{operation = 0}"),
    required(P::In_Progress, D::LightingInProgress, "'idle'"),
    optional(P::Description, D::CharacterString, "''"),
    required(P::Status_Flags, D::StatusFlags, nullptr),
    optional(P::Reliability, D::Reliability, "'no-fault-detected'"),
    required(P::Out_Of_Service, D::Boolean, "false"),
    required(P::Blink_Warn_Enable, D::Boolean, "false"),
    required(P::Egress_Time, D::Unsigned, "0"),
    required(P::Egress_Active, D::Boolean, "false"),
    required(P::Default_Fade_Time, D::Unsigned, "100"),
    required(P::Default_Ramp_Rate, D::Real, "1"),
    required(P::Default_Step_Increment, D::Real, "1"),
    optional(P::Transition, D::LightingTransition),
    optional(P::Feedback_Value, D::Real, "0"),
    required(P::Priority_Array, D::Priority, nullptr, Shape::Array),
    required(P::Relinquish_Default, D::Real, "0"),
    optional(P::Power, D::Real, "0"),
    optional(P::Instantaneous_Power, D::Real, "0"),
    optional(P::Min_Actual_Value, D::Real),
    optional(P::Max_Actual_Value, D::Real),
    required(P::Lighting_Command_Default_Priority, D::Unsigned, "16"),
    optional(P::COV_Increment, D::Real),
    optional(P::Profile_Name, D::CharacterString),
};

constexpr ObjectType kTypes[] = {
    {12, "loop", {group(kLoop), group(kState), group(kReporting), {}}},
    {17, "schedule", {group(kSchedule), {}, {}, {}}},
    {54, "lighting_output", {group(kLightingOutput), {}, {}, {}}},
};

}  // namespace

ObjectTypes controlTypes() {
    return {kTypes, std::size(kTypes)};
}

}  // namespace standard::rows
