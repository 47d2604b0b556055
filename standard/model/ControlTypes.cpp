#include "ObjectTypeRows.h"

// Loop (clause 12.17), Schedule (12.24) and Lighting Output (12.54).
namespace standard::rows {

namespace {

constexpr PropertyRow LoopRows[] = {
    Required(P::Present_Value, D::Real, "0"),
    Optional(P::Update_Interval, D::Unsigned),
    Required(P::Output_Units, D::Units, "'percent'"),
    Required(P::Manipulated_Variable_Reference, D::PropertyReference,
             "{'analog_output', 1, 'present_value'}"),
    Required(P::Controlled_Variable_Reference, D::PropertyReference, "{'analog_input', 1, 'present_value'}"),
    Required(P::Controlled_Variable_Value, D::Real, "0"),
    Required(P::Controlled_Variable_Units, D::Units, "'degrees-celsius'"),
    Required(P::Setpoint_Reference, D::SetpointReference, "{}"),
    Required(P::Setpoint, D::Real, "0"),
    Required(P::Action, D::Action, "'direct'"),
    Optional(P::Proportional_Constant, D::Real, "1"),
    Optional(P::Proportional_Constant_Units, D::Units, "'no-units'"),
    Optional(P::Integral_Constant, D::Real, "0"),
    Optional(P::Integral_Constant_Units, D::Units, "'seconds'"),
    Optional(P::Derivative_Constant, D::Real, "0"),
    Optional(P::Derivative_Constant_Units, D::Units, "'seconds'"),
    Optional(P::Bias, D::Real, "0"),
    Optional(P::Maximum_Output, D::Real),
    Optional(P::Minimum_Output, D::Real),
    Required(P::Priority_For_Writing, D::Unsigned, "16"),
    Optional(P::COV_Increment, D::Real),
    Optional(P::Error_Limit, D::Real),
    Optional(P::Deadband, D::Real, "1"),
};

constexpr PropertyRow ScheduleRows[] = {
    Required(P::Present_Value, D::Any, "0"),
    Optional(P::Description, D::CharacterString, "''"),
    Required(P::Effective_Period, D::DateRange, "{}"),
    Optional(P::Weekly_Schedule, D::DailySchedule, "{}", Shape::Array),
    Optional(P::Exception_Schedule, D::SpecialEvent, "{}", Shape::Array),
    Required(P::Schedule_Default, D::Any, "0"),
    Required(P::List_Of_Object_Property_References, D::PropertyReference, "{}", Shape::List),
    Required(P::Priority_For_Writing, D::Unsigned, "16"),
    Required(P::Status_Flags, D::StatusFlags, nullptr),
    Required(P::Reliability, D::Reliability, "'no-fault-detected'"),
    Required(P::Out_Of_Service, D::Boolean, "false"),
    Optional(P::Profile_Name, D::CharacterString),
};

constexpr PropertyRow LightingOutputRows[] = {
    Required(P::Present_Value, D::Real, "0"),
    Required(P::Tracking_Value, D::Real, "0"),
    Required(P::Lighting_Command, D::LightingCommand, "{operation = 0}"),
    Required(P::In_Progress, D::LightingInProgress, "'idle'"),
    Optional(P::Description, D::CharacterString, "''"),
    Required(P::Status_Flags, D::StatusFlags, nullptr),
    Optional(P::Reliability, D::Reliability, "'no-fault-detected'"),
    Required(P::Out_Of_Service, D::Boolean, "false"),
    Required(P::Blink_Warn_Enable, D::Boolean, "false"),
    Required(P::Egress_Time, D::Unsigned, "0"),
    Required(P::Egress_Active, D::Boolean, "false"),
    Required(P::Default_Fade_Time, D::Unsigned, "100"),
    Required(P::Default_Ramp_Rate, D::Real, "1"),
    Required(P::Default_Step_Increment, D::Real, "1"),
    Optional(P::Transition, D::LightingTransition),
    Optional(P::Feedback_Value, D::Real, "0"),
    Required(P::Priority_Array, D::Priority, nullptr, Shape::Array),
    Required(P::Relinquish_Default, D::Real, "0"),
    Optional(P::Power, D::Real, "0"),
    Optional(P::Instantaneous_Power, D::Real, "0"),
    Optional(P::Min_Actual_Value, D::Real),
    Optional(P::Max_Actual_Value, D::Real),
    Required(P::Lighting_Command_Default_Priority, D::Unsigned, "16"),
    Optional(P::COV_Increment, D::Real),
    Optional(P::Profile_Name, D::CharacterString),
};

constexpr ObjectType Types[] = {
    {12, "loop", {Group(LoopRows), Group(StateRows), Group(ReportingRows), {}}},
    {17, "schedule", {Group(ScheduleRows), {}, {}, {}}},
    {54, "lighting_output", {Group(LightingOutputRows), {}, {}, {}}},
};

}  // namespace

ObjectTypes ControlTypes() {
    return {Types, std::size(Types)};
}

}  // namespace standard::rows
