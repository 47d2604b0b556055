#include "PrimitiveReader.h"

#include "BacnetObject.h"
#include "CalendarText.h"
#include "Content.h"
#include "Enumerations.h"
#include "Mistake.h"
#include "Printable.h"
#include "RawReader.h"
#include "ScriptChecks.h"
#include "SignalReader.h"

namespace simulator {

namespace {

constexpr std::uint32_t HighestEnumerated = 65535;

// The typed values of schedules. An enumerated one is a number of any enumeration.
struct TypedRow {
    char const* name;
    Datatype datatype;
};

constexpr TypedRow Typed[] = {
    {"boolean", Datatype::Boolean},
    {"unsigned", Datatype::Unsigned},
    {"signed", Datatype::Signed},
    {"real", Datatype::Real},
    {"double", Datatype::Double},
    {"octet_string", Datatype::OctetString},
    {"character_string", Datatype::CharacterString},
    {"bit_string", Datatype::BitString},
    {"date", Datatype::Date},
    {"time", Datatype::Time},
};

ValuePtr Fixed(ApplicationTag tag, Octets const& content, double number = 0) {
    TagWriter writer;
    writer.Application(tag, content);
    return std::make_shared<FixedValue>(writer.Take(), number);
}

ValuePtr FixedBoolean(bool value) {
    TagWriter writer;
    writer.Boolean(value);
    return std::make_shared<FixedValue>(writer.Take(), value ? 1 : 0);
}

ApplicationTag TagOf(Datatype datatype) {
    switch (datatype) {
        case Datatype::Boolean:
            return ApplicationTag::Boolean;
        case Datatype::Unsigned:
            return ApplicationTag::Unsigned;
        case Datatype::Signed:
            return ApplicationTag::Signed;
        case Datatype::Double:
            return ApplicationTag::Double;
        case Datatype::Real:
        case Datatype::Any:
            return ApplicationTag::Real;
        default:
            break;
    }
    if (!IsEnumeration(datatype)) {
        throw Mistake("cannot move: it is not a number");
    }
    return ApplicationTag::Enumerated;
}

ValuePtr ReadClock(Datatype datatype) {
    switch (datatype) {
        case Datatype::Date:
            return std::make_shared<ClockValue>(true, false);
        case Datatype::Time:
            return std::make_shared<ClockValue>(false, true);
        case Datatype::DateTime:
            return std::make_shared<ClockValue>(true, true);
        default:
            throw Mistake("cannot be a clock: it is not a date or time");
    }
}

ScriptValue const& OnlyOne(ScriptValue const& value) {
    if (value.list.size() != 1) {
        throw Mistake(value.kind + ": must have one value");
    }
    return value.list[0];
}

ValuePtr ReadTyped(ScriptValue const& value) {
    if (value.IsMade("null")) {
        return std::make_shared<FixedValue>(Octets(1, '\0'));
    }
    if (value.IsMade("object_identifier")) {
        return FixedObjectIdentifier(checks::ObjectIdentifier(value));
    }
    if (value.IsMade("enumerated")) {
        return FixedEnumerated(checks::UnsignedUpTo(OnlyOne(value), 0xFFFFFFFF));
    }
    for (TypedRow const& row : Typed) {
        if (value.IsMade(row.name)) {
            return ReadPrimitive(row.datatype, OnlyOne(value));
        }
    }
    throw Mistake("cannot be " + value.Describe());
}

ValuePtr ReadAny(ScriptValue const& value) {
    switch (value.type) {
        case ScriptValue::Type::Boolean:
            return FixedBoolean(value.boolean);
        case ScriptValue::Type::Text:
            return FixedText(value.text);
        case ScriptValue::Type::Table:
            return ReadTyped(value);
        default:
            return ReadPrimitive(Datatype::Real, value);
    }
}

ValuePtr ReadFixed(Datatype datatype, ScriptValue const& value) {
    switch (datatype) {
        case Datatype::Boolean:
            return FixedBoolean(checks::Boolean(value));
        case Datatype::Unsigned:
            return FixedUnsigned(checks::UnsignedNumber(value));
        case Datatype::Signed:
            return Fixed(ApplicationTag::Signed, content::SignedNumber(checks::SignedNumber(value)),
                         value.number);
        case Datatype::Real:
            return Fixed(ApplicationTag::Real, content::Real(checks::SingleNumber(value)), value.number);
        case Datatype::Double:
            return Fixed(ApplicationTag::Double, content::DoubleNumber(checks::Number(value)), value.number);
        case Datatype::OctetString:
            return Fixed(ApplicationTag::OctetString, checks::Hexadecimal(value));
        case Datatype::CharacterString:
            return FixedText(checks::Text(value));
        case Datatype::BitString:
            return FixedBits(checks::Bits(value));
        case Datatype::Date:
            return Fixed(ApplicationTag::Date, content::Date(checks::Date(value)));
        case Datatype::Time:
            return Fixed(ApplicationTag::Time, content::Time(checks::Time(value)));
        case Datatype::DateTime:
            return std::make_shared<FixedValue>(ReadDateTime(value));
        case Datatype::ObjectIdentifier:
            return FixedObjectIdentifier(checks::ObjectIdentifier(value));
        case Datatype::Any:
            return ReadAny(value);
        default:
            return FixedEnumerated(ReadEnumerated(datatype, value));
    }
}

}  // namespace

std::vector<std::string> PrimitiveConstructors() {
    std::vector<std::string> names{"clock", "null", "enumerated", "object_identifier"};
    for (TypedRow const& row : Typed) {
        names.emplace_back(row.name);
    }
    return names;
}

ValuePtr ReadPrimitive(Datatype datatype, ScriptValue const& value) {
    if (auto raw = ReadRaw(value)) {
        return raw;
    }
    if (auto signal = ReadSignal(value)) {
        return std::make_shared<MovingValue>(std::move(signal), TagOf(datatype));
    }
    return value.IsMade("clock") ? ReadClock(datatype) : ReadFixed(datatype, value);
}

std::uint32_t ReadEnumerated(Datatype datatype, ScriptValue const& value) {
    if (value.IsNumber()) {
        return checks::UnsignedUpTo(value, HighestEnumerated);
    }
    if (datatype == Datatype::BinaryPv && value.IsBoolean()) {
        return value.boolean ? 1 : 0;
    }
    auto const number = EnumeratedOfName(datatype, checks::Text(value));
    if (!number) {
        throw Mistake("unknown name " + tools::Quoted(value.text));
    }
    return *number;
}

Octets ReadDateTime(ScriptValue const& value) {
    std::string const& text = checks::Text(value);
    std::size_t const space = text.find(' ');
    std::optional<CalendarDate> const date = text == "*" ? AnyDate : DateOfText(text.substr(0, space));
    std::optional<TimeOfDay> const time =
        text == "*" ? AnyTime : TimeOfText(space == std::string::npos ? "" : text.substr(space + 1));
    if (!date || !time) {
        throw Mistake("must be a date and time like \"2024-03-15 08:00:00\", not " + tools::Quoted(text));
    }
    TagWriter writer;
    writer.Application(ApplicationTag::Date, content::Date(*date));
    writer.Application(ApplicationTag::Time, content::Time(*time));
    return writer.Take();
}

}  // namespace simulator
