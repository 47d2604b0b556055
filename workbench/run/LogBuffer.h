#pragma once

#include <deque>
#include <functional>
#include <mutex>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

// Takes the runtime's log. Each text is one line or several: drivers end a message with a line end, a
// carriage return or nothing. Lines go to the stream, if there is one, and the newest are kept. Thread-safe.
class LogBuffer {
public:
    explicit LogBuffer(std::ostream* lineStream) : stream(lineStream) {}

    using Listener = std::function<void(std::string const& line)>;

    void Add(std::string_view text);
    // The listener is called with every line, on the thread that logs it, and must not log itself. Null for
    // none.
    void SetListener(Listener lineListener);
    // The newest lines, oldest first, at most 50.
    std::vector<std::string> Lines() const;

private:
    void AddLine(std::string_view line);

    mutable std::mutex mutex;
    std::ostream* stream;
    Listener listener;
    std::deque<std::string> lines;
};

}  // namespace workbench
