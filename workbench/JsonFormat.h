#pragma once

#include <string>

#include "Snapshot.h"

namespace workbench {

// A block's cycle as one JSON object with its line end:
// {"time":...,"block":...,"cycle":N,"fault":false,"error":"","variables":[{"name":...,"object":...,"property":...,
// "type":...,"value":...,"quality":...,"status":"0x00000000","time":...}]}
// Times are texts in ISO 8601; the time of a variable without a value is null. A value is a number, a text, a
// boolean or null by its type; numbers that JSON does not have are the texts "nan", "inf" and "-inf"; what is
// no UTF-8 in texts becomes U+FFFD.
std::string FormatJson(BlockSnapshot const& block);

}  // namespace workbench
