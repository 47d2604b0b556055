#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "opcua/OpcUa_BuiltInType.h"

namespace workbench {

// The OPC UA names of the built-in types that the runtime stores, by OPC 10000-6, table 1.

// By name, ignoring letter case, or by number. No value for a type that the runtime does not store.
std::optional<_OpcUa_BuiltInType> FindType(std::string_view name);
std::optional<_OpcUa_BuiltInType> FindType(long long number);

std::vector<std::string> TypeNames();

// "Float", or "DataValue(Float)"; "Type 99" for a type without a name here.
std::string TypeName(OpcUa_BuiltInTypeHlp const& type);

}  // namespace workbench
