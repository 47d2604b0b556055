#pragma once

#include <string>

#include "Snapshot.h"

namespace workbench {

// A value as a recording has it: a number, where a Boolean is 0 or 1, or a text.
struct RecordedValue {
    bool isText = false;
    double number = 0;  // NaN without a value
    std::string text;
    OpcUa_StatusCode status = OpcUa_BadNoData;
};

// Texts, times and octets are texts: a time in ISO 8601 with its offset, octets in hexadecimal digits.
RecordedValue ValueToRecord(BlockSnapshot const& block, VariableSnapshot const& variable);

// A standby keeps the values that it had, and their quality is bad.
OpcUa_StatusCode StatusToRecord(BlockSnapshot const& block, VariableSnapshot const& variable);

}  // namespace workbench
