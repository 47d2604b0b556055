#pragma once

#include <functional>
#include <set>

#include "BacnetObject.h"
#include "Script.h"

namespace simulator {

// Makes an object of a type from the table that a device file gives for it: the properties given, the
// defaults of the others, and those that derive from others. Throws Mistake, with the property in front.
class ObjectBuilder {
public:
    // Gives the value of a default's Lua expression.
    using Evaluate = std::function<ScriptValue(std::string const&)>;

    // `otherNames` are names that the table may have besides its properties. The
    // others must outlive the builder.
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
    std::optional<std::vector<ValuePtr>> Values(PropertyRow const& row) const;
    std::uint32_t Instance() const;
    std::string Name() const;
    bool IsDerived(PropertyRow const& row) const;
    std::optional<PriorityArray> Priorities(std::vector<Property> const& properties) const;
    Access ReadAccess(PropertyRow const& row) const;
    Choice ReadChoice(char const* name) const;
    Choice WritableChoice() const;

    ObjectType const& type;
    ScriptValue const& given;
    Evaluate const& evaluate;
    std::vector<std::string> extraNames;
    Choice readOnly, writable;
};

}  // namespace simulator
