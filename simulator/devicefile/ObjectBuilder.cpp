#include "ObjectBuilder.h"

#include <algorithm>

#include "Mistake.h"
#include "PrimitiveReader.h"
#include "Printable.h"
#include "PropertyReader.h"
#include "RawReader.h"
#include "ScriptChecks.h"

namespace simulator {

namespace {

// The fields of any object besides its properties.
constexpr std::string_view CommonNames[] = {"instance", "name",       "read_only",
                                            "writable", "properties", "defaults"};

// These follow from the other fields.
constexpr PropertyId Settled[] = {PropertyId::Object_Identifier, PropertyId::Object_Name,
                                  PropertyId::Object_Type, PropertyId::Property_List};

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
    usesDefaults = ReadDefaults();
    free = ReadProperties();
    readOnly = ReadChoice("read_only");
    writable = WritableChoice();
    std::vector<Property> properties;
    for (PropertyRows const& group : type.groups) {
        for (PropertyRow const& row : group) {
            if (auto property = OfRow(row)) {
                properties.push_back(std::move(*property));
            }
        }
    }
    AddFree(properties);
    auto priorityArray = Priorities(properties);
    return BacnetObject({type.code, Instance()}, Name(), std::move(properties), std::move(priorityArray));
}

// The property of the type, with the values that "properties" gives if it does.
std::optional<Property> ObjectBuilder::OfRow(PropertyRow const& row) const {
    Property property{row.id, row.shape, row.isRequired, {}, row.datatype, ReadAccess(row.id)};
    if (auto const found = free.find(row.id); found != free.end()) {
        property.shape = row.shape == Shape::Single ? found->second.shape : row.shape;
        property.values = found->second.values;
        return property;
    }
    auto found = Values(row);
    if (!found) {
        return std::nullopt;
    }
    property.values = std::move(*found);
    return property;
}

// The properties that are not of the type. With a Relinquish_Default the object is commandable.
void ObjectBuilder::AddFree(std::vector<Property>& properties) const {
    for (auto const& [id, found] : free) {
        if (!type.Find(id)) {
            properties.push_back({id, found.shape, false, found.values, Datatype::Any, ReadAccess(id)});
        }
    }
    auto const add = [&](PropertyId id, Shape shape, std::vector<ValuePtr> values) {
        if (!type.Find(id) && free.count(id) == 0) {
            properties.push_back({id, shape, true, std::move(values), Datatype::Any, ReadAccess(id)});
        }
    };
    if (!type.Find(PropertyId::Relinquish_Default) && IsCommandable()) {
        add(PropertyId::Present_Value, Shape::Single, {ValueOf(properties, PropertyId::Relinquish_Default)});
        add(PropertyId::Priority_Array, Shape::Array, {});
    }
}

bool ObjectBuilder::ReadDefaults() const try {
    return given["defaults"].IsNil() || checks::Boolean(given["defaults"]);
} catch (Mistake const& mistake) {
    throw mistake.In("defaults");
}

// properties = {[85] = unsigned(1), units = enumerated(300)}
std::map<PropertyId, FreeValues> ObjectBuilder::ReadProperties() const try {
    std::map<PropertyId, FreeValues> found;
    ScriptValue const& table = given["properties"];
    if (table.IsNil()) {
        return found;
    }
    if (!table.IsPlainTable()) {
        throw Mistake("must be a table such as {[85] = unsigned(1)}, not " + table.Describe());
    }
    for (ScriptField const& field : table.fields) {
        PropertyId const id = checks::PropertyKey(field.name);
        if (std::find(std::begin(Settled), std::end(Settled), id) != std::end(Settled)) {
            throw Mistake(NameOf(id) + ": cannot be given: it follows from the other fields");
        }
        try {
            found.insert_or_assign(id, ReadFreeValues(field.value));
        } catch (Mistake const& mistake) {
            throw mistake.In(NameOf(id));
        }
    }
    return found;
} catch (Mistake const& mistake) {
    throw mistake.In("properties");
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
    if (row.datatype == Datatype::Priority && !value.IsNil() && !IsDerived(row)) {
        throw Mistake("needs relinquish_default");
    }
    if (row.datatype != Datatype::Priority && !value.IsNil()) {
        return ReadValues(row, value);
    }
    if (IsDerived(row)) {
        return std::vector<ValuePtr>();
    }
    bool const isNeeded = row.id == PropertyId::Present_Value && IsCommandable();
    if (!row.defaultValue || (!usesDefaults && !isNeeded)) {
        return std::nullopt;
    }
    return ReadValues(row, evaluate(row.defaultValue));
} catch (Mistake const& mistake) {
    throw mistake.In(NameOf(row.id));
}

bool ObjectBuilder::IsCommandable() const {
    auto const found = free.find(PropertyId::Relinquish_Default);
    return !given[NameOf(PropertyId::Relinquish_Default)].IsNil() ||
           (found != free.end() && !found->second.values.empty());
}

// If its type allows both, an object is commandable if it has a Relinquish_Default.
bool ObjectBuilder::IsDerived(PropertyRow const& row) const {
    if (row.datatype == Datatype::Priority) {
        return (row.isRequired && usesDefaults) || IsCommandable();
    }
    return row.datatype == Datatype::StatusFlags && row.isRequired;
}

// An object has a Relinquish_Default and a Priority_Array, or neither.
std::optional<PriorityArray> ObjectBuilder::Priorities(std::vector<Property> const& properties) const {
    bool const isDerived = free.count(PropertyId::Priority_Array) == 0;
    for (Property const& property : properties) {
        if (property.id == PropertyId::Priority_Array && isDerived) {
            bool const isGiven = !given[NameOf(PropertyId::Present_Value)].IsNil() ||
                                 free.count(PropertyId::Present_Value) != 0;
            return ReadCommands(isGiven ? ValueOf(properties, PropertyId::Present_Value) : nullptr);
        }
    }
    if (!given[NameOf(PropertyId::Priority_Array)].IsNil()) {
        throw Mistake(NameOf(PropertyId::Priority_Array) +
                      (isDerived ? ": needs relinquish_default" : ": must not be given in properties too"));
    }
    return std::nullopt;
}

// priority_array = {[8] = 21.5, [9] = null()}; without it, `present` is commanded at the lowest priority.
PriorityArray ObjectBuilder::ReadCommands(ValuePtr present) const try {
    ScriptValue const& table = given[NameOf(PropertyId::Priority_Array)];
    if (table.IsNil()) {
        return PriorityArray(std::move(present));
    }
    if (!table.IsPlainTable()) {
        throw Mistake("must be a table such as {[8] = 21.5}, not " + table.Describe());
    }
    if (present) {
        throw Mistake("must not be given beside present_value, which is the highest of its values");
    }
    PropertyRow const* const row = type.Find(PropertyId::Present_Value);
    PriorityArray commands(nullptr);
    for (ScriptField const& field : table.fields) {
        try {
            std::uint8_t const priority = checks::Priority(field.name);
            if (!field.value.IsMade("null")) {
                commands.Command(priority, row ? ReadValues(*row, field.value).front()
                                               : ReadPrimitive(Datatype::Any, field.value));
            }
        } catch (Mistake const& mistake) {
            throw mistake.In(field.name);
        }
    }
    return commands;
} catch (Mistake const& mistake) {
    throw mistake.In(NameOf(PropertyId::Priority_Array));
}

// The access of a property by "read_only" and "writable", or its default.
Access ObjectBuilder::ReadAccess(PropertyId id) const {
    if (id == PropertyId::Priority_Array || readOnly.isAll || readOnly.names.count(id) != 0) {
        return Access::ReadOnly;
    }
    bool const isCommand = id == PropertyId::Present_Value && IsCommandable();
    if (writable.names.count(id) != 0 || isCommand) {
        return Access::Writable;
    }
    return type.Find(id) ? AccessOf(type, id) : Access::ReadOnly;
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
        if (!type.Find(id) && free.count(id) == 0) {
            throw Mistake("this type has no property " + tools::Quoted(NameOf(id)));
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
        PropertyRow const* const row = type.Find(id);
        if (row && !IsWritableDatatype(row->datatype)) {
            throw Mistake("writable: " + NameOf(id) + " cannot be written");
        }
    }
    return choice;
}

}  // namespace simulator
