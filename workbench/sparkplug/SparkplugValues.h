#pragma once

#include <cstdint>
#include <string>

#include "Project.h"
#include "QualityText.h"
#include "SparkplugPayload.h"
#include "opcua/OpcUa_Variant.h"

namespace workbench {

// How the values of variables are written in Sparkplug B, and read from it. docs/publish.md has the table.

// Of a built-in type that the runtime stores; Unknown for another one.
SparkplugType SparkplugTypeOf(_OpcUa_BuiltInType type);
// "Int8", "Boolean"; empty for a type that is not in SparkplugType.
char const* SparkplugTypeName(SparkplugType type);

// The value as one of that built-in type: texts are valid UTF-8, times are milliseconds since 1970, negative
// numbers are in two's complement of 32 bits or, for Int64 and times before 1970, of 64. UInt32 and
// StatusCode have 64 bits, as the readers of the field expect them. No value for null and for what cannot be
// converted.
SparkplugValue WireValue(OpcUa_VariantHlp const& value, _OpcUa_BuiltInType type);

// The value of a command as a person would type it (SetValue.h): its own type, or that of the variable where
// the command has none, decides what its octets mean. ProjectError for null, for a number beyond its type and
// for a text that is not UTF-8.
std::string CommandValue(SparkplugMetric const& metric, SparkplugType variableType);

// The codes that Sparkplug 3.0 has for the property Quality.
enum : std::uint32_t { QualityBad = 0, QualityGood = 192, QualityStale = 500 };
// Stale for an uncertain value; bad for a suspect one.
std::uint32_t QualityCode(QualityKind quality, bool isSuspect);

// Milliseconds since 1970 from a file time, and back. What is beyond file times becomes the nearest one.
std::uint64_t SparkplugTime(long long fileTime);
long long FileTimeOf(std::uint64_t milliseconds);

}  // namespace workbench
