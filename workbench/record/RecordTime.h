#pragma once

#include <optional>
#include <string>

#include "TimeText.h"

namespace workbench {

// Times of a recording are milliseconds since 1970, UTC, as other programs expect them. Those of a run are
// file times (TimeText.h).

inline long long RecordTime(long long fileTime) {
    return (fileTime - UnixEpoch) / 10000;
}
inline long long FileTimeOf(long long recordTime) {
    return recordTime * 10000 + UnixEpoch;
}

// Local time minus UTC at that time, in milliseconds, by the time zone of this machine (TZ).
long long LocalDiffAt(long long recordTime);

// A time as people give it: "2026-03-01", "2026-03-01T12:00", "2026-03-01 12:00:30.5", each local or with "Z"
// or an offset such as "+01:00"; "-24h" is that long before now, with s, m, h, d or w; "now". None for any
// other text.
std::optional<long long> ReadTime(std::string const& text, long long now);

// A duration such as "90s", "30m", "12h", "400d", "52w" in milliseconds; a number alone is not one.
std::optional<long long> ReadDuration(std::string const& text);

// A number of octets such as "64M", "2G", "1.5G", "800K": multiples of 1024.
std::optional<long long> ReadSize(std::string const& text);

}  // namespace workbench
