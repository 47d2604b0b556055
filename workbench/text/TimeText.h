#pragma once

#include <string>

namespace workbench {

// Times are file times: 100-nanosecond units since 1 January 1601, UTC. localDiff is local time minus UTC in
// the same units.

constexpr long long UnixEpoch = 116444736000000000LL;  // 1 January 1970

// "2024-03-15T12:34:56.789+01:00": local time to the millisecond with its offset from UTC.
std::string IsoTime(long long fileTime, long long localDiff);

// "2024-03-15T12:34:56": local time as a value, with ".789" when there are milliseconds.
std::string IsoValue(long long fileTime, long long localDiff);

// "12:34:56", local.
std::string ClockTime(long long fileTime, long long localDiff);

// The age in a suitable unit: "0.4 s", "12 s", "3 min", "2 h", "5 d". "0.0 s" for a time in the future.
std::string AgeText(long long fileTime, long long now);

// A duration in 100-nanosecond units: "0.4 ms", "120 ms", "1.04 s".
std::string DurationText(long long duration);

}  // namespace workbench
