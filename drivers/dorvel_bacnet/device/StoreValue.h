#pragma once

#include "CPropertyValue.h"
#include "PropertyTypeEnum.h"
#include "opcua/OpcUa_Variant.h"

namespace dorvel::BACnet {

// Stores the value in the variant, in the form in which the runtime gets a property of the type:
//
//   Boolean, Binary_PV    Boolean
//   Unsigned, Signed      UInt32 and Int32, the low 32 bits
//   Real, Double          Float, Double
//   Octet_String          String of hexadecimal digits, two an octet
//   Bit_String            String of "0" and "1", the first bit in front
//   Character_String and both schedules   String
//   Time                  UInt32, milliseconds since midnight; the fourth octet counts for 100 each, tenths
//                         as the host reads it, and unspecified octets enter as 255
//   Date                  DateTime, midnight less localTimeDiff (units of 100 ns): dates are local
//   Date_Time             DateTime as it stands
//   Status_Flags          UInt64 0 to 15: in-alarm 8, fault 4, overridden 2, out-of-service 1
//   other enumerations    UInt32
//
// False, and nothing stored, for a type that is not delivered, as an object identifier. Traces the value when
// the user's trace is on. Throws std::bad_cast for a value of another class than the type's.
bool StoreValue(PropertyTypeEnum type, CPropertyValue& value, long long localTimeDiff,
                OpcUa_VariantHlp& variant);

}  // namespace dorvel::BACnet
