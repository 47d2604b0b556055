#pragma once

#include <string>

namespace workbench {

// A line of the log and what it is about. Texts are empty where nothing is known.
struct LogLine {
    long long time = 0;  // a file time
    long long localDiff = 0;
    std::string block;
    std::string object;    // "analog-input 1"
    std::string variable;  // its name in the block
    std::string text;      // as it was logged, one line without its end
};

// The line at the current time, about what this thread is doing (Whereabouts.h).
LogLine MakeLogLine(std::string text);

// The forms of a line, the first two without a line end:
// for people "2024-03-15T12:34:56.789+01:00 [AHU, analog-input 1, Supply air] 0-1 std::bad_cast",
std::string LogText(LogLine const& line);
// for the table the same with a short time, "12:34:56 [AHU, ...] ...",
std::string ShortLogText(LogLine const& line);
// and for programs {"time":...,"block":"AHU","object":...,"variable":...,"text":...} with its line end; null
// where nothing is known.
std::string LogJson(LogLine const& line);

}  // namespace workbench
