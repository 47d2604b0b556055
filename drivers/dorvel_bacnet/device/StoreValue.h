#pragma once

#include "CPropertyValue.h"
#include "PropertyTypeEnum.h"
#include "opcua/OpcUa_Variant.h"

namespace dorvel::BACnet {

// Stores a BACnet value in a variant of the runtime:
//
//   Boolean, Binary_PV    Boolean
//   Unsigned, Signed      UInt32 and Int32, the low 32 bits
//   Real, Double          Float, Double
//   Octet_String          String of hexadecimal digits, two per octet
//   Bit_String            String of "0" and "1", element 0 first
//   Character_String and both schedules   String
//   Time                  UInt32, milliseconds since midnight; the fourth octet counts tenths of a second,
//                         which departs from ASHRAE 135 clause 20.2.13 (hundredths); an unspecified octet
//                         counts as 255
//   Date                  DateTime, midnight less localTimeDiff (units of 100 ns), as dates are local
//   Date_Time             DateTime, not converted
//   Status_Flags          UInt64 0 to 15: in-alarm 8, fault 4, overridden 2, out-of-service 1
//   other enumerations    UInt32
//
// Installed systems rely on the departure. Returns false and stores nothing for a type without a row, such as
// an object identifier. Writes the value to the log when the user's trace is on. Throws std::bad_cast for a
// value of another class than the type has.
bool StoreValue(PropertyTypeEnum type, CPropertyValue& value, long long localTimeDiff,
                OpcUa_VariantHlp& variant);

}  // namespace dorvel::BACnet
