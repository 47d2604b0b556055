#pragma once

#include <string>

#include "opcua/OpcUa_Variant.h"

namespace workbench {

enum class QualityKind { Good, Uncertain, Bad };

// By the top two bits of the status code.
QualityKind KindOf(OpcUa_StatusCode status);

// The status in words: "Good", "Bad", "Sensor failure", "No data"...; "Bad 0x80AB0000" for an unknown code.
std::string QualityText(OpcUa_StatusCode status);

// "0x808C0000".
std::string StatusText(OpcUa_StatusCode status);

}  // namespace workbench
