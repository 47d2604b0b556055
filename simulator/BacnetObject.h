#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ObjectId.h"
#include "ObjectType.h"
#include "Value.h"

namespace simulator {

// A property of one object with its value, or its elements.
struct Property {
    PropertyId id;
    Shape shape;
    bool isRequired;
    std::vector<ValuePtr> values;  // exactly one if the shape is Single

    // Writes the value that a read gets: all of it, or of an array one element or (index 0) their number.
    // Throws ServiceError if there is no such element.
    void encode(TagWriter& writer, std::optional<std::uint32_t> index, Moment const& now) const;
};

// An object of the device (clause 12).
class BacnetObject {
public:
    // Adds Object_Identifier, Object_Name, Object_Type and Property_List to the properties given.
    BacnetObject(ObjectId id, std::string name, std::vector<Property> properties);

    ObjectId id() const { return m_id; }
    std::string const& name() const { return m_name; }
    // In the order in which they are read with the special identifier ALL.
    std::vector<Property> const& properties() const { return m_properties; }
    // Null if the object hasn't got it.
    Property const* find(PropertyId id) const;
    void add(Property property);

private:
    void writePropertyList();

    ObjectId m_id;
    std::string m_name;
    std::vector<Property> m_properties;
};

// Values that never change, with their tags.
ValuePtr fixedUnsigned(std::uint64_t value);
ValuePtr fixedEnumerated(std::uint32_t value);
ValuePtr fixedObjectIdentifier(ObjectId id);
ValuePtr fixedText(std::string const& text);
ValuePtr fixedBits(std::string const& bits);

}  // namespace simulator
