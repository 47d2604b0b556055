#pragma once

#include <string>
#include <string_view>

#include "dorvelshare/Trace.h"

namespace test {

// Captures the runtime's log as a text while it exists. The user's trace is off by default.
class LogCapture {
public:
    explicit LogCapture(bool trace = false) {
        dorvel::SetLogSink([this](std::string_view part) { text += part; });
        dorvel::EnableUserTrace(trace);
    }
    ~LogCapture() {
        dorvel::EnableUserTrace(false);
        dorvel::SetLogSink(nullptr);
    }
    LogCapture(LogCapture const&) = delete;
    LogCapture& operator=(LogCapture const&) = delete;

    void EnableTrace() { dorvel::EnableUserTrace(true); }
    std::string const& Text() const { return text; }
    void Clear() { text.clear(); }

private:
    std::string text;
};

}  // namespace test
