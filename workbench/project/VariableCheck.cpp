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
    static std::vector<std::string> const fields = [] {
        std::vector<std::string> names = {
            "Name", "Type", "ElementType", "ObjectType", "ObjectNumber", "ObjectProperties", "Write"};
        std::vector<std::string> const& more = WorkbenchFieldsOfVariable();
        names.insert(names.end(), more.begin(), more.end());
        return names;
    }();
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
            FieldReader::Refuse(FindingCode::UnknownName, name,
                                value.Describe() + " is not a type" + TypeSuggestion(value.text));
        }
        return *type;
    }
    auto const type = FindType(fields.Integer(name, 0, 25));
    if (!type) {
        FieldReader::Refuse(FindingCode::UnknownName, name,
                            value.Describe() + " is not the number of a type that variables can have");
    }
    return *type;
}

void RefuseElement(char const* mistake) {
    FieldReader::Refuse(FindingCode::WrongElementType, "ElementType", mistake);
}

_OpcUa_BuiltInType ElementType(FieldReader const& fields, _OpcUa_BuiltInType type) {
    bool const isPresent = fields.Find("ElementType") != nullptr;
    if (isPresent && type != OpcUaType_DataValue) {
        RefuseElement("is allowed only with the type DataValue");
    }
    if (!isPresent && type == OpcUaType_DataValue) {
        RefuseElement("missing; the type DataValue needs it");
    }
    _OpcUa_BuiltInType const element = isPresent ? Type(fields, "ElementType") : OpcUaType_Null;
    if (element == OpcUaType_DataValue) {
        RefuseElement("a DataValue cannot contain a DataValue");
    }
    return element;
}

// With a mistake in Type, nothing is known of ElementType.
void ReadType(FieldReader const& fields, OpcUa_BuiltInTypeHlp& type, Findings& mistakes) {
    if (Note(mistakes, [&] { type.Type = Type(fields, "Type"); })) {
        Note(mistakes, [&] { type.ElementType = ElementType(fields, type.Type); });
    }
}

}  // namespace

VariableConfig CheckVariable(tools::ScriptValue const& value, Findings& mistakes) {
    VariableConfig variable;
    Note(mistakes, [&] {
        FieldReader const fields(value);
        fields.FindUnknown(VariableFields(), mistakes);
        Note(mistakes, [&] { variable.name = fields.Text("Name"); });
        ReadType(fields, variable.type, mistakes);
        Note(mistakes,
             [&] { variable.objectType = fields.Name("ObjectType", ObjectTypes(), "an object type"); });
        Note(mistakes,
             [&] { variable.property = fields.Name("ObjectProperties", Properties(), "a property"); });
        Note(mistakes, [&] {
            variable.objectNumber = static_cast<int>(fields.Integer("ObjectNumber", 0, LargestInstance));
        });
        Note(mistakes, [&] { variable.write = fields.OptionalBoolean("Write").value_or(false); });
        ReadWorkbenchFields(fields, variable, mistakes);
    });
    return variable;
}

}  // namespace workbench
