#include <string>
#include <vector>

#include "FieldReader.h"
#include "ProjectChecks.h"
#include "Suggestion.h"
#include "TypeName.h"

namespace workbench {

namespace {

// An instance number has 22 bits (ASHRAE 135 clause 20.2.14); all bits set mean "no object" (clause 12).
constexpr long long LargestInstance = 4194302;

std::vector<std::string> const& VariableFields() {
    static std::vector<std::string> const fields = {
        "Name", "Type", "ElementType", "ObjectType", "ObjectNumber", "ObjectProperties", "Write"};
    return fields;
}

std::string TypeSuggestion(std::string const& text) {
    std::string const suggestion = tools::DidYouMean(text, TypeNames());
    if (!suggestion.empty()) {
        return suggestion;
    }
    std::string names;
    for (std::string const& name : TypeNames()) {
        names += (names.empty() ? "; types are " : ", ") + name;
    }
    return names;
}

_OpcUa_BuiltInType Type(FieldReader const& fields, char const* name) {
    tools::ScriptValue const& value = fields.Required(name);
    if (value.IsText()) {
        auto const type = FindType(value.text);
        if (!type) {
            FieldReader::Refuse(name, value.Describe() + " is not a type" + TypeSuggestion(value.text));
        }
        return *type;
    }
    auto const type = FindType(fields.Integer(name, 0, 25));
    if (!type) {
        FieldReader::Refuse(name, value.Describe() + " is not the number of a type that variables can have");
    }
    return *type;
}

OpcUa_BuiltInTypeHlp FullType(FieldReader const& fields) {
    _OpcUa_BuiltInType const type = Type(fields, "Type");
    bool const hasElement = fields.Find("ElementType") != nullptr;
    if (type != OpcUaType_DataValue) {
        if (hasElement) {
            FieldReader::Refuse("ElementType", "is allowed only with the type DataValue");
        }
        return {type};
    }
    if (!hasElement) {
        FieldReader::Refuse("ElementType", "missing; the type DataValue needs it");
    }
    _OpcUa_BuiltInType const element = Type(fields, "ElementType");
    if (element == OpcUaType_DataValue) {
        FieldReader::Refuse("ElementType", "a DataValue cannot contain a DataValue");
    }
    return {type, element};
}

}  // namespace

VariableConfig CheckVariable(tools::ScriptValue const& value) {
    FieldReader const fields(value, VariableFields());
    VariableConfig variable;
    variable.name = fields.Text("Name");
    variable.type = FullType(fields);
    variable.objectType = fields.Name("ObjectType", ObjectTypes(), "an object type");
    variable.property = fields.Name("ObjectProperties", Properties(), "a property");
    variable.objectNumber = static_cast<int>(fields.Integer("ObjectNumber", 0, LargestInstance));
    variable.write = fields.OptionalBoolean("Write").value_or(false);
    return variable;
}

}  // namespace workbench
