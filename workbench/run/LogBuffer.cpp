#include "LogBuffer.h"

#include <algorithm>

#include "Printable.h"
#include "Whereabouts.h"

namespace workbench {

namespace {

constexpr std::size_t ShownLines = 50;
constexpr std::size_t LongestText = 4096;
constexpr std::string_view LineEnds = "\r\n";

std::size_t OctetsOf(LogLine const& line) {
    return line.block.size() + line.object.size() + line.variable.size() + line.text.size();
}

}  // namespace

void LogBuffer::Add(std::string_view text) {
    std::lock_guard<std::mutex> const lock(mutex);
    while (!text.empty()) {
        std::size_t const end = std::min(text.find_first_of(LineEnds), text.size());
        AddLine(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

void LogBuffer::Add(LogLine line) {
    std::lock_guard<std::mutex> const lock(mutex);
    Write(line);
    Keep(std::move(line));
}

void LogBuffer::AddLine(std::string_view text) {
    if (text.empty()) {
        return;
    }
    FollowTrace(text);
    LogLine line = MakeLogLine(std::string(text));
    Write(line);
    if (listener) {
        listener(tools::Printable(text));
    }
    Keep(std::move(line));
}

void LogBuffer::Write(LogLine const& line) {
    if (stream) {
        *stream << (format == LogFormat::Json ? LogJson(line) : LogText(line) + "\n") << std::flush;
    }
}

void LogBuffer::Keep(LogLine line) {
    line.text.resize(std::min(line.text.size(), LongestText));
    octets += OctetsOf(line);
    ++count;
    lines.push_back(std::move(line));
    while (lines.size() > MostLines || octets > MostOctets) {
        octets -= OctetsOf(lines.front());
        lines.pop_front();
    }
}

void LogBuffer::SetListener(Listener lineListener) {
    std::lock_guard<std::mutex> const lock(mutex);
    listener = std::move(lineListener);
}

std::vector<std::string> LogBuffer::Lines() const {
    std::vector<std::string> texts;
    for (LogLine const& line : Newest(ShownLines)) {
        texts.push_back(ShortLogText(line));
    }
    return texts;
}

template <typename Condition>
std::vector<LogLine> LogBuffer::NewestOf(std::size_t most, Condition const& isMeant) const {
    std::vector<LogLine> found;
    std::lock_guard<std::mutex> const lock(mutex);
    for (auto line = lines.rbegin(); line != lines.rend() && found.size() < most; ++line) {
        if (isMeant(*line)) {
            found.push_back(*line);
        }
    }
    std::reverse(found.begin(), found.end());
    return found;
}

std::vector<LogLine> LogBuffer::Newest(std::size_t most) const {
    return NewestOf(most, [](LogLine const&) { return true; });
}

std::vector<LogLine> LogBuffer::About(std::string const& block, std::size_t most) const {
    return NewestOf(most, [&](LogLine const& line) { return line.block == block; });
}

std::vector<LogLine> LogBuffer::About(std::string const& block, VariableConfig const& variable,
                                      std::size_t most) const {
    std::string const object = ObjectText(variable);
    return NewestOf(most, [&](LogLine const& line) {
        bool const isOfObject = line.variable.empty() && line.object == object;
        return line.block == block && (line.variable == variable.name || isOfObject);
    });
}

unsigned long long LogBuffer::Count() const {
    std::lock_guard<std::mutex> const lock(mutex);
    return count;
}

}  // namespace workbench
