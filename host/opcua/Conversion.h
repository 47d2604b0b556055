#pragma once

#include "opcua/OpcUa_Variant.h"

// The conversion rules of OPC 10000-4 (table "Conversion rules" of the filter operators) for the types that
// the runtime stores, Null and DataValue apart. Implicit and explicit rules both apply.
//
// Sets target, which is null, to the value of source as type. On failure it stays null.
OpcUa_StatusCode ConvertVariant(OpcUa_Variant const& source, _OpcUa_BuiltInType type,
                                OpcUa_VariantHlp& target);
