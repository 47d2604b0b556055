#include "ScriptChecks.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "CalendarText.h"
#include "Mistake.h"
#include "ObjectType.h"

namespace simulator::checks {

namespace {

[[noreturn]] void fail(std::string const& wanted, ScriptValue const& value) {
    throw Mistake("must be " + wanted + ", not " + value.describe());
}

// The number as an integer: of 1 as of 1.0.
std::int64_t whole(ScriptValue const& value, char const* wanted) {
    constexpr double exact = 9007199254740992.0;
    if (value.type == ScriptValue::Type::Integer) {
        return value.integer;
    }
    if (!value.isNumber() || !(std::fabs(value.number) <= exact) ||
        value.number != std::floor(value.number)) {
        fail(wanted, value);
    }
    return static_cast<std::int64_t>(value.number);
}

unsigned nibble(char digit) {
    return static_cast<unsigned>(digit <= '9' ? digit - '0' : (digit | 0x20) - 'a' + 10);
}

bool consistsOf(std::string const& text, char const* characters) {
    return text.find_first_not_of(characters) == std::string::npos;
}

}  // namespace

std::uint64_t unsignedNumber(ScriptValue const& value) {
    constexpr char const* wanted = "a whole number from 0 up";
    std::int64_t const number = whole(value, wanted);
    if (number < 0) {
        fail(wanted, value);
    }
    return static_cast<std::uint64_t>(number);
}

std::uint32_t unsignedUpTo(ScriptValue const& value, std::uint32_t highest) {
    std::uint64_t const number = unsignedNumber(value);
    if (number > highest) {
        fail("at most " + std::to_string(highest), value);
    }
    return static_cast<std::uint32_t>(number);
}

std::int64_t signedNumber(ScriptValue const& value) {
    return whole(value, "a whole number");
}

double number(ScriptValue const& value) {
    if (!value.isNumber()) {
        fail("a number", value);
    }
    return value.number;
}

float singleNumber(ScriptValue const& value) {
    double const found = number(value);
    if (std::isfinite(found) && std::fabs(found) > FLT_MAX) {
        fail("a number of single precision", value);
    }
    return static_cast<float>(found);
}

bool boolean(ScriptValue const& value) {
    if (value.type != ScriptValue::Type::Boolean) {
        fail("true or false", value);
    }
    return value.boolean;
}

std::string const& text(ScriptValue const& value) {
    if (value.type != ScriptValue::Type::Text) {
        fail("a text", value);
    }
    return value.text;
}

Octets hexadecimal(ScriptValue const& value) {
    std::string const& digits = text(value);
    if (digits.size() % 2 != 0 || !consistsOf(digits, "0123456789ABCDEFabcdef")) {
        fail("pairs of hexadecimal digits", value);
    }
    Octets octets;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        octets.push_back(static_cast<char>(nibble(digits[i]) << 4 | nibble(digits[i + 1])));
    }
    return octets;
}

std::string const& bits(ScriptValue const& value) {
    if (!consistsOf(text(value), "01")) {
        fail("a text of 0 and 1", value);
    }
    return value.text;
}

CalendarDate date(ScriptValue const& value) {
    auto const date = dateOfText(text(value));
    if (!date) {
        fail("a date like \"2024-03-15\"", value);
    }
    return *date;
}

TimeOfDay time(ScriptValue const& value) {
    auto const time = timeOfText(text(value));
    if (!time) {
        fail("a time like \"08:00:00\"", value);
    }
    return *time;
}

ObjectId objectIdentifier(ScriptValue const& value) {
    if (value.list.size() < 2) {
        fail("an object like {\"analog_input\", 1}", value);
    }
    std::string const& name = text(value.list[0]);
    ObjectType const* type = name == "device" ? &deviceObjectType() : objectTypeOfName(name);
    if (!type) {
        throw Mistake("unknown object type \"" + name + "\"");
    }
    return {type->code, unsignedUpTo(value.list[1], ObjectId::kLastInstance)};
}

PropertyId property(ScriptValue const& value) {
    auto const id = propertyOfName(text(value));
    if (!id) {
        throw Mistake("unknown property \"" + value.text + "\"");
    }
    return *id;
}

void fields(ScriptValue const& value, std::initializer_list<char const*> names) {
    if (value.type != ScriptValue::Type::Table) {
        fail("a table", value);
    }
    for (ScriptField const& field : value.fields) {
        if (std::find(names.begin(), names.end(), field.name) == names.end()) {
            throw Mistake("unknown name \"" + field.name + "\"");
        }
    }
    if (!value.list.empty()) {
        throw Mistake("must have names for all its values");
    }
}

std::vector<ScriptValue> const& list(ScriptValue const& value) {
    if (!value.isPlainTable() || !value.fields.empty()) {
        fail("a list", value);
    }
    return value.list;
}

}  // namespace simulator::checks
