#pragma once

#include <initializer_list>
#include <string>

#include "Calendar.h"
#include "ObjectId.h"
#include "OctetVector.h"
#include "PropertyId.h"
#include "Script.h"
#include "Standard.h"

// What a device file's values must be. Each returns the value or throws a Mistake that states what is
// expected and what is there.
namespace simulator::checks {

std::uint64_t UnsignedNumber(ScriptValue const& value);
// Also not above `highest`.
std::uint32_t UnsignedUpTo(ScriptValue const& value, std::uint32_t highest);
std::int64_t SignedNumber(ScriptValue const& value);
double Number(ScriptValue const& value);
// A number that single precision can hold, or an infinite one, or none ("not a number").
float SingleNumber(ScriptValue const& value);
bool Boolean(ScriptValue const& value);
std::string const& Text(ScriptValue const& value);
// Octets of pairs of hexadecimal digits: "0A14".
Octets Hexadecimal(ScriptValue const& value);
// A text of the digits 0 and 1.
std::string const& Bits(ScriptValue const& value);
CalendarDate Date(ScriptValue const& value);
TimeOfDay Time(ScriptValue const& value);
// {"analog_input", 1}
ObjectId ObjectIdentifier(ScriptValue const& value);
PropertyId Property(ScriptValue const& value);

// A table of named fields and nothing else, none but these.
void Fields(ScriptValue const& value, std::initializer_list<char const*> names);
// A plain table of elements and nothing else.
std::vector<ScriptValue> const& List(ScriptValue const& value);

}  // namespace simulator::checks
