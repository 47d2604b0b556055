#pragma once

#include <string>

#include "PropertyTypeEnum.h"
#include "opcua/OpcUa_BuiltInType.h"

namespace workbench {

// What the host makes of the values of a property in a variable.
struct ConversionTrial {
    enum class Result {
        Exact,      // every value comes through
        Changes,    // every value comes through, but some as another one
        Sometimes,  // some give no value
        Never       // none gives a value
    };

    Result result = Result::Exact;
    std::string example;  // a value that shows it
    std::string becomes;  // with Changes: what becomes of it
};

// Delivers sample values as the driver does and converts them as the host does. Whole numbers among them go
// up to `largest`. Results are kept, so asking again costs nothing.
ConversionTrial const& TryConversion(PropertyTypeEnum type, long long largest, _OpcUa_BuiltInType target);

// True if the driver delivers only the low 32 bits of such a number.
bool IsCutTo32Bits(PropertyTypeEnum type);

}  // namespace workbench
