#include "Access.h"

#include <algorithm>

namespace simulator {

namespace {

using P = PropertyId;

// Settings of any object type that has them.
constexpr P Writable[] = {
    P::Out_Of_Service,
    P::Relinquish_Default,
    P::Description,
    P::Location,
    P::High_Limit,
    P::Low_Limit,
    P::Deadband,
    P::COV_Increment,
    P::Time_Delay,
    P::Notification_Class,
    P::Limit_Enable,
    P::Event_Enable,
    P::Notify_Type,
    P::Alarm_Value,
    P::Alarm_Values,
    P::Fault_Values,
    P::Setpoint,
    P::Proportional_Constant,
    P::Integral_Constant,
    P::Derivative_Constant,
    P::Bias,
    P::Maximum_Output,
    P::Minimum_Output,
    P::Priority_For_Writing,
    P::Weekly_Schedule,
    P::Exception_Schedule,
    P::Schedule_Default,
    P::Effective_Period,
    P::Adjust_Value,
    P::Window_Interval,
    P::Window_Samples,
    P::Attempted_Samples,
    P::Blink_Warn_Enable,
    P::Egress_Time,
    P::Default_Fade_Time,
    P::Default_Ramp_Rate,
};

// Object types whose Present_Value is measured or computed.
constexpr char const* Measuring[] = {"accumulator",       "analog_input",    "binary_input", "loop",
                                     "multi_state_input", "pulse_converter", "schedule"};

constexpr Datatype Unwritable[] = {
    Datatype::ObjectIdentifier,  Datatype::StatusFlags,
    Datatype::TimeStamp,         Datatype::Scale,
    Datatype::Prescale,          Datatype::PropertyReference,
    Datatype::SetpointReference, Datatype::LightingCommand,
    Datatype::Priority,
};

template <typename Item, std::size_t count>
bool Holds(Item const (&items)[count], Item const& wanted) {
    return std::find(std::begin(items), std::end(items), wanted) != std::end(items);
}

bool IsMeasuring(ObjectType const& type) {
    return std::any_of(std::begin(Measuring), std::end(Measuring),
                       [&](char const* name) { return type.name == std::string_view(name); });
}

}  // namespace

Access AccessOf(ObjectType const& type, PropertyId id) {
    if (id == P::Present_Value || id == P::Reliability) {
        return id == P::Reliability || IsMeasuring(type) ? Access::WhileOutOfService : Access::Writable;
    }
    return Holds(Writable, id) ? Access::Writable : Access::ReadOnly;
}

bool IsWritableDatatype(Datatype datatype) {
    return !Holds(Unwritable, datatype);
}

}  // namespace simulator
