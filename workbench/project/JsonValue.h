#pragma once

#include "JsonFields.h"
#include "opcua/OpcUa_Variant.h"

namespace workbench {

// Values as JSON: a number, a text, a boolean or null by its type. A time is a text in ISO 8601; numbers that
// JSON does not have are the texts "nan", "inf" and "-inf". localDiff as in TimeText.h.
void WriteValue(JsonWriter& writer, OpcUa_Variant const& value, long long localDiff);
void WriteNumber(JsonWriter& writer, double value);

}  // namespace workbench
