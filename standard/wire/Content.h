#pragma once

#include <cstdint>
#include <string>

#include "Calendar.h"
#include "ObjectId.h"
#include "OctetVector.h"

// The contents octets of the primitive datatypes, without a tag (clauses 20.2.2 to 20.2.14).
namespace standard::content {

// In the fewest octets that hold the number, at least one.
Octets UnsignedNumber(std::uint64_t value);
// Two's complement in the fewest octets that hold the number, at least one.
Octets SignedNumber(std::int64_t value);
// IEEE 754 single precision, four octets.
Octets Real(float value);
// IEEE 754 double precision, eight octets.
Octets DoubleNumber(double value);
// Octet 0 for the character set UTF-8, then the octets of the text unchanged.
Octets CharacterString(std::string const& text);
// The number of unused bits, then the bits, the first one as the most significant. Each character of the text
// other than '0' is a 1.
Octets BitString(std::string const& bits);
Octets Date(CalendarDate const& value);
Octets Time(TimeOfDay const& value);
Octets ObjectIdentifier(ObjectId const& value);

}  // namespace standard::content
