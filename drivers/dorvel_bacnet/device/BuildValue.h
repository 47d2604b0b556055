#pragma once

#include <memory>

#include "CPropertyValue.h"
#include "PropertyTypeEnum.h"
#include "opcua/OpcUa_Variant.h"

namespace dorvel::BACnet {

// Builds the BACnet value of a property type from a value of the runtime, for a write:
//
//   Boolean, Binary_PV    an Enumerated 0 or 1: a Boolean property is written as a binary one, which departs
//                         from ASHRAE 135 clause 20.2.3
//   Unsigned, Signed      the 64 bits of the integer
//   Real, Double          a number that is too large for Real is infinite
//   Character_String      the text in UTF-8
//   Time                  from milliseconds since midnight; the fourth octet holds tenths of a second, which
//                         departs from clause 20.2.13 (hundredths)
//   Date                  the local date of a time, weekday unspecified
//   Date_Time             date and time of day of a time in UTC, unlike Date; weekday unspecified, the fourth
//                         octet as above
//   both schedules        the text, which is checked when the message is formed
//
// Installed systems rely on the departures. localTimeDiff is local time less UTC in units of 100 ns. A value
// that cannot be converted counts as 0, false or an empty text.
//
// Throws std::runtime_error "Property Type not supported" for a type without a row above, such as octet
// strings, bit strings and enumerations, and for a time that is missing, 0 or without a calendar date.
std::unique_ptr<CPropertyValue> BuildValue(PropertyTypeEnum type, OpcUa_VariantHlp const& value,
                                           long long localTimeDiff);

}  // namespace dorvel::BACnet
