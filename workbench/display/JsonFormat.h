#pragma once

#include <string>

#include "ChosenVariables.h"
#include "SetAnswer.h"
#include "Snapshot.h"

namespace workbench {

// A block's cycle as one JSON object with its line end:
// {"time":...,"block":...,"cycle":N,"fault":false,"error":"","variables":[{"name":...,"object":...,"property":...,
// "type":...,"value":...,"quality":...,"status":"0x00000000","time":...}],"standby":false,
// "cycle_ms":{"last":0.4,"median":0.4,"maximum":1.2},"overruns":0,
// "causes":[{"cause":"silent","object":null,"text":...,"count":3,"since":...}]}
// Times are texts in ISO 8601; the time of a variable without a value is null. A value is a number, a text, a
// boolean or null by its type; numbers that JSON does not have are the texts "nan", "inf" and "-inf"; octets
// that are not UTF-8 become U+FFFD. A variable that has been set has "write" after its time:
// {"state":"pending","value":...}, or "written", or "unconfirmed", "differs" or "refused" with a "reason",
// and "device", the value that the device holds, where it is another one and known. A variable whose value
// comes from an error of the device has "suspect":"device: unknown-object".
std::string FormatJson(BlockSnapshot const& block);
// The same with only the variables at these indices.
std::string FormatJson(BlockSnapshot const& block, ChosenVariables const& chosen);
// The object of one variable there, without a line end.
std::string VariableJson(VariableSnapshot const& variable, long long localDiff);

// {"set":"Block.Variable","state":"pending","value":...}, or {"set":...,"state":"invalid","reason":...}.
std::string FormatJson(SetAnswer const& answer, long long localDiff);

// {"standby":true}.
std::string FormatStandby(bool isOn);

}  // namespace workbench
