#pragma once

#include <functional>
#include <string_view>

#include "HostApi.h"

// The runtime's log. Each formatted text goes to the sink unchanged; logMsgLn adds the line end.

// Logs a text by a printf format.
DORVEL_HOST_API void logMsg(char const* format, ...);

// Logs the text, which is not a format, and a line end.
DORVEL_HOST_API void logMsgLn(char const* text);

// True when the user's trace is on: drivers then log what they do, step by step.
DORVEL_HOST_API bool IsEnableUserTrace();

// The runtime's own trace. level is a bit of the trace levels of the OPC UA stack (0x20 error); file and line
// are the place in the source. Levels other than warning and error need the user's trace.
DORVEL_HOST_API void OpcUa_Trace_Imp(int level, char const* file, int line, char const* format, ...);

namespace dorvel {

using LogSink = std::function<void(std::string_view)>;

// Sets the target of the log; an empty sink means standard error. Sinks are called from any thread, one call
// at a time.
DORVEL_HOST_API void SetLogSink(LogSink sink);
DORVEL_HOST_API void EnableUserTrace(bool enable);

}  // namespace dorvel
