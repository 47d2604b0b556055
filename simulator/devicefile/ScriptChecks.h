#pragma once

#include <initializer_list>
#include <string>

#include "Calendar.h"
#include "ObjectId.h"
#include "Octets.h"
#include "PropertyId.h"
#include "ScriptValue.h"
#include "Standard.h"

// What a device file's values must be. Each gives the value or throws a Mistake that says what was wanted
// and what is there.
namespace simulator::checks {

std::uint64_t unsignedNumber(ScriptValue const& value);
// Also not above `highest`.
std::uint32_t unsignedUpTo(ScriptValue const& value, std::uint32_t highest);
std::int64_t signedNumber(ScriptValue const& value);
double number(ScriptValue const& value);
// A number that single precision can hold, or an infinite one, or none ("not a number").
float singleNumber(ScriptValue const& value);
bool boolean(ScriptValue const& value);
std::string const& text(ScriptValue const& value);
// Octets of pairs of hexadecimal digits: "0A14".
Octets hexadecimal(ScriptValue const& value);
// A text of the digits 0 and 1.
std::string const& bits(ScriptValue const& value);
CalendarDate date(ScriptValue const& value);
TimeOfDay time(ScriptValue const& value);
// {"analog_input", 1}
ObjectId objectIdentifier(ScriptValue const& value);
PropertyId property(ScriptValue const& value);

// A table of named fields and nothing else, none but these.
void fields(ScriptValue const& value, std::initializer_list<char const*> names);
// A plain table of elements and nothing else.
std::vector<ScriptValue> const& list(ScriptValue const& value);

}  // namespace simulator::checks
