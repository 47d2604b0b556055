#include "ObjectRecord.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace workbench {

using standard::Datum;
using standard::DatumKind;
using standard::PropertyId;

namespace {

// The outputs, the values, Command, Channel and the lighting outputs (clause 12): their Present_Value can be
// written in service.
constexpr std::uint16_t TypesToSet[] = {1,  2,  4,  5,  7,  14, 19, 39, 40, 41, 42, 43,
                                        44, 45, 46, 47, 48, 49, 50, 53, 54, 55, 63, 64};

}  // namespace

std::vector<Datum> const* ObjectRecord::Values(PropertyId property) const {
    auto const found = properties.find(static_cast<std::uint32_t>(property));
    return found == properties.end() || found->second.failure ? nullptr : &found->second.values;
}

Datum const* ObjectRecord::Value(PropertyId property) const {
    std::vector<Datum> const* const values = Values(property);
    return values && values->size() == 1 ? values->data() : nullptr;
}

void ObjectRecord::Set(PropertyId property, std::vector<Datum> values) {
    std::uint32_t const number = static_cast<std::uint32_t>(property);
    properties[number] = {{id, number, std::nullopt}, std::move(values), std::nullopt};
}

std::string TextOf(ObjectRecord const& object, PropertyId property) {
    Datum const* const value = object.Value(property);
    return value && value->kind == DatumKind::CharacterString ? value->text : std::string();
}

std::optional<std::uint32_t> NumberOf(ObjectRecord const& object, PropertyId property) {
    Datum const* const value = object.Value(property);
    bool const isNumber =
        value && (value->kind == DatumKind::Unsigned || value->kind == DatumKind::Enumerated);
    return isNumber && value->number <= UINT32_MAX ? std::optional(static_cast<std::uint32_t>(value->number))
                                                   : std::nullopt;
}

std::string NameOf(ObjectRecord const& object) {
    return TextOf(object, PropertyId::Object_Name);
}

std::vector<std::string> StateTextsOf(ObjectRecord const& object) {
    std::vector<std::string> texts;
    if (auto const* const states = object.Values(PropertyId::State_Text)) {
        for (Datum const& state : *states) {
            texts.push_back(state.text);
        }
        return texts;
    }
    if (object.Value(PropertyId::Inactive_Text) || object.Value(PropertyId::Active_Text)) {
        texts = {TextOf(object, PropertyId::Inactive_Text), TextOf(object, PropertyId::Active_Text)};
    }
    return texts;
}

std::optional<std::uint32_t> UnitsOf(ObjectRecord const& object) {
    auto const units = NumberOf(object, PropertyId::Units);
    return units ? units : NumberOf(object, PropertyId::Output_Units);
}

bool IsSettable(ObjectRecord const& object) {
    auto const listed = object.listed.find("settable");
    if (listed != object.listed.end() && !listed->second.empty()) {
        return listed->second == "Y" || listed->second == "y";
    }
    if (object.Values(PropertyId::Priority_Array)) {
        return true;
    }
    auto const type = std::find(std::begin(TypesToSet), std::end(TypesToSet), object.id.type);
    return type != std::end(TypesToSet);
}

}  // namespace workbench
