#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "ObjectId.h"
#include "PropertyId.h"
#include "PropertyServices.h"

namespace workbench {

// What is known of one BACnet object: from its device, or from a list of points.
struct ObjectRecord {
    standard::ObjectId id;
    // By property identifier: its values, or the reason why there are none. A property that nobody has asked
    // for is missing.
    std::map<std::uint32_t, standard::ReadResult> properties;
    // Columns of a point list that no property of the object has, by the column's heading: "keyname",
    // "settable", "supports COV", "vendor-specific-address".
    std::map<std::string, std::string> listed;

    // The values of a property; null if it is missing or has none.
    std::vector<standard::Datum> const* Values(standard::PropertyId property) const;
    // The value of a property with exactly one; null otherwise.
    standard::Datum const* Value(standard::PropertyId property) const;
    void Set(standard::PropertyId property, std::vector<standard::Datum> values);
};

// The value of a property that is a character string; empty without one.
std::string TextOf(ObjectRecord const& object, standard::PropertyId property);
// The value of a property that is Unsigned or Enumerated.
std::optional<std::uint32_t> NumberOf(ObjectRecord const& object, standard::PropertyId property);
// Object_Name; empty without one.
std::string NameOf(ObjectRecord const& object);
// The texts of the states: State_Text, or Inactive_Text and Active_Text. Empty without any.
std::vector<std::string> StateTextsOf(ObjectRecord const& object);
// The property with the unit of Present_Value: Units, or Output_Units of a Loop.
std::optional<std::uint32_t> UnitsOf(ObjectRecord const& object);
// Whether the device is likely to accept a write to Present_Value while the object is in service: by the
// column "settable" of a point list (Y or N), otherwise if it is commandable (has a Priority_Array) or of a
// type whose Present_Value is there to be set, such as the value objects. Only the device knows.
bool IsSettable(ObjectRecord const& object);

}  // namespace workbench
