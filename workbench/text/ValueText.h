#pragma once

#include <string>

#include "opcua/OpcUa_Variant.h"

namespace workbench {

// A value as people expect to read it: "true", "21.5", "2024-03-15T12:34:56" (local; localDiff as in
// TimeText.h), octets as "0aff", texts as they are but for Printable. The empty text shows as "\"\"", null as
// "-"; a DataValue as the value inside.
std::string ValueText(OpcUa_Variant const& value, long long localDiff);

}  // namespace workbench
