#include "ObjectBuilder.h"

#include <algorithm>

#include "Mistake.h"
#include "Printable.h"
#include "PropertyReader.h"
#include "ScriptChecks.h"

namespace simulator {

namespace {

// The fields of any object besides its properties.
constexpr std::string_view CommonNames[] = {"instance", "name", "read_only", "writable"};

ValuePtr ValueOf(std::vector<Property> const& properties, PropertyId id) {
    for (Property const& property : properties) {
        if (property.id == id && !property.values.empty()) {
            return property.values.front();
        }
    }
    return nullptr;
}

}  // namespace

std::string ObjectBuilder::Title() const {
    ScriptValue const& instance = given["instance"];
    return instance.type == ScriptValue::Type::Integer
               ? std::string(type.name) + " " + std::to_string(instance.integer)
               : std::string(type.name);
}

BacnetObject ObjectBuilder::Build() {
    CheckNames();
    readOnly = ReadChoice("read_only");
    writable = WritableChoice();
    std::vector<Property> properties;
    for (PropertyRows const& group : type.groups) {
        for (PropertyRow const& row : group) {
            if (auto found = Values(row)) {
                properties.push_back(
                    {row.id, row.shape, row.isRequired, std::move(*found), row.datatype, ReadAccess(row)});
            }
        }
    }
    auto priorityArray = Priorities(properties);
    return BacnetObject({type.code, Instance()}, Name(), std::move(properties), std::move(priorityArray));
}

void ObjectBuilder::CheckNames() const {
    if (!given.list.empty()) {
        throw Mistake("must have names for all its values");
    }
    for (ScriptField const& field : given.fields) {
        auto const isOneOf = [&field](auto const& names) {
            return std::find(std::begin(names), std::end(names), field.name) != std::end(names);
        };
        if (isOneOf(CommonNames) || isOneOf(extraNames)) {
            continue;
        }
        auto const id = PropertyOfName(field.name);
        if (!id) {
            throw Mistake("unknown property " + tools::Quoted(field.name));
        }
        if (!type.Find(*id)) {
            throw Mistake("this type has no property " + tools::Quoted(field.name));
        }
    }
}

std::uint32_t ObjectBuilder::Instance() const try {
    return checks::UnsignedUpTo(given["instance"], ObjectId::LastInstance - 1);
} catch (Mistake const& mistake) {
    throw mistake.In("instance");
}

std::string ObjectBuilder::Name() const try {
    return given["name"].IsNil() ? Title() : checks::Text(given["name"]);
} catch (Mistake const& mistake) {
    throw mistake.In("name");
}

// The value of the device file or the default. No value if the object does not have the property, an empty
// list if the property derives from others.
std::optional<std::vector<ValuePtr>> ObjectBuilder::Values(PropertyRow const& row) const try {
    ScriptValue const& value = given[NameOf(row.id)];
    if (!value.IsNil()) {
        return ReadValues(row, value);
    }
    if (IsDerived(row)) {
        return std::vector<ValuePtr>();
    }
    if (!row.defaultValue) {
        return std::nullopt;
    }
    return ReadValues(row, evaluate(row.defaultValue));
} catch (Mistake const& mistake) {
    throw mistake.In(NameOf(row.id));
}

// If its type allows both, an object is commandable if it has a Relinquish_Default.
bool ObjectBuilder::IsDerived(PropertyRow const& row) const {
    if (row.datatype == Datatype::Priority) {
        return row.isRequired || !given[NameOf(PropertyId::Relinquish_Default)].IsNil();
    }
    return row.datatype == Datatype::StatusFlags && row.isRequired;
}

// An object has a Relinquish_Default and a Priority_Array, or neither.
std::optional<PriorityArray> ObjectBuilder::Priorities(std::vector<Property> const& properties) const {
    for (Property const& property : properties) {
        if (property.id == PropertyId::Priority_Array) {
            bool const isGiven = !given[NameOf(PropertyId::Present_Value)].IsNil();
            return PriorityArray(isGiven ? ValueOf(properties, PropertyId::Present_Value) : nullptr);
        }
    }
    return std::nullopt;
}

// The access of a property by "read_only" and "writable", or its default.
Access ObjectBuilder::ReadAccess(PropertyRow const& row) const {
    if (row.id == PropertyId::Priority_Array || readOnly.isAll || readOnly.names.count(row.id) != 0) {
        return Access::ReadOnly;
    }
    return writable.names.count(row.id) != 0 ? Access::Writable : AccessOf(type, row.id);
}

// true, or a list of names of properties.
ObjectBuilder::Choice ObjectBuilder::ReadChoice(char const* name) const try {
    ScriptValue const& value = given[name];
    Choice choice;
    if (value.IsNil()) {
        return choice;
    }
    if (value.IsBoolean()) {
        choice.isAll = value.boolean;
        return choice;
    }
    for (ScriptValue const& element : checks::List(value)) {
        PropertyId const id = checks::Property(element);
        if (!type.Find(id)) {
            throw Mistake("this type has no property " + tools::Quoted(element.text));
        }
        choice.names.insert(id);
    }
    return choice;
} catch (Mistake const& mistake) {
    throw mistake.In(name);
}

// Only a list: not every property can be written.
ObjectBuilder::Choice ObjectBuilder::WritableChoice() const {
    Choice choice = this->ReadChoice("writable");
    if (choice.isAll) {
        throw Mistake("writable: must be a list, not true");
    }
    for (PropertyId const id : choice.names) {
        if (!IsWritableDatatype(type.Find(id)->datatype)) {
            throw Mistake("writable: " + NameOf(id) + " cannot be written");
        }
    }
    return choice;
}

}  // namespace simulator
