#pragma once

#include <functional>
#include <string_view>

#include "HostApi.h"

// The runtime's log. Every finished piece of text goes to the sink as it came; logMsgLn adds the line end.

// Writes a line piece by a printf format.
DORVEL_HOST_API void logMsg(char const* format, ...);

// Writes the text, no format, and a line end.
DORVEL_HOST_API void logMsgLn(char const* text);

// True when the user's trace is on: drivers then log what they do, step by step.
DORVEL_HOST_API bool IsEnableUserTrace();

// The runtime's own trace: level is a bit of OPC UA stack trace levels (0x20 error), file and line say where.
DORVEL_HOST_API void OpcUa_Trace_Imp(int level, char const* file, int line, char const* format, ...);

namespace dorvel {

using LogSink = std::function<void(std::string_view)>;

// Where the log goes; an empty sink means standard error. Sinks are called by any thread, one at a time.
DORVEL_HOST_API void SetLogSink(LogSink sink);
DORVEL_HOST_API void EnableUserTrace(bool enable);

}  // namespace dorvel
