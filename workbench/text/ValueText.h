#pragma once

#include <string>
#include <string_view>

#include "opcua/OpcUa_Variant.h"

namespace workbench {

// A value for people: "true", "21.5", "2024-03-15T12:34:56" (local time; localDiff as in TimeText.h), octets
// as "0aff", texts through Printable. The empty text is "\"\"", null is "-"; a DataValue is the value inside.
std::string ValueText(OpcUa_Variant const& value, long long localDiff);

// The octets of a String or a ByteString; valid as long as the value.
std::string_view View(OpcUa_Octets const& octets);

}  // namespace workbench
