#include <string>
#include <vector>

#include "FieldReader.h"
#include "ProjectChecks.h"
#include "Suggestion.h"
#include "TypeName.h"

namespace workbench {

namespace {

// An instance number has 22 bits (ASHRAE 135 clause 20.2.14), and all of them set mean that there is no
// object (clause 12).
constexpr long long LargestInstance = 4194302;

std::vector<std::string> const& VariableFields() {
    static std::vector<std::string> const fields = {
        "Name", "Type", "ElementType", "ObjectType", "ObjectNumber", "ObjectProperties", "Write"};
    return fields;
}

_OpcUa_BuiltInType Type(FieldReader const& fields, char const* name) {
    LuaValue const& value = fields.Required(name);
    if (auto const* text = value.As<std::string>()) {
        auto const type = FindType(*text);
        if (!type) {
            FieldReader::Refuse(name, Describe(value) + " is no type" + DidYouMean(*text, TypeNames()));
        }
        return *type;
    }
    auto const type = FindType(fields.Integer(name, 0, 25));
    if (!type) {
        FieldReader::Refuse(name, Describe(value) + " is the number of no type that the runtime stores");
    }
    return *type;
}

OpcUa_BuiltInTypeHlp FullType(FieldReader const& fields) {
    _OpcUa_BuiltInType const type = Type(fields, "Type");
    bool const hasElement = fields.Find("ElementType") != nullptr;
    if (type != OpcUaType_DataValue) {
        if (hasElement) {
            FieldReader::Refuse("ElementType", "goes with the type DataValue only");
        }
        return {type};
    }
    if (!hasElement) {
        FieldReader::Refuse("ElementType", "missing, the type DataValue needs it");
    }
    _OpcUa_BuiltInType const element = Type(fields, "ElementType");
    if (element == OpcUaType_DataValue) {
        FieldReader::Refuse("ElementType", "a DataValue inside a DataValue cannot be");
    }
    return {type, element};
}

}  // namespace

VariableConfig CheckVariable(LuaValue const& value) {
    FieldReader const fields(value, VariableFields());
    VariableConfig variable;
    variable.name = fields.Text("Name");
    variable.type = FullType(fields);
    variable.objectType = fields.Name("ObjectType", ObjectTypes(), "object type");
    variable.property = fields.Name("ObjectProperties", Properties(), "property");
    variable.objectNumber = static_cast<int>(fields.Integer("ObjectNumber", 0, LargestInstance));
    variable.write = fields.OptionalBoolean("Write").value_or(false);
    return variable;
}

}  // namespace workbench
