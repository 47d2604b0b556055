#include "PointChoice.h"

#include <algorithm>

#include "AddressArgument.h"
#include "Failure.h"
#include "PropertyDatatype.h"
#include "PropertyNames.h"

namespace workbench {

namespace {

using standard::Datatype;
using standard::Datum;
using standard::DatumKind;
using standard::PropertyId;

constexpr std::uint16_t Averaging = 18;
constexpr std::uint16_t IntegerValue = 45;
constexpr std::size_t ReadPropertyMultiple = 14;  // its bit of Protocol_Services_Supported
constexpr std::uint16_t EveryNetwork = 65535;

struct KindRow {
    Datatype datatype;
    DatumKind kind;
    char const* name;
};

// As what the driver reads the values of each datatype.
constexpr KindRow KindRows[] = {
    {Datatype::Unsigned, DatumKind::Unsigned, "Unsigned"},
    {Datatype::Signed, DatumKind::Signed, "Signed"},
    {Datatype::Real, DatumKind::Real, "Real"},
    {Datatype::Double, DatumKind::Double, "Double"},
    {Datatype::OctetString, DatumKind::OctetString, "Octet String"},
    {Datatype::BitString, DatumKind::BitString, "Bit String"},
    {Datatype::Date, DatumKind::Date, "Date"},
    {Datatype::Time, DatumKind::Time, "Time"},
    {Datatype::BinaryPv, DatumKind::Enumerated, "Enumerated"},
    {Datatype::Any, DatumKind::Real, "Real"},  // of a Schedule
};

KindRow const* RowOf(standard::ObjectId const& object, PropertyId property) {
    auto const datatype = standard::DatatypeOf(object.type, static_cast<std::uint32_t>(property));
    for (KindRow const& row : KindRows) {
        if (datatype == row.datatype) {
            return &row;
        }
    }
    return nullptr;
}

bool IsDateTime(std::vector<Datum> const& values) {
    return values.size() == 2 && values[0].kind == DatumKind::Date && values[1].kind == DatumKind::Time;
}

std::string WhyNotValue(ObjectRecord const& object, PropertyId property, std::vector<Datum> const& values) {
    std::string const its = "its " + standard::PropertyText(static_cast<std::uint32_t>(property));
    KindRow const* const row = RowOf(object.id, property);
    if (!row) {
        return IsDateTime(values) ? std::string() : its + " is not a date and a time";
    }
    if (values.size() == 1 && values[0].kind == row->kind) {
        return {};
    }
    return its + " is not of the datatype " + row->name + ", as which the driver reads it";
}

// Why no value of the property can be expected.
std::string WhyNoValue(ObjectRecord const& object, PropertyId property) {
    auto const found = object.properties.find(static_cast<std::uint32_t>(property));
    std::string const name = standard::PropertyText(static_cast<std::uint32_t>(property));
    if (found == object.properties.end()) {
        return "its " + name + " was not read";
    }
    if (found->second.failure) {
        return "the device answers its " + name + " with: " + standard::FailureText(*found->second.failure);
    }
    return WhyNotValue(object, property, found->second.values);
}

// Parts that mean any or several; the weekday follows from the date.
bool HasOpenParts(Datum const& value) {
    auto const& parts = value.calendar;
    if (value.kind == DatumKind::Date) {
        return parts[0] == standard::Unspecified || parts[1] > 12 || parts[2] > 31;
    }
    return value.kind == DatumKind::Time &&
           std::find(parts.begin(), parts.end(), standard::Unspecified) != parts.end();
}

std::string WhyNotCorrect(ObjectRecord const& object, PropertyId property) {
    if (object.id.type == IntegerValue) {
        return "the driver does not read the sign of a number below zero: -5 is read as 251";
    }
    auto const* const values = object.Values(property);
    if (values && std::any_of(values->begin(), values->end(), HasOpenParts)) {
        return "its value has parts that mean any or several, which the driver reads as numbers";
    }
    Datum const* const value = object.Value(property);
    bool const isLarge = value && value->kind == DatumKind::Unsigned && value->number > UINT32_MAX;
    return isLarge ? "its value has more than 32 bits, of which the driver reads the low ones"
                   : std::string();
}

}  // namespace

PointChoice ChoosePoint(ObjectRecord const& object, bool isFromDevice) {
    PointChoice choice;
    choice.property = object.id.type == Averaging ? PropertyId::Average_Value : PropertyId::Present_Value;
    choice.support = SupportOf(object.id, choice.property);
    choice.reason = object.id.instance >= standard::ObjectId::LastInstance
                        ? "no object can have this instance number"
                        : choice.support.whyNot;
    if (choice.reason.empty() && isFromDevice) {
        choice.reason = WhyNoValue(object, choice.property);
    }
    choice.isReadable = choice.reason.empty();
    if (choice.isReadable) {
        choice.reason = WhyNotCorrect(object, choice.property);
    }
    return choice;
}

std::string WhyNotPolled(DeviceRecord const& device) {
    if (!device.peer) {
        return "its address is not known";
    }
    Datum const* const services = device.device.Value(PropertyId::Protocol_Services_Supported);
    if (services && services->text.size() > ReadPropertyMultiple &&
        services->text[ReadPropertyMultiple] == '0') {
        return "it does not support ReadPropertyMultiple, which the driver needs";
    }
    if (!device.peer->remote) {
        return {};
    }
    std::size_t const length = device.peer->remote->mac.size();
    if (length != 1 && length != 2 && length != 6) {
        return "the driver cannot address a station with " + std::to_string(length) +
               " octets, only with 1, 2 or 6";
    }
    return device.peer->remote->network == EveryNetwork || device.peer->remote->network == 0
               ? "no network has the number " + std::to_string(device.peer->remote->network)
               : std::string();
}

}  // namespace workbench
