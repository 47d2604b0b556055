#pragma once

#include <initializer_list>
#include <string>

#include "Calendar.h"
#include "ObjectId.h"
#include "OctetVector.h"
#include "PropertyId.h"
#include "Script.h"
#include "Standard.h"

// Checks of the values of a device file. Each returns the value or throws a Mistake that states the expected
// value and the present one.
namespace simulator::checks {

std::uint64_t UnsignedNumber(ScriptValue const& value);
// At most `highest`.
std::uint32_t UnsignedUpTo(ScriptValue const& value, std::uint32_t highest);
std::int64_t SignedNumber(ScriptValue const& value);
double Number(ScriptValue const& value);
// A number in the range of single precision, an infinity or a NaN.
float SingleNumber(ScriptValue const& value);
bool Boolean(ScriptValue const& value);
std::string const& Text(ScriptValue const& value);
// The octets of a text of hexadecimal digits: "0A14".
Octets Hexadecimal(ScriptValue const& value);
// A text of the digits 0 and 1.
std::string const& Bits(ScriptValue const& value);
CalendarDate Date(ScriptValue const& value);
TimeOfDay Time(ScriptValue const& value);
// {"analog_input", 1}, or {20, 1}
ObjectId ObjectIdentifier(ScriptValue const& value);
// The code of an object type by its name, "trend_log", or its number, also one without a table.
std::uint16_t ObjectTypeCode(ScriptValue const& value);
// That name; "object_type_300" for a number without a name.
std::string ObjectTypeName(std::uint16_t code);
// By its name or its number.
PropertyId Property(ScriptValue const& value);
// The same for the key of a table, in which a number is a text too.
PropertyId PropertyKey(std::string const& key);
// The key of a table of priorities, 1 to 16.
std::uint8_t Priority(std::string const& key);

// A table with no other contents than these fields.
void Fields(ScriptValue const& value, std::initializer_list<char const*> names);
// A plain table with elements only.
std::vector<ScriptValue> const& List(ScriptValue const& value);

}  // namespace simulator::checks
