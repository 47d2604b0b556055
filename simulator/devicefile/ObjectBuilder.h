#pragma once

#include <functional>
#include <set>

#include "BacnetObject.h"
#include "ScriptValue.h"

namespace simulator {

// Makes an object of a type from the table that a device file gives for it: the properties given, the
// defaults of the others, and those that derive from others. Throws Mistake, with the property in front.
class ObjectBuilder {
public:
    // Gives the value of a default's Lua expression.
    using Evaluate = std::function<ScriptValue(std::string const&)>;

    // `extraNames` are names that the table may have besides its properties. The
    // others must outlive the builder.
    ObjectBuilder(ObjectType const& type, ScriptValue const& given, Evaluate const& evaluate,
                  std::vector<std::string> const& extraNames = {})
        : m_type(type), m_given(given), m_evaluate(evaluate), m_extraNames(extraNames) {}

    BacnetObject build();
    // "analog_input 1", for messages and as the name of an object without one.
    std::string title() const;

private:
    struct Choice {
        bool isAll = false;
        std::set<PropertyId> names;
    };

    void checkNames() const;
    std::optional<std::vector<ValuePtr>> values(PropertyRow const& row) const;
    std::uint32_t instance() const;
    std::string name() const;
    bool isDerived(PropertyRow const& row) const;
    std::optional<PriorityArray> priorities(std::vector<Property> const& properties) const;
    Access access(PropertyRow const& row) const;
    Choice choice(char const* name) const;
    Choice writableChoice() const;

    ObjectType const& m_type;
    ScriptValue const& m_given;
    Evaluate const& m_evaluate;
    std::vector<std::string> m_extraNames;
    Choice m_readOnly, m_writable;
};

}  // namespace simulator
