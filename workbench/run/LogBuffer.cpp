#include "LogBuffer.h"

#include <algorithm>

#include "Printable.h"
#include "Whereabouts.h"

namespace workbench {

namespace {

constexpr std::size_t KeptLines = 50;
constexpr std::string_view LineEnds = "\r\n";

}  // namespace

void LogBuffer::Add(std::string_view text) {
    std::lock_guard<std::mutex> const lock(mutex);
    while (!text.empty()) {
        std::size_t const end = std::min(text.find_first_of(LineEnds), text.size());
        AddLine(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

void LogBuffer::AddLine(std::string_view text) {
    if (text.empty()) {
        return;
    }
    FollowTrace(text);
    LogLine const line = MakeLogLine(std::string(text));
    if (stream) {
        *stream << (format == LogFormat::Json ? LogJson(line) : LogText(line) + "\n") << std::flush;
    }
    if (listener) {
        listener(tools::Printable(text));
    }
    lines.push_back(ShortLogText(line));
    if (lines.size() > KeptLines) {
        lines.pop_front();
    }
}

void LogBuffer::SetListener(Listener lineListener) {
    std::lock_guard<std::mutex> const lock(mutex);
    listener = std::move(lineListener);
}

std::vector<std::string> LogBuffer::Lines() const {
    std::lock_guard<std::mutex> const lock(mutex);
    return {lines.begin(), lines.end()};
}

}  // namespace workbench
