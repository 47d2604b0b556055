#include "ScriptChecks.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "CalendarText.h"
#include "Mistake.h"
#include "ObjectNames.h"
#include "ObjectType.h"
#include "Printable.h"

namespace simulator::checks {

namespace {

constexpr std::uint16_t LastObjectType = 0x3FF;
constexpr std::uint16_t LastNamedType = 127;  // those of ASHRAE (clause 23.4.1)
constexpr std::uint32_t LastProperty = 0x3FFFFF;

[[noreturn]] void Fail(std::string const& wanted, ScriptValue const& value) {
    throw Mistake("must be " + wanted + ", not " + value.Describe());
}

// The number as an integer, for 1 and for 1.0.
std::int64_t Whole(ScriptValue const& value, char const* wanted) {
    constexpr double exact = 9007199254740992.0;
    if (value.type == ScriptValue::Type::Integer) {
        return value.integer;
    }
    if (!value.IsNumber() || !(std::fabs(value.number) <= exact) ||
        value.number != std::floor(value.number)) {
        Fail(wanted, value);
    }
    return static_cast<std::int64_t>(value.number);
}

unsigned Nibble(char digit) {
    return static_cast<unsigned>(digit <= '9' ? digit - '0' : (digit | 0x20) - 'a' + 10);
}

bool ConsistsOf(std::string const& text, char const* characters) {
    return text.find_first_not_of(characters) == std::string::npos;
}

constexpr char const* HexDigits = "0123456789ABCDEFabcdef";

// A date or a time as its four contents octets: "7E0C19FF".
bool IsFourOctets(std::string const& text) {
    return text.size() == 8 && ConsistsOf(text, HexDigits);
}

template <class Calendar>
Calendar FourOctets(ScriptValue const& value) {
    Octets const octets = Hexadecimal(value);
    Calendar calendar{};
    std::transform(octets.begin(), octets.end(), calendar.begin(),
                   [](char octet) { return static_cast<std::uint8_t>(octet); });
    return calendar;
}

// The name that messages use for an object type without a table: "trend_log", "object_type_300".
std::string NameOfType(std::uint16_t type) {
    std::string name = ObjectTypeText(type);
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '-' || c == ' '; }, '_');
    return name;
}

}  // namespace

std::uint64_t UnsignedNumber(ScriptValue const& value) {
    constexpr char const* wanted = "a whole number from 0 up";
    std::int64_t const number = Whole(value, wanted);
    if (number < 0) {
        Fail(wanted, value);
    }
    return static_cast<std::uint64_t>(number);
}

std::uint32_t UnsignedUpTo(ScriptValue const& value, std::uint32_t highest) {
    std::uint64_t const number = UnsignedNumber(value);
    if (number > highest) {
        Fail("at most " + std::to_string(highest), value);
    }
    return static_cast<std::uint32_t>(number);
}

std::int64_t SignedNumber(ScriptValue const& value) {
    return Whole(value, "a whole number");
}

double Number(ScriptValue const& value) {
    if (!value.IsNumber()) {
        Fail("a number", value);
    }
    return value.number;
}

float SingleNumber(ScriptValue const& value) {
    double const found = Number(value);
    if (std::isfinite(found) && std::fabs(found) > FLT_MAX) {
        Fail("a number of single precision", value);
    }
    return static_cast<float>(found);
}

bool Boolean(ScriptValue const& value) {
    if (!value.IsBoolean()) {
        Fail("true or false", value);
    }
    return value.boolean;
}

std::string const& Text(ScriptValue const& value) {
    if (!value.IsText()) {
        Fail("a text", value);
    }
    return value.text;
}

Octets Hexadecimal(ScriptValue const& value) {
    std::string const& digits = Text(value);
    if (digits.size() % 2 != 0 || !ConsistsOf(digits, HexDigits)) {
        Fail("pairs of hexadecimal digits", value);
    }
    Octets octets;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        octets.push_back(static_cast<char>(Nibble(digits[i]) << 4 | Nibble(digits[i + 1])));
    }
    return octets;
}

std::string const& Bits(ScriptValue const& value) {
    if (!ConsistsOf(Text(value), "01")) {
        Fail("a text of 0 and 1", value);
    }
    return value.text;
}

CalendarDate Date(ScriptValue const& value) {
    auto const date = DateOfText(Text(value));
    if (!date && IsFourOctets(value.text)) {
        return FourOctets<CalendarDate>(value);
    }
    if (!date) {
        Fail("a date like \"2024-03-15\"", value);
    }
    return *date;
}

TimeOfDay Time(ScriptValue const& value) {
    auto const time = TimeOfText(Text(value));
    if (!time && IsFourOctets(value.text)) {
        return FourOctets<TimeOfDay>(value);
    }
    if (!time) {
        Fail("a time like \"08:00:00\"", value);
    }
    return *time;
}

ObjectId ObjectIdentifier(ScriptValue const& value) {
    if (value.list.size() < 2) {
        Fail("an object like {\"analog_input\", 1}", value);
    }
    return {ObjectTypeCode(value.list[0]), UnsignedUpTo(value.list[1], ObjectId::LastInstance)};
}

std::uint16_t ObjectTypeCode(ScriptValue const& value) {
    if (value.IsNumber()) {
        return static_cast<std::uint16_t>(UnsignedUpTo(value, LastObjectType));
    }
    std::string const& name = Text(value);
    if (ObjectType const* const type = name == "device" ? &DeviceObjectType() : ObjectTypeOfName(name)) {
        return type->code;
    }
    for (std::uint16_t code = 0; code <= LastNamedType; ++code) {
        if (name == NameOfType(code)) {
            return code;
        }
    }
    throw Mistake("unknown object type " + tools::Quoted(name));
}

std::string ObjectTypeName(std::uint16_t code) {
    return NameOfType(code);
}

PropertyId Property(ScriptValue const& value) {
    if (value.IsNumber()) {
        return static_cast<PropertyId>(UnsignedUpTo(value, LastProperty));
    }
    auto const id = PropertyOfName(Text(value));
    if (!id) {
        throw Mistake("unknown property " + tools::Quoted(value.text));
    }
    return *id;
}

PropertyId PropertyKey(std::string const& key) {
    bool const isNumber = !key.empty() && key.size() <= 7 && ConsistsOf(key, "0123456789");
    return Property(isNumber ? ScriptValue::OfInteger(std::stoi(key)) : ScriptValue::OfText(key));
}

std::uint8_t Priority(std::string const& key) {
    bool const isNumber = !key.empty() && key.size() <= 2 && ConsistsOf(key, "0123456789");
    int const priority = isNumber ? std::stoi(key) : 0;
    if (priority < 1 || priority > 16) {
        throw Mistake("must be a priority from 1 to 16, not " + tools::Quoted(key));
    }
    return static_cast<std::uint8_t>(priority);
}

void Fields(ScriptValue const& value, std::initializer_list<char const*> names) {
    if (!value.IsTable()) {
        Fail("a table", value);
    }
    for (ScriptField const& field : value.fields) {
        if (std::find(names.begin(), names.end(), field.name) == names.end()) {
            throw Mistake("unknown name " + tools::Quoted(field.name));
        }
    }
    if (!value.list.empty()) {
        throw Mistake("must have names for all its values");
    }
}

std::vector<ScriptValue> const& List(ScriptValue const& value) {
    if (!value.IsPlainTable() || !value.fields.empty()) {
        Fail("a list", value);
    }
    return value.list;
}

}  // namespace simulator::checks
