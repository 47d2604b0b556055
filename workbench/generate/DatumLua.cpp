#include "DatumLua.h"

#include <cmath>

#include "CalendarText.h"
#include "Content.h"
#include "Enumerations.h"
#include "HexText.h"
#include "LuaText.h"

namespace workbench {

namespace {

using standard::Datatype;
using standard::Datum;
using standard::DatumKind;

constexpr std::uint64_t LargestInteger = INT64_MAX;
constexpr std::uint64_t LargestEnumerated = 65535;

std::string HexOf(std::vector<char> const& octets) {
    return '"' + tools::HexText(octets, tools::HexDigits::Upper) + '"';
}

std::string Tagged(int tag, std::vector<char> const& octets) {
    return "tagged(" + std::to_string(tag) + ", " + HexOf(octets) + ')';
}

std::string Call(char const* name, std::string const& argument) {
    return std::string(name) + '(' + argument + ')';
}

std::string Digits(unsigned number, int width) {
    std::string const text = std::to_string(number);
    std::string const zeros(text.size() < static_cast<std::size_t>(width) ? width - text.size() : 0, '0');
    return zeros + text;
}

// "2026-03-15" if the device file reads it as these octets, otherwise the octets.
std::string DateContent(standard::CalendarDate const& date) {
    auto const part = [](unsigned number, int width) {
        return number == standard::Unspecified ? "*" : Digits(number, width);
    };
    std::string const year = date[0] == standard::Unspecified ? "*" : Digits(1900u + date[0], 4);
    std::string const text = year + '-' + part(date[1], 2) + '-' + part(date[2], 2);
    auto const read = standard::DateOfText(text);
    return read && *read == date
               ? text
               : tools::HexText(std::vector<char>(date.begin(), date.end()), tools::HexDigits::Upper);
}

std::string TimeContent(standard::TimeOfDay const& time) {
    std::string text = Digits(time[0], 2) + ':' + Digits(time[1], 2);
    text += time[2] != 0 || time[3] != 0 ? ':' + Digits(time[2], 2) : std::string();
    text += time[3] != 0 ? '.' + Digits(time[3], 2) : std::string();
    auto const read = standard::TimeOfText(text);
    return read && *read == time
               ? text
               : tools::HexText(std::vector<char>(time.begin(), time.end()), tools::HexDigits::Upper);
}

std::string Quote(std::string const& text) {
    return '"' + text + '"';
}

// Numbers that a device file cannot have as such are tagged.
std::string UnsignedText(Datum const& datum, bool isTyped) {
    if (datum.number > LargestInteger) {
        return Tagged(2, standard::content::UnsignedNumber(datum.number));
    }
    return isTyped ? std::to_string(datum.number) : Call("unsigned", std::to_string(datum.number));
}

std::string SignedText(Datum const& datum, bool isTyped) {
    // The literal of the smallest one is not an integer in Lua.
    if (datum.Signed() == INT64_MIN) {
        return Tagged(3, standard::content::SignedNumber(datum.Signed()));
    }
    return isTyped ? std::to_string(datum.Signed()) : Call("signed", std::to_string(datum.Signed()));
}

std::string RealText(Datum const& datum, bool isTyped) {
    if (!std::isfinite(datum.real)) {
        return Tagged(4, standard::content::Real(static_cast<float>(datum.real)));
    }
    std::string const number = LuaNumber(static_cast<float>(datum.real));
    return isTyped ? number : Call("real", number);
}

std::string DoubleText(Datum const& datum, bool isTyped) {
    if (!std::isfinite(datum.real)) {
        return Tagged(5, standard::content::DoubleNumber(datum.real));
    }
    return isTyped ? LuaNumber(datum.real) : Call("double", LuaNumber(datum.real));
}

std::string ObjectText(standard::ObjectId const& object) {
    std::string type = std::to_string(object.type);
    for (standard::ObjectType const& row : standard::AllObjectTypes()) {
        if (row.code == object.type) {
            type = Quote(row.name);
        }
    }
    return "object_identifier(" + type + ", " + std::to_string(object.instance) + ')';
}

std::string UnknownText(Datum const& datum) {
    return datum.isContext ? "context(" + std::to_string(datum.tag) + ", " + HexOf(datum.octets) + ')'
                           : Tagged(datum.tag, datum.octets);
}

std::optional<std::string> EnumeratedText(Datatype datatype, Datum const& datum) {
    if (datum.number > LargestEnumerated) {
        return std::nullopt;
    }
    auto const number = static_cast<std::uint32_t>(datum.number);
    auto const name = standard::NameOfEnumerated(datatype, number);
    bool const isRead = name && standard::EnumeratedOfName(datatype, *name) == number;
    return isRead ? Quote(std::string(*name)) : std::to_string(number);
}

bool IsDateTime(std::vector<Datum> const& values) {
    return values.size() == 2 && values[0].kind == DatumKind::Date && values[1].kind == DatumKind::Time;
}

std::optional<std::string> DateTimeText(std::vector<Datum> const& values) {
    if (!IsDateTime(values)) {
        return std::nullopt;
    }
    std::string const date = DateContent(values[0].calendar);
    std::string const time = TimeContent(values[1].calendar);
    bool const isRead = standard::DateOfText(date) && standard::TimeOfText(time);
    return isRead ? Quote(date + ' ' + time) : "sequence(" + AnyTexts(values) + ')';
}

struct TypedRow {
    Datatype datatype;
    DatumKind kind;
    std::string (*text)(Datum const&);
};

constexpr TypedRow TypedRows[] = {
    {Datatype::Boolean, DatumKind::Boolean,
     [](Datum const& datum) { return std::string(datum.number != 0 ? "true" : "false"); }},
    {Datatype::Unsigned, DatumKind::Unsigned, [](Datum const& datum) { return UnsignedText(datum, true); }},
    {Datatype::Signed, DatumKind::Signed, [](Datum const& datum) { return SignedText(datum, true); }},
    {Datatype::Real, DatumKind::Real, [](Datum const& datum) { return RealText(datum, true); }},
    {Datatype::Double, DatumKind::Double, [](Datum const& datum) { return DoubleText(datum, true); }},
    {Datatype::OctetString, DatumKind::OctetString, [](Datum const& datum) { return HexOf(datum.octets); }},
    {Datatype::CharacterString, DatumKind::CharacterString,
     [](Datum const& datum) { return LuaString(datum.text); }},
    {Datatype::BitString, DatumKind::BitString, [](Datum const& datum) { return Quote(datum.text); }},
    {Datatype::Date, DatumKind::Date, [](Datum const& datum) { return Quote(DateContent(datum.calendar)); }},
    {Datatype::Time, DatumKind::Time, [](Datum const& datum) { return Quote(TimeContent(datum.calendar)); }},
};

constexpr char const* Days[] = {"monday", "tuesday", "wednesday", "thursday", "friday", "saturday", "sunday"};

// The entries of a day: "{\"08:00\", real(21.5)}, ...".
std::optional<std::string> EntriesText(std::vector<Datum> const& entries) {
    if (entries.size() % 2 != 0) {
        return std::nullopt;
    }
    std::string text;
    for (std::size_t i = 0; i < entries.size(); i += 2) {
        if (entries[i].kind != DatumKind::Time) {
            return std::nullopt;
        }
        text += (text.empty() ? "{" : ", {") + Quote(TimeContent(entries[i].calendar)) + ", " +
                AnyText(entries[i + 1]) + '}';
    }
    return text;
}

}  // namespace

std::optional<std::string> TypedText(Datatype datatype, std::vector<Datum> const& values) {
    if (datatype == Datatype::DateTime) {
        return DateTimeText(values);
    }
    if (values.size() != 1) {
        return std::nullopt;
    }
    if (datatype == Datatype::Any) {
        return AnyText(values[0]);
    }
    if (standard::IsEnumeration(datatype)) {
        return values[0].kind == DatumKind::Enumerated ? EnumeratedText(datatype, values[0]) : std::nullopt;
    }
    for (TypedRow const& row : TypedRows) {
        if (row.datatype == datatype && row.kind == values[0].kind) {
            return row.text(values[0]);
        }
    }
    return std::nullopt;
}

std::string AnyTexts(std::vector<Datum> const& values) {
    std::string text;
    for (Datum const& value : values) {
        text += (text.empty() ? "" : ", ") + AnyText(value);
    }
    return text;
}

std::string AnyText(Datum const& datum) {
    switch (datum.kind) {
        case DatumKind::Null:
            return "null()";
        case DatumKind::Boolean:
            return Call("boolean", datum.number != 0 ? "true" : "false");
        case DatumKind::Unsigned:
            return UnsignedText(datum, false);
        case DatumKind::Signed:
            return SignedText(datum, false);
        case DatumKind::Real:
            return RealText(datum, false);
        case DatumKind::Double:
            return DoubleText(datum, false);
        case DatumKind::OctetString:
            return Call("octet_string", HexOf(datum.octets));
        case DatumKind::CharacterString:
            return Call("character_string", LuaString(datum.text));
        case DatumKind::BitString:
            return Call("bit_string", Quote(datum.text));
        case DatumKind::Enumerated:
            return datum.number <= UINT32_MAX ? Call("enumerated", std::to_string(datum.number))
                                              : Tagged(9, standard::content::UnsignedNumber(datum.number));
        case DatumKind::Date:
            return Call("date", Quote(DateContent(datum.calendar)));
        case DatumKind::Time:
            return Call("time", Quote(TimeContent(datum.calendar)));
        case DatumKind::ObjectIdentifier:
            return ObjectText(datum.Object());
        case DatumKind::Constructed:
            return "constructed(" + std::to_string(datum.tag) + (datum.children.empty() ? "" : ", ") +
                   AnyTexts(datum.children) + ')';
        default:
            return UnknownText(datum);
    }
}

std::optional<std::string> WeekText(std::vector<Datum> const& days) {
    if (days.size() != std::size(Days)) {
        return std::nullopt;
    }
    std::string text;
    for (std::size_t i = 0; i < days.size(); ++i) {
        bool const isDay = days[i].kind == DatumKind::Constructed && days[i].tag == 0;
        auto const entries = isDay ? EntriesText(days[i].children) : std::nullopt;
        if (!entries) {
            return std::nullopt;
        }
        if (!entries->empty()) {
            text += (text.empty() ? "" : ", ") + std::string(Days[i]) + " = {" + *entries + '}';
        }
    }
    return '{' + text + '}';
}

}  // namespace workbench
