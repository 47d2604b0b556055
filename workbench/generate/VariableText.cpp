#include "VariableText.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "DatumText.h"
#include "LuaText.h"
#include "ObjectNames.h"
#include "Printable.h"
#include "PropertyNames.h"

namespace workbench {

namespace {

using standard::Datum;
using standard::DatumKind;
using standard::PropertyId;

// What a project may have in these fields (docs/workbench.md#of-a-variable).
constexpr std::size_t LongestText = 65535;
constexpr std::size_t LongestUnit = 255;
constexpr std::size_t MostStates = 5000;
constexpr std::size_t WidestLine = 110;

using Fields = std::vector<std::string>;

void AddText(Fields& fields, char const* name, std::string const& raw, std::size_t longest = LongestText) {
    std::string const text = tools::ValidUtf8(raw);
    if (!text.empty() && text.size() <= longest) {
        fields.push_back(std::string(name) + " = " + LuaString(text));
    }
}

std::string UnitOf(ObjectRecord const& object) {
    auto const listed = object.listed.find("unit-code");
    auto const units = UnitsOf(object);
    if (!units) {
        return listed == object.listed.end() ? std::string() : listed->second;
    }
    Datum datum;
    datum.kind = DatumKind::Enumerated;
    datum.number = *units;
    std::string const name = standard::DatumText(datum, standard::Datatype::Units);
    return name == std::to_string(*units) ? "unit " + name : name;
}

bool IsBinary(ObjectRecord const& object) {
    return object.id.type >= 3 && object.id.type <= 5;  // Binary Input, Output and Value
}

bool IsMultiState(ObjectRecord const& object) {
    return object.id.type == 13 || object.id.type == 14 || object.id.type == 19;
}

// Only quantities have a unit that is shown.
bool IsQuantity(ObjectRecord const& object, std::string const& elementType) {
    bool const isNumber = elementType == "Float" || elementType == "Double" || elementType == "UInt32" ||
                          elementType == "Int32";
    return isNumber && !IsBinary(object) && !IsMultiState(object);
}

void AddStateTexts(Fields& fields, ObjectRecord const& object) {
    std::vector<std::string> const texts = StateTextsOf(object);
    if (!IsMultiState(object) && !(IsBinary(object) && texts.size() == 2)) {
        return;
    }
    bool const isUsed =
        std::any_of(texts.begin(), texts.end(), [](auto const& text) { return !text.empty(); });
    if (!isUsed || texts.size() > MostStates) {
        return;
    }
    std::string list;
    for (std::string const& text : texts) {
        list += (list.empty() ? "" : ", ") + LuaString(tools::ValidUtf8(text).substr(0, LongestText));
    }
    fields.push_back("StateTexts = {" + list + "}");
}

// The number of a property that is a single number; empty for anything else, and for what is not finite.
std::string NumberText(ObjectRecord const& object, PropertyId property) {
    Datum const* const value = object.Value(property);
    switch (value ? value->kind : DatumKind::Null) {
        case DatumKind::Unsigned:
        case DatumKind::Enumerated:
            return value->number <= INT64_MAX ? std::to_string(value->number) : std::string();
        case DatumKind::Signed:
            return std::to_string(value->Signed());
        case DatumKind::Real:
            return std::isfinite(value->real) ? LuaNumber(static_cast<float>(value->real)) : std::string();
        case DatumKind::Double:
            return std::isfinite(value->real) ? LuaNumber(value->real) : std::string();
        default:
            return {};
    }
}

void AddNumber(Fields& fields, char const* name, ObjectRecord const& object, PropertyId property) {
    std::string const number = NumberText(object, property);
    if (!number.empty()) {
        fields.push_back(std::string(name) + " = " + number);
    }
}

std::string Listed(ObjectRecord const& object, char const* heading) {
    auto const found = object.listed.find(heading);
    return found == object.listed.end() ? std::string() : found->second;
}

void AddDefault(Fields& fields, ObjectRecord const& object) {
    if (std::string const listed = Listed(object, "present-value-default"); !listed.empty()) {
        AddText(fields, "Default", listed);
        return;
    }
    Datum const* const value = object.Value(PropertyId::Relinquish_Default);
    if (value && NumberText(object, PropertyId::Relinquish_Default).empty() &&
        value->kind != DatumKind::Null) {
        AddText(fields, "Default", standard::DatumText(*value));
        return;
    }
    AddNumber(fields, "Default", object, PropertyId::Relinquish_Default);
}

// "Y" and "N" of a point list.
void AddYesNo(Fields& fields, char const* name, std::string const& listed) {
    if (listed == "Y" || listed == "N") {
        fields.push_back(std::string(name) + (listed == "Y" ? " = true" : " = false"));
    }
}

std::string PointField(ObjectRecord const& object, std::string const& name) {
    Fields fields;
    AddText(fields, "KeyName", Listed(object, "keyname"));
    if (NameOf(object) != name) {
        AddText(fields, "ObjectName", NameOf(object));
    }
    AddDefault(fields, object);
    AddNumber(fields, "Minimum", object, PropertyId::Min_Pres_Value);
    AddNumber(fields, "Maximum", object, PropertyId::Max_Pres_Value);
    // The number of states, where the texts do not say it.
    if (IsMultiState(object) &&
        NumberOf(object, PropertyId::Number_Of_States) != StateTextsOf(object).size()) {
        AddNumber(fields, "Maximum", object, PropertyId::Number_Of_States);
    }
    AddNumber(fields, "HighLimit", object, PropertyId::High_Limit);
    AddNumber(fields, "LowLimit", object, PropertyId::Low_Limit);
    std::string const settable = Listed(object, "settable");
    AddYesNo(fields, "Settable", settable.empty() && IsSettable(object) ? "Y" : settable);
    AddYesNo(fields, "Cov", Listed(object, "supports COV"));
    auto const notifying = NumberOf(object, PropertyId::Notification_Class);
    if (notifying && *notifying <= standard::ObjectId::LastInstance - 1) {
        AddNumber(fields, "NotificationClass", object, PropertyId::Notification_Class);
    }
    AddText(fields, "VendorAddress", Listed(object, "vendor-specific-address"));
    std::string text;
    for (std::string const& field : fields) {
        text += (text.empty() ? "" : ", ") + field;
    }
    return text.empty() ? text : "Point = {" + text + "}";
}

// The fields in as few lines as their widths allow.
std::string Wrapped(Fields const& fields, std::size_t indent) {
    std::string text = "{ ";
    std::size_t width = indent + text.size();
    for (std::size_t i = 0; i < fields.size(); ++i) {
        std::string const field = fields[i] + (i + 1 < fields.size() ? "," : " }");
        if (i > 0 && width + 1 + field.size() > WidestLine) {
            text += '\n' + std::string(indent + 2, ' ');
            width = indent + 2;
        } else if (i > 0) {
            text += ' ';
            ++width;
        }
        text += field;
        width += field.size();
    }
    return text;
}

}  // namespace

std::string VariableText(ObjectRecord const& object, std::string const& name, PointChoice const& choice,
                         VariableStyle const& style, std::size_t indent) {
    Fields fields = {
        "Name = " + LuaString(name),
        "Type = \"DataValue\"",
        "ElementType = " + LuaString(choice.support.elementType),
        "ObjectType = " + LuaString(standard::ObjectTypeText(object.id.type)),
        "ObjectNumber = " + std::to_string(object.id.instance),
        "ObjectProperties = " +
            LuaString(standard::PropertyText(static_cast<std::uint32_t>(choice.property))),
    };
    if (style.isWritten) {
        fields.emplace_back("Write = true");
    }
    if (IsQuantity(object, choice.support.elementType)) {
        AddText(fields, "Unit", UnitOf(object), LongestUnit);
    }
    AddStateTexts(fields, object);
    if (!style.isBrief) {
        AddText(fields, "Description", TextOf(object, PropertyId::Description));
        if (std::string point = PointField(object, name); !point.empty()) {
            fields.push_back(std::move(point));
        }
    }
    return Wrapped(fields, indent);
}

}  // namespace workbench
