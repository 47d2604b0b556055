#pragma once

#include <deque>
#include <functional>
#include <mutex>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "LogLine.h"
#include "Project.h"

namespace workbench {

enum class LogFormat { Text, Json };

// Takes the runtime's log. Each text is one line or several: drivers end a message with a line end, a
// carriage return or nothing. Each line gets the time and what the thread is doing in front of it
// (LogLine.h) and goes to the stream, if there is one; the newest are kept. Thread-safe.
class LogBuffer {
public:
    // The lines that are kept, and the octets of their texts and names. A text is kept up to 4096 octets.
    static constexpr std::size_t MostLines = 1000;
    static constexpr std::size_t MostOctets = 256 << 10;

    explicit LogBuffer(std::ostream* lineStream, LogFormat lineFormat = LogFormat::Text)
        : stream(lineStream), format(lineFormat) {}

    using Listener = std::function<void(std::string const& line)>;

    void Add(std::string_view text);
    // A line of the workbench itself, as it is; the listener does not hear it.
    void Add(LogLine line);
    // The listener is called with every other line as it was logged, without control characters, on the
    // thread that logs it, and must not log itself. Null for none.
    void SetListener(Listener lineListener);
    // The newest lines, oldest first, at most 50, as ShortLogText makes them.
    std::vector<std::string> Lines() const;

    // The kept lines, oldest first; of more than `most` the newest.
    std::vector<LogLine> Newest(std::size_t most = MostLines) const;
    // The same, only of what is about a block, by its name, or about a variable in it. Where an object has
    // several variables, the driver's lines name the object alone; they are about each of them.
    std::vector<LogLine> About(std::string const& block, std::size_t most) const;
    std::vector<LogLine> About(std::string const& block, VariableConfig const& variable,
                               std::size_t most) const;
    // How many lines there have been, so that a reader sees whether there are new ones.
    unsigned long long Count() const;

private:
    void AddLine(std::string_view text);
    void Write(LogLine const& line);
    void Keep(LogLine line);
    template <typename Condition>
    std::vector<LogLine> NewestOf(std::size_t most, Condition const& isMeant) const;

    mutable std::mutex mutex;
    std::ostream* stream;
    LogFormat format;
    Listener listener;
    std::deque<LogLine> lines;
    std::size_t octets = 0;  // of lines
    unsigned long long count = 0;
};

}  // namespace workbench
