#include "RecordTime.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <string_view>
#include <system_error>

namespace workbench {

namespace {

constexpr long long Minute = 60000;
constexpr double Longest = 9e15;

struct Unit {
    char letter;
    double factor;
};

constexpr Unit Durations[] = {{'s', 1e3}, {'m', 6e4}, {'h', 3.6e6}, {'d', 8.64e7}, {'w', 6.048e8}};
constexpr Unit Sizes[] = {{'K', 1024.0}, {'M', 1048576.0}, {'G', 1073741824.0}, {'T', 1099511627776.0}};

// A number and one of the letters.
template <std::size_t N>
std::optional<long long> NumberWithUnit(std::string_view text, Unit const (&units)[N]) {
    double number = 0;
    auto const [end, mistake] =
        std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
    bool const hasUnit = mistake == std::errc() && end == text.data() + text.size() - 1;
    if (text.empty() || !hasUnit || !(number >= 0)) {
        return {};
    }
    for (Unit const& unit : units) {
        if (*end == unit.letter && number * unit.factor < Longest) {
            return std::llround(number * unit.factor);
        }
    }
    return {};
}

// Reads a date and a time, and moves past what it has read.
class TimeReader {
public:
    explicit TimeReader(std::string_view timeText) : text(timeText) {}

    std::optional<long long> Read() {
        std::tm parts{};
        if (!Digits(4, parts.tm_year) || !Take('-') || !Digits(2, parts.tm_mon) || !Take('-') ||
            !Digits(2, parts.tm_mday)) {
            return {};
        }
        long long milliseconds = 0;
        if ((Take('T') || Take(' ')) && !ReadClock(parts, milliseconds)) {
            return {};
        }
        return Finish(parts, milliseconds);
    }

private:
    bool Take(char octet) {
        bool const isThere = !text.empty() && text.front() == octet;
        text.remove_prefix(isThere ? 1 : 0);
        return isThere;
    }

    bool Digits(std::size_t count, int& number) {
        if (text.size() < count) {
            return false;
        }
        auto const [end, mistake] = std::from_chars(text.data(), text.data() + count, number);
        bool const isNumber = mistake == std::errc() && end == text.data() + count && number >= 0;
        text.remove_prefix(isNumber ? count : 0);
        return isNumber;
    }

    bool ReadClock(std::tm& parts, long long& milliseconds) {
        if (!Digits(2, parts.tm_hour) || !Take(':') || !Digits(2, parts.tm_min)) {
            return false;
        }
        if (Take(':') && !Digits(2, parts.tm_sec)) {
            return false;
        }
        if (Take('.')) {
            int digit = 0;
            for (int factor = 100; Digits(1, digit); factor /= 10) {
                milliseconds += digit * factor;
            }
        }
        return parts.tm_hour < 24 && parts.tm_min < 60 && parts.tm_sec < 60;
    }

    bool ReadOffset(long long& offset) {
        bool const isNegative = !text.empty() && text.front() == '-';
        int hours = 0;
        int minutes = 0;
        if (!(Take('+') || Take('-')) || !Digits(2, hours) || (Take(':'), !Digits(2, minutes)) ||
            hours > 23 || minutes > 59) {
            return false;
        }
        offset = (isNegative ? -1 : 1) * (hours * 60LL + minutes) * Minute;
        return true;
    }

    std::optional<long long> Finish(std::tm parts, long long milliseconds) {
        parts.tm_year -= 1900;
        parts.tm_mon -= 1;
        std::tm const given = parts;
        std::time_t const utc = timegm(&parts);
        // A date that the calendar does not have has become another one.
        if (parts.tm_mon != given.tm_mon || parts.tm_mday != given.tm_mday) {
            return {};
        }
        if (text.empty()) {
            std::tm local = given;
            local.tm_isdst = -1;
            return static_cast<long long>(mktime(&local)) * 1000 + milliseconds;
        }
        long long offset = 0;
        if (!Take('Z') && !ReadOffset(offset)) {
            return {};
        }
        return text.empty() ? std::optional<long long>(utc * 1000LL + milliseconds - offset) : std::nullopt;
    }

    std::string_view text;
};

}  // namespace

long long LocalDiffAt(long long recordTime) {
    auto const seconds = static_cast<std::time_t>(recordTime / 1000);
    std::tm local{};
    return localtime_r(&seconds, &local) ? local.tm_gmtoff * 1000LL : 0;
}

std::optional<long long> ReadTime(std::string const& text, long long now) {
    if (text == "now") {
        return now;
    }
    if (!text.empty() && text.front() == '-') {
        auto const age = ReadDuration(text.substr(1));
        return age ? std::optional<long long>(now - *age) : std::nullopt;
    }
    return TimeReader(text).Read();
}

std::optional<long long> ReadDuration(std::string const& text) {
    return NumberWithUnit(text, Durations);
}

std::optional<long long> ReadSize(std::string const& text) {
    return NumberWithUnit(text, Sizes);
}

}  // namespace workbench
