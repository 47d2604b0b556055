#include "PropertyDatatype.h"

namespace standard {

namespace {

struct Row {
    PropertyId property;
    Datatype datatype;
};

// The enumerations that have the same datatype in every object type.
constexpr Row EverywhereTheSame[] = {
    {PropertyId::Units, Datatype::Units},
    {PropertyId::Controlled_Variable_Units, Datatype::Units},
    {PropertyId::Derivative_Constant_Units, Datatype::Units},
    {PropertyId::Integral_Constant_Units, Datatype::Units},
    {PropertyId::Output_Units, Datatype::Units},
    {PropertyId::Proportional_Constant_Units, Datatype::Units},
    {PropertyId::Event_State, Datatype::EventState},
    {PropertyId::Reliability, Datatype::Reliability},
    {PropertyId::Status_Flags, Datatype::StatusFlags},
    {PropertyId::Notify_Type, Datatype::NotifyType},
    {PropertyId::Polarity, Datatype::Polarity},
    {PropertyId::Segmentation_Supported, Datatype::Segmentation},
    {PropertyId::System_Status, Datatype::DeviceStatus},
    {PropertyId::Last_Restart_Reason, Datatype::RestartReason},
};

ObjectType const* TypeOf(std::uint16_t code) {
    if (DeviceObjectType().code == code) {
        return &DeviceObjectType();
    }
    for (ObjectType const& type : AllObjectTypes()) {
        if (type.code == code) {
            return &type;
        }
    }
    return nullptr;
}

}  // namespace

std::optional<Datatype> DatatypeOf(std::uint16_t objectType, std::uint32_t property) {
    auto const id = static_cast<PropertyId>(property);
    ObjectType const* const type = TypeOf(objectType);
    if (PropertyRow const* const row = type ? type->Find(id) : nullptr) {
        // An element of Priority_Array is a Present_Value or Null.
        return row->datatype == Datatype::Priority
                   ? DatatypeOf(objectType, static_cast<std::uint32_t>(PropertyId::Present_Value))
                   : row->datatype;
    }
    for (Row const& row : EverywhereTheSame) {
        if (row.property == id) {
            return row.datatype;
        }
    }
    return std::nullopt;
}

}  // namespace standard
