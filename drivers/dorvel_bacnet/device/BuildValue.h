#pragma once

#include <memory>

#include "CPropertyValue.h"
#include "PropertyTypeEnum.h"
#include "opcua/OpcUa_Variant.h"

namespace dorvel::BACnet {

// The value of a type that is written for a value of the runtime:
//
//   Boolean, Binary_PV    an Enumerated 0 or 1: a Boolean property, too, is written as a binary one
//   Unsigned, Signed      the 64 bits of the integer
//   Real, Double          Real is infinite for what is too large for it
//   Character_String      the text in UTF-8
//   Time                  from milliseconds since midnight; the fourth octet is the tenths of the second, as
//                         the host reads it
//   Date                  the local date of a time, weekday unspecified
//   Date_Time             date and time of day of a time as it stands, weekday unspecified, the fourth octet
//                         as above; in UTC, unlike a Date
//   both schedules        the text, whose mistakes are found when it is written
//
// localTimeDiff is local time less UTC in units of 100 ns. A value that cannot be converted counts as 0,
// false or an empty text. Throws std::runtime_error "Property Type not supported" for octet strings, bit
// strings, enumerations and whatever else has no row here, and for a time that is none, that is 0, or that
// has no calendar date.
std::unique_ptr<CPropertyValue> BuildValue(PropertyTypeEnum type, OpcUa_VariantHlp const& value,
                                           long long localTimeDiff);

}  // namespace dorvel::BACnet
