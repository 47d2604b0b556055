#pragma once

#include <functional>
#include <map>
#include <set>

#include "BacnetObject.h"
#include "RawReader.h"
#include "Script.h"

namespace simulator {

// Makes an object from its table in a device file: the properties of the table, the defaults of the others,
// and those that derive from others. Throws Mistake, whose text begins with the property.
class ObjectBuilder {
public:
    // Returns the value of the Lua expression of a default.
    using Evaluate = std::function<ScriptValue(std::string const&)>;

    // `otherNames` are the names that the table may have besides the properties. The other arguments must
    // outlive the builder.
    ObjectBuilder(ObjectType const& objectType, ScriptValue const& table, Evaluate const& evaluateDefault,
                  std::vector<std::string> const& otherNames = {})
        : type(objectType), given(table), evaluate(evaluateDefault), extraNames(otherNames) {}

    BacnetObject Build();
    // "analog_input 1", for messages and as the name of an object without one.
    std::string Title() const;

private:
    struct Choice {
        bool isAll = false;
        std::set<PropertyId> names;
    };

    void CheckNames() const;
    bool ReadDefaults() const;
    std::map<PropertyId, FreeValues> ReadProperties() const;
    std::optional<Property> OfRow(PropertyRow const& row) const;
    void AddFree(std::vector<Property>& properties) const;
    bool IsCommandable() const;
    PriorityArray ReadCommands(ValuePtr present) const;
    std::optional<std::vector<ValuePtr>> Values(PropertyRow const& row) const;
    std::uint32_t Instance() const;
    std::string Name() const;
    bool IsDerived(PropertyRow const& row) const;
    std::optional<PriorityArray> Priorities(std::vector<Property> const& properties) const;
    Access ReadAccess(PropertyId id) const;
    Choice ReadChoice(char const* name) const;
    Choice WritableChoice() const;

    ObjectType const& type;
    ScriptValue const& given;
    Evaluate const& evaluate;
    std::vector<std::string> extraNames;
    bool usesDefaults = true;
    std::map<PropertyId, FreeValues> free;  // of the field "properties"
    Choice readOnly, writable;
};

}  // namespace simulator
