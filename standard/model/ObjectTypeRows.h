#pragma once

#include "ObjectType.h"

// Shorthand for the tables of object types, and the groups of rows that many types share.
namespace standard::rows {

using P = PropertyId;
using D = Datatype;

constexpr PropertyRow required(P id, D datatype, char const* defaultValue, Shape shape = Shape::Single) {
    return {id, datatype, shape, true, defaultValue};
}

constexpr PropertyRow optional(P id, D datatype, char const* defaultValue = nullptr,
                               Shape shape = Shape::Single) {
    return {id, datatype, shape, false, defaultValue};
}

template <std::size_t count>
constexpr PropertyRows group(PropertyRow const (&first)[count]) {
    return {first, count};
}

// What inputs and outputs tell of their state.
constexpr PropertyRow kState[] = {
    optional(P::Description, D::CharacterString, "''"),
    required(P::Status_Flags, D::StatusFlags, nullptr),
    required(P::Event_State, D::EventState, "'normal'"),
    optional(P::Reliability, D::Reliability, "'no-fault-detected'"),
    required(P::Out_Of_Service, D::Boolean, "false"),
};

// The same for the value objects, most of which need neither Event_State nor Out_Of_Service.
constexpr PropertyRow kValueState[] = {
    optional(P::Description, D::CharacterString, "''"),
    required(P::Status_Flags, D::StatusFlags, nullptr),
    optional(P::Event_State, D::EventState, "'normal'"),
    optional(P::Reliability, D::Reliability, "'no-fault-detected'"),
    optional(P::Out_Of_Service, D::Boolean, "false"),
};

// Intrinsic reporting (clause 13), which an object has if its device file says so.
constexpr PropertyRow kReporting[] = {
    optional(P::Time_Delay, D::Unsigned),
    optional(P::Notification_Class, D::Unsigned),
    optional(P::Limit_Enable, D::BitString),
    optional(P::Event_Enable, D::BitString),
    optional(P::Acked_Transitions, D::BitString),
    optional(P::Notify_Type, D::NotifyType),
    optional(P::Event_Time_Stamps, D::TimeStamp, nullptr, Shape::Array),
    optional(P::Profile_Name, D::CharacterString),
};

struct ObjectTypes {
    ObjectType const* first;
    std::size_t count;

    ObjectType const* begin() const { return first; }
    ObjectType const* end() const { return first + count; }
};

// The tables, each in a file of its own.
ObjectTypes analogTypes();
ObjectTypes binaryTypes();
ObjectTypes multiStateTypes();
ObjectTypes valueTypes();
ObjectTypes meterTypes();
ObjectTypes controlTypes();

}  // namespace standard::rows
