#include "ValueWords.h"

#include <algorithm>
#include <iterator>

#include "DatumText.h"
#include "Printable.h"
#include "PropertyNames.h"
#include "ReferenceWords.h"
#include "UnitSymbols.h"

namespace workbench {

namespace {

using standard::Datum;
using standard::DatumKind;
using standard::DatumText;
using standard::PropertyId;

// Table 19-1. The empty ones are available to anybody.
constexpr char const* PriorityNames[] = {
    "Manual Life Safety", "Automatic Life Safety", "", "",
    "Critical Equipment", "Minimum On/Off",        "", "Manual Operator"};
constexpr std::size_t PriorityNameWidth = 21;

// Properties with references to properties of objects; the last is log-device-object-property.
constexpr PropertyId References[] = {PropertyId::Object_Property_Reference,
                                     PropertyId::List_Of_Object_Property_References,
                                     PropertyId::Controlled_Variable_Reference,
                                     PropertyId::Manipulated_Variable_Reference,
                                     PropertyId::Setpoint_Reference,
                                     PropertyId::Input_Reference,
                                     PropertyId{132}};

bool IsBinary(std::uint16_t type) {
    return type == 3 || type == 4 || type == 5;
}

standard::ReadResult const* ResultOf(ObjectRecord const& object, std::uint32_t property) {
    auto const found = object.properties.find(property);
    return found == object.properties.end() ? nullptr : &found->second;
}

standard::ReadResult const* ResultOf(ObjectRecord const& object, PropertyId property) {
    return ResultOf(object, static_cast<std::uint32_t>(property));
}

// A value with the datatype of Present_Value.
std::string PresentText(ObjectRecord const& object, Datum const& value) {
    return DatumText(std::vector<Datum>{value},
                     {object.id, static_cast<std::uint32_t>(PropertyId::Present_Value), std::nullopt});
}

bool IsReference(std::uint32_t property) {
    return std::any_of(std::begin(References), std::end(References),
                       [property](PropertyId id) { return static_cast<std::uint32_t>(id) == property; });
}

// The names of properties.
std::string NamesText(std::vector<Datum> const& properties) {
    std::string text;
    for (Datum const& property : properties) {
        text += (text.empty() ? "" : ", ") +
                (property.number <= UINT32_MAX
                     ? standard::PropertyText(static_cast<std::uint32_t>(property.number))
                     : DatumText(property));
    }
    return text;
}

}  // namespace

std::string UnitWords(ObjectRecord const& object) {
    auto const units = UnitsOf(object);
    if (!units) {
        return {};
    }
    auto const symbol = standard::UnitSymbol(*units);
    return symbol ? std::string(*symbol) : "unit " + std::to_string(*units);
}

std::string StateWords(ObjectRecord const& object) {
    std::vector<std::string> const texts = StateTextsOf(object);
    auto const state = NumberOf(object, PropertyId::Present_Value);
    if (!state || texts.empty()) {
        return {};
    }
    // Binary values begin at 0, states at 1 (clauses 12.6 and 12.18).
    std::size_t const index = IsBinary(object.id.type) ? *state : std::size_t{*state} - 1;
    return index < texts.size() ? texts[index] : std::string();
}

std::string PlainValue(ObjectRecord const& object) {
    auto const* const values = object.Values(PropertyId::Present_Value);
    return values ? DatumText(*values, {object.id, static_cast<std::uint32_t>(PropertyId::Present_Value),
                                        std::nullopt})
                  : std::string();
}

std::string ValueWords(ObjectRecord const& object) {
    standard::ReadResult const* const result = ResultOf(object, PropertyId::Present_Value);
    if (!result) {
        return {};
    }
    if (result->failure) {
        return "(" + FailureText(*result->failure) + ")";
    }
    std::string const text = DatumText(result->values, result->reference);
    std::string const unit = UnitWords(object);
    std::string const state = StateWords(object);
    return text + (unit.empty() ? "" : " " + unit) + (state.empty() ? "" : " (" + state + ")");
}

std::string FlagWords(ObjectRecord const& object) {
    standard::ReadResult const* const result = ResultOf(object, PropertyId::Status_Flags);
    return result && !result->failure ? DatumText(result->values, result->reference) : std::string();
}

std::string PropertyWords(ObjectRecord const& object, std::uint32_t property) {
    standard::ReadResult const* const result = ResultOf(object, property);
    if (!result) {
        return {};
    }
    if (property == static_cast<std::uint32_t>(PropertyId::Present_Value)) {
        return ValueWords(object);
    }
    if (result->failure) {
        return "(" + FailureText(*result->failure) + ")";
    }
    if (property == static_cast<std::uint32_t>(PropertyId::Property_List)) {
        return NamesText(result->values);
    }
    auto const references = IsReference(property) ? ReferenceWords(result->values) : std::nullopt;
    return references ? *references : DatumText(result->values, result->reference);
}

std::string PriorityName(unsigned priority) {
    return priority >= 1 && priority <= std::size(PriorityNames) ? PriorityNames[priority - 1] : "";
}

std::vector<std::string> PriorityValues(ObjectRecord const& object) {
    std::vector<std::string> values;
    std::vector<Datum> const* const levels = object.Values(PropertyId::Priority_Array);
    for (Datum const& level : levels ? *levels : std::vector<Datum>()) {
        values.push_back(level.kind == DatumKind::Null ? std::string() : PresentText(object, level));
    }
    return values;
}

std::vector<std::string> PriorityLines(ObjectRecord const& object, bool isEachShown) {
    std::vector<std::string> lines;
    unsigned priority = 0;
    for (std::string const& value : PriorityValues(object)) {
        ++priority;
        if (isEachShown || !value.empty()) {
            std::string const name = tools::FitTo(PriorityName(priority), PriorityNameWidth);
            lines.push_back(tools::FitToRight(std::to_string(priority), 2) + "  " + name + "  " +
                            (value.empty() ? "null" : value));
        }
    }
    return lines;
}

}  // namespace workbench
