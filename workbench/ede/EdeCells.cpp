#include "EdeCells.h"

#include <algorithm>
#include <cmath>

#include "FieldValue.h"
#include "NumberText.h"
#include "Printable.h"
#include "PropertyDatatype.h"
#include "UnitCode.h"

namespace workbench {

using standard::Datum;
using standard::DatumKind;
using standard::PropertyId;

namespace {

constexpr std::uint16_t DeviceType = 8;

// The types whose objects report changes of their value (table 13-1).
constexpr std::uint16_t CovTypes[] = {0,  1,  2,  3,  4,  5,  12, 13, 14, 19, 21, 22,
                                      24, 39, 40, 41, 42, 43, 44, 45, 46, 47, 48, 54};

std::string Listed(ObjectRecord const& object, EdeColumn column) {
    auto const found = object.listed.find(HeadingOf(column));
    return found == object.listed.end() ? std::string() : found->second;
}

std::string ValueText(ObjectRecord const& object, PropertyId property) {
    Datum const* const value = object.Value(property);
    return value ? CellText(*value) : std::string();
}

// A property, or what the list says in its place.
std::string ValueOrListed(ObjectRecord const& object, PropertyId property, EdeColumn column) {
    std::string text = ValueText(object, property);
    return text.empty() ? Listed(object, column) : text;
}

// An input has no Relinquish_Default: its default is one of its values, with a point in numbers.
std::string DefaultOf(ObjectRecord const& object) {
    std::string text = ValueOrListed(object, PropertyId::Relinquish_Default, EdeColumn::Default);
    auto const datatype =
        standard::DatatypeOf(object.id.type, static_cast<std::uint32_t>(PropertyId::Present_Value));
    auto const value = datatype ? DatumOf(text, *datatype) : std::nullopt;
    return value && value->kind == DatumKind::Real ? CellText(*value) : text;
}

// The range of a multi-state object is its states.
std::string MinimumOf(ObjectRecord const& object) {
    std::string text = ValueOrListed(object, PropertyId::Min_Pres_Value, EdeColumn::Minimum);
    return text.empty() && NumberOf(object, PropertyId::Number_Of_States) ? "1" : text;
}

// A device can have more texts than states. A list that says so cannot be read.
std::string MaximumOf(ObjectRecord const& object) {
    auto const states = NumberOf(object, PropertyId::Number_Of_States);
    return states ? std::to_string(std::max<std::size_t>(*states, PlainStateTexts(object).size()))
                  : ValueOrListed(object, PropertyId::Max_Pres_Value, EdeColumn::Maximum);
}

std::string SettableOf(ObjectRecord const& object) {
    std::string listed = Listed(object, EdeColumn::Settable);
    return !listed.empty() || object.id.type == DeviceType ? listed : IsSettable(object) ? "Y" : "N";
}

// By the services that the device supports; empty if these are not known.
std::string CovOf(ObjectRecord const& object, ObjectRecord const& device) {
    std::string listed = Listed(object, EdeColumn::SupportsCov);
    Datum const* const services = device.Value(PropertyId::Protocol_Services_Supported);
    if (!listed.empty() || object.id.type == DeviceType || !services ||
        services->kind != DatumKind::BitString) {
        return listed;
    }
    constexpr std::size_t SubscribeCov = 5;
    bool const hasService = services->text.size() > SubscribeCov && services->text[SubscribeCov] == '1';
    bool const isOfType =
        std::find(std::begin(CovTypes), std::end(CovTypes), object.id.type) != std::end(CovTypes);
    return hasService && isOfType ? "Y" : "N";
}

}  // namespace

std::string PlainText(std::string const& text) {
    std::string plain = tools::ValidUtf8(text);
    std::replace_if(
        plain.begin(), plain.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }, ' ');
    return plain;
}

std::vector<std::string> PlainStateTexts(ObjectRecord const& object) {
    std::vector<std::string> texts = StateTextsOf(object);
    while (!texts.empty() && texts.back().empty()) {
        texts.pop_back();
    }
    std::transform(texts.begin(), texts.end(), texts.begin(), PlainText);
    return texts;
}

std::string CellText(Datum const& value) {
    switch (value.kind) {
        case DatumKind::Boolean:
        case DatumKind::Unsigned:
        case DatumKind::Enumerated:
            return std::to_string(value.number);
        case DatumKind::Signed:
            return std::to_string(value.Signed());
        case DatumKind::Real:
            return std::isfinite(value.real) ? tools::NumberText(static_cast<float>(value.real))
                                             : std::string();
        case DatumKind::Double:
            return std::isfinite(value.real) ? tools::NumberText(value.real) : std::string();
        case DatumKind::CharacterString:
            return value.text;
        default:
            return {};
    }
}

std::string CellOf(ObjectRecord const& object, EdeColumn column, ObjectRecord const& device) {
    switch (column) {
        case EdeColumn::ObjectName:
            return NameOf(object);
        case EdeColumn::ObjectType:
            return std::to_string(object.id.type);
        case EdeColumn::ObjectInstance:
            return std::to_string(object.id.instance);
        case EdeColumn::DeviceInstance:
            return std::to_string(device.id.instance);
        case EdeColumn::Description:
            return TextOf(object, PropertyId::Description);
        case EdeColumn::Default:
            return DefaultOf(object);
        case EdeColumn::Minimum:
            return MinimumOf(object);
        case EdeColumn::Maximum:
            return MaximumOf(object);
        case EdeColumn::Settable:
            return SettableOf(object);
        case EdeColumn::SupportsCov:
            return CovOf(object, device);
        case EdeColumn::HighLimit:
            return ValueOrListed(object, PropertyId::High_Limit, column);
        case EdeColumn::LowLimit:
            return ValueOrListed(object, PropertyId::Low_Limit, column);
        case EdeColumn::UnitCode:
            return UnitCell(object);
        case EdeColumn::NotificationClass:
            return ValueOrListed(object, PropertyId::Notification_Class, column);
        default:
            return Listed(object, column);
    }
}

}  // namespace workbench
