#pragma once

#include <cstddef>
#include <string>

#include "CommandGate.h"
#include "Snapshot.h"

namespace workbench {

// The payloads of docs/publish.md: a JSON object in one line, without a line end. Times are file times,
// written in ISO 8601 with the offset of local time; localDiff as in TimeText.h.

struct ProcessFacts {
    std::string version;
    std::string project;  // its path; the payload has the name of the file
};

// {"online":true,"version":"0.1.0","project":"plant.lua","time":"..."}
std::string OnlineJson(ProcessFacts const& facts, long long now, long long localDiff);
// {"online":false,"time":null}, with the time if the process ends in order: none (0) for the will of a
// connection.
std::string OfflineJson(long long now, long long localDiff);

// {"state":"fault","reason":"No connection","causes":["silent"],"suspect":2,"time":"..."}; reason is null
// without a fault, causes and suspect are there only if there are any.
std::string BlockJson(BlockSnapshot const& block, std::size_t suspects);
// {"state":"offline","reason":"the run has ended","time":"..."}
std::string BlockOfflineJson(long long now, long long localDiff);

// {"value":21.5,"unit":"degrees-celsius","quality":"good","suspect":null,"time":"...",
// "object":"analog-input 1","property":"present-value"}; "stateText" after the unit where the project has one
// for the value, "qualityText" after the quality where that is not good. It has not the reason of a
// fault, which can change without a message of the variable (ValueChanges.h).
std::string ValueJson(BlockSnapshot const& block, VariableSnapshot const& variable);

// {"id":1,"state":"pending","value":21.5,"reason":null,"time":"..."}; the tag of the answer is the id as
// JSON, empty for null.
std::string AnswerJson(CommandAnswer const& answer, long long now, long long localDiff);

}  // namespace workbench
