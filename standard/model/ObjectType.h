#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "PropertyId.h"

namespace standard {

// The datatypes of properties.
enum class Datatype {
    Boolean,
    Unsigned,
    Signed,
    Real,
    Double,
    OctetString,
    CharacterString,
    BitString,
    Date,
    Time,
    DateTime,
    ObjectIdentifier,
    // Enumerations, each with its names
    BinaryPv,
    Polarity,
    EventState,
    Reliability,
    Units,
    NotifyType,
    Action,
    LightingInProgress,
    LightingTransition,
    Segmentation,
    DeviceStatus,
    RestartReason,
    // Constructed ones
    StatusFlags,
    TimeStamp,
    Scale,
    Prescale,
    DateRange,
    PropertyReference,
    SetpointReference,
    LightingCommand,
    DailySchedule,
    SpecialEvent,
    // Any primitive value
    Any,
    // A value with the datatype of the object's Present_Value, or Null
    Priority
};

// Single has one value; an Array can be read by index, a List cannot.
enum class Shape { Single, Array, List };

// One property of an object type. `defaultValue` is the text of a Lua expression. Without it an object has
// the property only if its device file gives a value or, for Status_Flags and Priority_Array, if it derives
// from other properties.
struct PropertyRow {
    PropertyId id;
    Datatype datatype;
    Shape shape;
    bool isRequired;
    char const* defaultValue;
};

struct PropertyRows {
    PropertyRow const* first = nullptr;
    std::size_t count = 0;

    PropertyRow const* begin() const { return first; }
    PropertyRow const* end() const { return first + count; }
};

// An object type of clause 12 with its properties. Object_Identifier, Object_Name, Object_Type and
// Property_List, which every type has, are not among them.
struct ObjectType {
    static constexpr std::size_t Groups = 4;

    std::uint16_t code;
    char const* name;  // in lower case with underscores, as in device files
    PropertyRows groups[Groups];

    PropertyRow const* Find(PropertyId id) const;
};

// The types of the objects of a device, and that of the Device object itself.
std::vector<ObjectType> const& AllObjectTypes();
ObjectType const& DeviceObjectType();
// Null for a name that is not one of AllObjectTypes().
ObjectType const* ObjectTypeOfName(std::string_view name);

}  // namespace standard
