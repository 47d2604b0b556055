#include "ObjectBuilder.h"

#include <algorithm>

#include "Mistake.h"
#include "PropertyReader.h"
#include "ScriptChecks.h"

namespace simulator {

namespace {

constexpr std::size_t kPriorities = 16;
constexpr std::uint8_t kDateTimeChoice = 1;  // of BACnetPriorityValue, for what has no tag of its own

ValuePtr valueOf(std::vector<Property> const& properties, PropertyId id) {
    for (Property const& property : properties) {
        if (property.id == id && !property.values.empty()) {
            return property.values.front();
        }
    }
    return nullptr;
}

}  // namespace

std::string ObjectBuilder::title() const {
    ScriptValue const& instance = m_given["instance"];
    return instance.type == ScriptValue::Type::Integer
               ? std::string(m_type.name) + " " + std::to_string(instance.integer)
               : std::string(m_type.name);
}

BacnetObject ObjectBuilder::build() const {
    checkNames();
    std::vector<Property> properties;
    for (PropertyRows const& group : m_type.groups) {
        for (PropertyRow const& row : group) {
            if (auto found = values(row)) {
                properties.push_back({row.id, row.shape, row.isRequired, std::move(*found)});
            }
        }
    }
    derive(properties);
    return BacnetObject({m_type.code, instance()}, name(), std::move(properties));
}

void ObjectBuilder::checkNames() const {
    if (!m_given.list.empty()) {
        throw Mistake("must have names for all its values");
    }
    for (ScriptField const& field : m_given.fields) {
        if (field.name == "instance" || field.name == "name" ||
            std::find(m_extraNames.begin(), m_extraNames.end(), field.name) != m_extraNames.end()) {
            continue;
        }
        auto const id = propertyOfName(field.name);
        if (!id) {
            throw Mistake("unknown property \"" + field.name + "\"");
        }
        if (!m_type.find(*id)) {
            throw Mistake(std::string("this type has no property \"") + field.name + "\"");
        }
    }
}

std::uint32_t ObjectBuilder::instance() const try {
    return checks::unsignedUpTo(m_given["instance"], ObjectId::kLastInstance - 1);
} catch (Mistake const& mistake) {
    throw mistake.in("instance");
}

std::string ObjectBuilder::name() const try {
    return m_given["name"].isNil() ? title() : checks::text(m_given["name"]);
} catch (Mistake const& mistake) {
    throw mistake.in("name");
}

// The value given or the default; nothing if the object is not to have the property, and an empty one if
// it derives from others.
std::optional<std::vector<ValuePtr>> ObjectBuilder::values(PropertyRow const& row) const try {
    ScriptValue const& given = m_given[nameOf(row.id)];
    if (!given.isNil()) {
        return readValues(row, given);
    }
    if (isDerived(row)) {
        return std::vector<ValuePtr>();
    }
    if (!row.defaultValue) {
        return std::nullopt;
    }
    return readValues(row, m_evaluate(row.defaultValue));
} catch (Mistake const& mistake) {
    throw mistake.in(nameOf(row.id));
}

// An object that may be commanded or not is commanded if it is told what to fall back to.
bool ObjectBuilder::isDerived(PropertyRow const& row) const {
    if (row.datatype == Datatype::Priority) {
        return row.isRequired || !m_given[nameOf(PropertyId::Relinquish_Default)].isNil();
    }
    return row.datatype == Datatype::StatusFlags && row.isRequired;
}

void ObjectBuilder::derive(std::vector<Property>& properties) const {
    for (Property& property : properties) {
        if (property.id == PropertyId::Priority_Array) {
            property.values = priorityArray(properties);
        } else if (property.id == PropertyId::Status_Flags && property.values.empty()) {
            property.values = {std::make_shared<StatusFlagsValue>(
                valueOf(properties, PropertyId::Event_State), valueOf(properties, PropertyId::Reliability),
                valueOf(properties, PropertyId::Out_Of_Service))};
        }
    }
}

// A Present_Value that is given has been commanded at the lowest priority (clause 19.2).
std::vector<ValuePtr> ObjectBuilder::priorityArray(std::vector<Property> const& properties) const {
    std::vector<ValuePtr> slots(kPriorities, std::make_shared<FixedValue>(Octets(1, '\0')));
    if (m_given[nameOf(PropertyId::Present_Value)].isNil()) {
        return slots;
    }
    ValuePtr value = valueOf(properties, PropertyId::Present_Value);
    if (m_type.find(PropertyId::Present_Value)->datatype == Datatype::DateTime) {
        value = std::make_shared<WrappedValue>(kDateTimeChoice, std::move(value));
    }
    slots.back() = std::move(value);
    return slots;
}

}  // namespace simulator
