#include "PrimitiveReader.h"

#include "BacnetObject.h"
#include "CalendarText.h"
#include "Content.h"
#include "Enumerations.h"
#include "Mistake.h"
#include "ScriptChecks.h"
#include "SignalReader.h"

namespace simulator {

namespace {

constexpr std::uint32_t kHighestEnumerated = 65535;

// The typed values of schedules. Enumerated ones are numbers of no enumeration in particular.
struct TypedRow {
    char const* name;
    Datatype datatype;
};

constexpr TypedRow kTyped[] = {
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

ValuePtr fixed(ApplicationTag tag, Octets const& content, double number = 0) {
    TagWriter writer;
    writer.application(tag, content);
    return std::make_shared<FixedValue>(writer.take(), number);
}

ValuePtr fixedBoolean(bool value) {
    TagWriter writer;
    writer.boolean(value);
    return std::make_shared<FixedValue>(writer.take(), value ? 1 : 0);
}

ApplicationTag tagOf(Datatype datatype) {
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
    if (!isEnumeration(datatype)) {
        throw Mistake("cannot move: it is no number");
    }
    return ApplicationTag::Enumerated;
}

ValuePtr readClock(Datatype datatype) {
    switch (datatype) {
        case Datatype::Date:
            return std::make_shared<ClockValue>(true, false);
        case Datatype::Time:
            return std::make_shared<ClockValue>(false, true);
        case Datatype::DateTime:
            return std::make_shared<ClockValue>(true, true);
        default:
            throw Mistake("cannot be a clock: it is no date or time");
    }
}

ScriptValue const& onlyOne(ScriptValue const& value) {
    if (value.list.size() != 1) {
        throw Mistake(value.kind + ": wants one value");
    }
    return value.list[0];
}

ValuePtr readTyped(ScriptValue const& value) {
    if (value.isMade("null")) {
        return std::make_shared<FixedValue>(Octets(1, '\0'));
    }
    if (value.isMade("object_identifier")) {
        return fixedObjectIdentifier(checks::objectIdentifier(value));
    }
    if (value.isMade("enumerated")) {
        return fixedEnumerated(checks::unsignedUpTo(onlyOne(value), kHighestEnumerated));
    }
    for (TypedRow const& row : kTyped) {
        if (value.isMade(row.name)) {
            return readPrimitive(row.datatype, onlyOne(value));
        }
    }
    throw Mistake("cannot be " + value.describe());
}

ValuePtr readAny(ScriptValue const& value) {
    switch (value.type) {
        case ScriptValue::Type::Boolean:
            return fixedBoolean(value.boolean);
        case ScriptValue::Type::Text:
            return fixedText(value.text);
        case ScriptValue::Type::Table:
            return readTyped(value);
        default:
            return readPrimitive(Datatype::Real, value);
    }
}

ValuePtr readFixed(Datatype datatype, ScriptValue const& value) {
    switch (datatype) {
        case Datatype::Boolean:
            return fixedBoolean(checks::boolean(value));
        case Datatype::Unsigned:
            return fixedUnsigned(checks::unsignedNumber(value));
        case Datatype::Signed:
            return fixed(ApplicationTag::Signed, content::signedNumber(checks::signedNumber(value)),
                         value.number);
        case Datatype::Real:
            return fixed(ApplicationTag::Real, content::real(checks::singleNumber(value)), value.number);
        case Datatype::Double:
            return fixed(ApplicationTag::Double, content::doubleNumber(checks::number(value)), value.number);
        case Datatype::OctetString:
            return fixed(ApplicationTag::OctetString, checks::hexadecimal(value));
        case Datatype::CharacterString:
            return fixedText(checks::text(value));
        case Datatype::BitString:
            return fixedBits(checks::bits(value));
        case Datatype::Date:
            return fixed(ApplicationTag::Date, content::date(checks::date(value)));
        case Datatype::Time:
            return fixed(ApplicationTag::Time, content::time(checks::time(value)));
        case Datatype::DateTime:
            return std::make_shared<FixedValue>(readDateTime(value));
        case Datatype::ObjectIdentifier:
            return fixedObjectIdentifier(checks::objectIdentifier(value));
        case Datatype::Any:
            return readAny(value);
        default:
            return fixedEnumerated(readEnumerated(datatype, value));
    }
}

}  // namespace

std::vector<std::string> primitiveConstructors() {
    std::vector<std::string> names{"clock", "null", "enumerated", "object_identifier"};
    for (TypedRow const& row : kTyped) {
        names.emplace_back(row.name);
    }
    return names;
}

ValuePtr readPrimitive(Datatype datatype, ScriptValue const& value) {
    if (auto signal = readSignal(value)) {
        return std::make_shared<MovingValue>(std::move(signal), tagOf(datatype));
    }
    return value.isMade("clock") ? readClock(datatype) : readFixed(datatype, value);
}

std::uint32_t readEnumerated(Datatype datatype, ScriptValue const& value) {
    if (value.isNumber()) {
        return checks::unsignedUpTo(value, kHighestEnumerated);
    }
    if (datatype == Datatype::BinaryPv && value.type == ScriptValue::Type::Boolean) {
        return value.boolean ? 1 : 0;
    }
    auto const number = enumeratedOfName(datatype, checks::text(value));
    if (!number) {
        throw Mistake("unknown name \"" + value.text + "\"");
    }
    return *number;
}

Octets readDateTime(ScriptValue const& value) {
    std::string const& text = checks::text(value);
    std::size_t const space = text.find(' ');
    std::optional<CalendarDate> const date = text == "*" ? kAnyDate : dateOfText(text.substr(0, space));
    std::optional<TimeOfDay> const time =
        text == "*" ? kAnyTime : timeOfText(space == std::string::npos ? "" : text.substr(space + 1));
    if (!date || !time) {
        throw Mistake("must be a date and time like \"2024-03-15 08:00:00\", not \"" + text + "\"");
    }
    TagWriter writer;
    writer.application(ApplicationTag::Date, content::date(*date));
    writer.application(ApplicationTag::Time, content::time(*time));
    return writer.take();
}

}  // namespace simulator
