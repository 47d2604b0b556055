#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Access.h"
#include "ObjectId.h"
#include "ObjectType.h"
#include "PriorityArray.h"
#include "Standard.h"
#include "Value.h"

namespace simulator {

// A property of one object with its value or its elements.
struct Property {
    PropertyId id;
    Shape shape;
    bool isRequired;
    std::vector<ValuePtr> values;  // exactly one if the shape is Single
    Datatype datatype = Datatype::Any;
    Access access = Access::ReadOnly;

    // Index 0 is the number of elements. Throws ServiceError if the property is not an array or has no such
    // element.
    void CheckIndex(std::uint32_t index) const;
    // Writes the answer to a read: the whole value, or of an array one element or (index 0) their number.
    // Throws ServiceError if there is no such element.
    void Encode(TagWriter& writer, std::optional<std::uint32_t> index, Moment const& now) const;
};

// An object of the device (clause 12).
class BacnetObject {
public:
    // Adds Object_Identifier, Object_Name, Object_Type and Property_List to the properties. A Status_Flags
    // without a value derives from other properties. With `commands` the object is commandable: it has
    // Relinquish_Default, and Priority_Array with the values of the commands.
    BacnetObject(ObjectId objectId, std::string objectName, std::vector<Property> ownProperties,
                 std::optional<PriorityArray> commands = std::nullopt);

    ObjectId Id() const { return id; }
    std::string const& Name() const { return name; }
    // In the order in which the identifier ALL reads them.
    std::vector<Property> const& Properties() const { return properties; }
    // Null if the object does not have it.
    Property const* Find(PropertyId propertyId) const;
    // The value of a property, or the first of several; null if the object does not have the property.
    ValuePtr ValueOf(PropertyId propertyId) const;
    void Add(Property property);
    // Another identifier and name.
    void Rename(ObjectId otherId, std::string otherName);

    bool IsCommandable() const { return priorities.has_value(); }
    bool IsOutOfService(Moment const& now) const;
    // Commands Present_Value of a commandable object, or relinquishes it with null. Priority 1 to 16.
    void Command(std::uint8_t priority, ValuePtr value);
    // Replaces the values of a property that the object has or, with an index of 1 or more, one element.
    // Derived properties change with it. An object that goes out of service keeps its measured value until it
    // is back in service.
    void Write(PropertyId propertyId, std::optional<std::uint32_t> index, std::vector<ValuePtr> values,
               Moment const& now);

private:
    Property* FindMutable(PropertyId propertyId);
    void SetValue(PropertyId propertyId, ValuePtr value);
    void ShowCommands();
    void ShowStatusFlags();
    void ShowMeasured(Moment const& now);
    void WritePropertyList();

    ObjectId id;
    std::string name;
    std::vector<Property> properties;
    std::optional<PriorityArray> priorities;
    ValuePtr measured;  // the Present_Value of an object that can be taken out of service, or null
    bool derivesStatusFlags = false;
};

// Values that never change, with their tags.
ValuePtr FixedUnsigned(std::uint64_t value);
ValuePtr FixedEnumerated(std::uint32_t value);
ValuePtr FixedObjectIdentifier(ObjectId id);
ValuePtr FixedText(std::string const& text);
ValuePtr FixedBits(std::string const& bits);

}  // namespace simulator
