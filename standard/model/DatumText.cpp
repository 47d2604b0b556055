#include "DatumText.h"

#include <iterator>

#include "Enumerations.h"
#include "HexText.h"
#include "NumberText.h"
#include "ObjectNames.h"
#include "PropertyDatatype.h"

namespace standard {

namespace {

std::string TwoDigits(std::uint8_t value) {
    if (value == Unspecified) {
        return "*";
    }
    return (value < 10 ? "0" : "") + std::to_string(value);
}

// Months 13 and 14 and days from 32 on mean several ones (clause 20.2.12).
std::string MonthText(std::uint8_t month) {
    return month == 13 ? "odd" : month == 14 ? "even" : TwoDigits(month);
}

std::string DayText(std::uint8_t day) {
    return day == 32 ? "last" : day == 33 ? "odd" : day == 34 ? "even" : TwoDigits(day);
}

// The weekday is in the text only where the date does not say it.
std::string DateText(CalendarDate const& date) {
    static char const* const weekdays[] = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
    std::string const year = date[0] == Unspecified ? "*" : std::to_string(1900 + date[0]);
    std::string const text = year + '-' + MonthText(date[1]) + '-' + DayText(date[2]);
    bool const isComplete = date[0] != Unspecified && date[1] <= 12 && date[2] <= 31;
    return !isComplete && date[3] >= 1 && date[3] <= 7 ? text + ' ' + weekdays[date[3] - 1] : text;
}

std::string TimeText(TimeOfDay const& time) {
    return TwoDigits(time[0]) + ':' + TwoDigits(time[1]) + ':' + TwoDigits(time[2]) + '.' +
           TwoDigits(time[3]);
}

std::string StatusFlagsText(std::string const& bits) {
    static char const* const names[] = {"in-alarm", "fault", "overridden", "out-of-service"};
    std::string text;
    for (std::size_t i = 0; i < bits.size(); ++i) {
        if (bits[i] == '1') {
            text += (text.empty() ? "" : ", ") +
                    (i < std::size(names) ? std::string(names[i]) : "bit " + std::to_string(i));
        }
    }
    return text.empty() ? "none" : text;
}

std::string Hex(std::vector<char> const& octets) {
    return tools::HexText(octets, tools::HexDigits::Lower);
}

std::string Bracketed(Datum const& datum);

std::string PrimitiveText(Datum const& datum) {
    switch (datum.kind) {
        case DatumKind::Null:
            return "null";
        case DatumKind::Boolean:
            return datum.number != 0 ? "true" : "false";
        case DatumKind::Signed:
            return std::to_string(datum.Signed());
        case DatumKind::Real:
            return tools::NumberText(static_cast<float>(datum.real));
        case DatumKind::Double:
            return tools::NumberText(datum.real);
        case DatumKind::CharacterString:
        case DatumKind::BitString:
            return datum.text;
        case DatumKind::Date:
            return DateText(datum.calendar);
        case DatumKind::Time:
            return TimeText(datum.calendar);
        case DatumKind::ObjectIdentifier:
            return ObjectText(datum.Object());
        case DatumKind::OctetString:
            return Hex(datum.octets);
        case DatumKind::Constructed:
        case DatumKind::Unknown:
            return Bracketed(datum);
        case DatumKind::Unsigned:
        case DatumKind::Enumerated:
            break;
    }
    return std::to_string(datum.number);
}

std::string Joined(std::vector<Datum> const& values) {
    std::string text;
    for (Datum const& value : values) {
        text += (text.empty() ? "" : ", ") + PrimitiveText(value);
    }
    return text;
}

std::string Bracketed(Datum const& datum) {
    std::string const tag = (datum.isContext ? "[" : "application tag [") + std::to_string(datum.tag) + "] ";
    return tag +
           (datum.kind == DatumKind::Constructed ? '{' + Joined(datum.children) + '}' : Hex(datum.octets));
}

bool IsDateTime(std::vector<Datum> const& values) {
    return values.size() == 2 && values[0].kind == DatumKind::Date && values[1].kind == DatumKind::Time;
}

}  // namespace

std::string DatumText(Datum const& datum) {
    return PrimitiveText(datum);
}

std::string DatumText(Datum const& datum, Datatype datatype) {
    if (datum.kind == DatumKind::Enumerated && IsEnumeration(datatype)) {
        auto const name = datum.number <= 0xFFFFFFFF
                              ? NameOfEnumerated(datatype, static_cast<std::uint32_t>(datum.number))
                              : std::nullopt;
        return name ? std::string(*name) : DatumText(datum);
    }
    return datatype == Datatype::StatusFlags && datum.kind == DatumKind::BitString
               ? StatusFlagsText(datum.text)
               : DatumText(datum);
}

std::string DatumText(std::vector<Datum> const& values, PropertyReference const& reference) {
    if (values.empty()) {
        return "{}";
    }
    if (IsDateTime(values)) {
        return DatumText(values[0]) + ' ' + DatumText(values[1]);
    }
    auto const datatype = DatatypeOf(reference.object.type, reference.property);
    bool const isObjectType = reference.property == static_cast<std::uint32_t>(PropertyId::Object_Type);
    std::string text;
    for (Datum const& value : values) {
        text += text.empty() ? "" : ", ";
        if (isObjectType && value.kind == DatumKind::Enumerated && value.number < 1024) {
            text += ObjectTypeText(static_cast<std::uint16_t>(value.number));
        } else {
            text += datatype ? DatumText(value, *datatype) : DatumText(value);
        }
    }
    return text;
}

}  // namespace standard
