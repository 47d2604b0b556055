#pragma once

#include "ObjectType.h"

// Abbreviations for the tables of object types, and groups of rows that many types share.
namespace standard::rows {

using P = PropertyId;
using D = Datatype;

constexpr PropertyRow Required(P id, D datatype, char const* defaultValue, Shape shape = Shape::Single) {
    return {id, datatype, shape, true, defaultValue};
}

constexpr PropertyRow Optional(P id, D datatype, char const* defaultValue = nullptr,
                               Shape shape = Shape::Single) {
    return {id, datatype, shape, false, defaultValue};
}

template <std::size_t count>
constexpr PropertyRows Group(PropertyRow const (&first)[count]) {
    return {first, count};
}

// The state of inputs and outputs.
constexpr PropertyRow StateRows[] = {
    Optional(P::Description, D::CharacterString, "''"),
    Required(P::Status_Flags, D::StatusFlags, nullptr),
    Required(P::Event_State, D::EventState, "'normal'"),
    Optional(P::Reliability, D::Reliability, "'no-fault-detected'"),
    Required(P::Out_Of_Service, D::Boolean, "false"),
};

// The same for the value objects, most of which need neither Event_State nor Out_Of_Service.
constexpr PropertyRow ValueStateRows[] = {
    Optional(P::Description, D::CharacterString, "''"),
    Required(P::Status_Flags, D::StatusFlags, nullptr),
    Optional(P::Event_State, D::EventState, "'normal'"),
    Optional(P::Reliability, D::Reliability, "'no-fault-detected'"),
    Optional(P::Out_Of_Service, D::Boolean, "false"),
};

// Intrinsic reporting (clause 13), for objects whose device file has it.
constexpr PropertyRow ReportingRows[] = {
    Optional(P::Time_Delay, D::Unsigned),
    Optional(P::Notification_Class, D::Unsigned),
    Optional(P::Limit_Enable, D::BitString),
    Optional(P::Event_Enable, D::BitString),
    Optional(P::Acked_Transitions, D::BitString),
    Optional(P::Notify_Type, D::NotifyType),
    Optional(P::Event_Time_Stamps, D::TimeStamp, nullptr, Shape::Array),
    Optional(P::Profile_Name, D::CharacterString),
};

struct ObjectTypes {
    ObjectType const* first;
    std::size_t count;

    ObjectType const* begin() const { return first; }
    ObjectType const* end() const { return first + count; }
};

// The tables, one in each file.
ObjectTypes AnalogTypes();
ObjectTypes BinaryTypes();
ObjectTypes MultiStateTypes();
ObjectTypes ValueTypes();
ObjectTypes MeterTypes();
ObjectTypes ControlTypes();

}  // namespace standard::rows
