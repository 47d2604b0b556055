#pragma once

#include <deque>
#include <functional>
#include <mutex>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "LogLine.h"

namespace workbench {

enum class LogFormat { Text, Json };

// Takes the runtime's log. Each text is one line or several: drivers end a message with a line end, a
// carriage return or nothing. Each line gets the time and what the thread is doing in front of it
// (LogLine.h) and goes to the stream, if there is one; the newest are kept. Thread-safe.
class LogBuffer {
public:
    explicit LogBuffer(std::ostream* lineStream, LogFormat lineFormat = LogFormat::Text)
        : stream(lineStream), format(lineFormat) {}

    using Listener = std::function<void(std::string const& line)>;

    void Add(std::string_view text);
    // The listener is called with every line as it was logged, without control characters, on the thread
    // that logs it, and must not log itself. Null for none.
    void SetListener(Listener lineListener);
    // The newest lines, oldest first, at most 50, as ShortLogText makes them.
    std::vector<std::string> Lines() const;

private:
    void AddLine(std::string_view text);

    mutable std::mutex mutex;
    std::ostream* stream;
    LogFormat format;
    Listener listener;
    std::deque<std::string> lines;
};

}  // namespace workbench
