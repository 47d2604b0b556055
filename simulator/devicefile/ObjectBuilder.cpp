#include "ObjectBuilder.h"

#include <algorithm>

#include "Mistake.h"
#include "PropertyReader.h"
#include "ScriptChecks.h"

namespace simulator {

namespace {

// What any object may have besides its properties.
constexpr std::string_view kCommonNames[] = {"instance", "name", "read_only", "writable"};

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

BacnetObject ObjectBuilder::build() {
    checkNames();
    m_readOnly = choice("read_only");
    m_writable = writableChoice();
    std::vector<Property> properties;
    for (PropertyRows const& group : m_type.groups) {
        for (PropertyRow const& row : group) {
            if (auto found = values(row)) {
                properties.push_back(
                    {row.id, row.shape, row.isRequired, std::move(*found), row.datatype, access(row)});
            }
        }
    }
    auto priorityArray = priorities(properties);
    return BacnetObject({m_type.code, instance()}, name(), std::move(properties), std::move(priorityArray));
}

void ObjectBuilder::checkNames() const {
    if (!m_given.list.empty()) {
        throw Mistake("must have names for all its values");
    }
    for (ScriptField const& field : m_given.fields) {
        auto const isOneOf = [&field](auto const& names) {
            return std::find(std::begin(names), std::end(names), field.name) != std::end(names);
        };
        if (isOneOf(kCommonNames) || isOneOf(m_extraNames)) {
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

// Only an object with a Relinquish_Default can have a Priority_Array, and the other way round.
std::optional<PriorityArray> ObjectBuilder::priorities(std::vector<Property> const& properties) const {
    for (Property const& property : properties) {
        if (property.id == PropertyId::Priority_Array) {
            bool const isGiven = !m_given[nameOf(PropertyId::Present_Value)].isNil();
            return PriorityArray(isGiven ? valueOf(properties, PropertyId::Present_Value) : nullptr);
        }
    }
    return std::nullopt;
}

// What "read_only" and "writable" say of a property, or else what is usual for it.
Access ObjectBuilder::access(PropertyRow const& row) const {
    if (row.id == PropertyId::Priority_Array || m_readOnly.isAll || m_readOnly.names.count(row.id) != 0) {
        return Access::ReadOnly;
    }
    return m_writable.names.count(row.id) != 0 ? Access::Writable : accessOf(m_type, row.id);
}

// true, or a list of names of properties.
ObjectBuilder::Choice ObjectBuilder::choice(char const* name) const try {
    ScriptValue const& given = m_given[name];
    Choice choice;
    if (given.isNil()) {
        return choice;
    }
    if (given.type == ScriptValue::Type::Boolean) {
        choice.isAll = given.boolean;
        return choice;
    }
    for (ScriptValue const& element : checks::list(given)) {
        PropertyId const id = checks::property(element);
        if (!m_type.find(id)) {
            throw Mistake("this type has no property \"" + element.text + "\"");
        }
        choice.names.insert(id);
    }
    return choice;
} catch (Mistake const& mistake) {
    throw mistake.in(name);
}

// A list only: not everything can be written.
ObjectBuilder::Choice ObjectBuilder::writableChoice() const {
    Choice choice = this->choice("writable");
    if (choice.isAll) {
        throw Mistake("writable: must be a list, not true");
    }
    for (PropertyId const id : choice.names) {
        if (!isWritableDatatype(m_type.find(id)->datatype)) {
            throw Mistake("writable: " + nameOf(id) + " cannot be written");
        }
    }
    return choice;
}

}  // namespace simulator
