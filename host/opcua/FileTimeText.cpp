#include <cstdio>

#include "Calendar.h"
#include "Text.h"

namespace text {
namespace {

// Reads a text from the front. Take, Number and Fraction return false when the text does not match.
class Scanner {
public:
    explicit Scanner(std::string_view text) : rest(text) {}

    bool AtEnd() const { return rest.empty(); }

    bool Take(char c) {
        if (rest.empty() || rest.front() != c) {
            return false;
        }
        rest.remove_prefix(1);
        return true;
    }

    // From least to most digits.
    bool Number(std::size_t least, std::size_t most, int& value) {
        std::size_t count = 0;
        value = 0;
        while (count < most && count < rest.size() && IsDigit(rest[count])) {
            value = value * 10 + (rest[count++] - '0');
        }
        rest.remove_prefix(count);
        return count >= least;
    }

    // The digits after a decimal point, in 100 nanoseconds.
    bool Fraction(long long& ticks) {
        long long unit = TicksPerSecond;
        std::size_t count = 0;
        for (; count < rest.size() && IsDigit(rest[count]); ++count) {
            unit /= 10;
            ticks += unit * (rest[count] - '0');
        }
        rest.remove_prefix(count);
        return count > 0;
    }

private:
    std::string_view rest;
};

bool ReadDate(Scanner& scanner, CalendarDate& date) {
    return scanner.Number(4, 5, date.year) && scanner.Take('-') && scanner.Number(2, 2, date.month) &&
           scanner.Take('-') && scanner.Number(2, 2, date.day) && date.month >= 1 && date.month <= 12 &&
           date.day >= 1 && date.day <= DaysOfMonth(date.year, date.month);
}

bool ReadTime(Scanner& scanner, long long& ticks) {
    int hour = 0;
    int minute = 0;
    int second = 0;
    ticks = 0;
    bool const found = scanner.Number(2, 2, hour) && scanner.Take(':') && scanner.Number(2, 2, minute) &&
                       scanner.Take(':') && scanner.Number(2, 2, second) && minute < 60 && second < 60 &&
                       (!scanner.Take('.') || scanner.Fraction(ticks));
    ticks += (hour * 3600LL + minute * 60 + second) * TicksPerSecond;
    return found && ticks <= TicksPerDay;  // 24:00:00 is the midnight that ends the day
}

bool ReadZone(Scanner& scanner, long long& ticks) {
    ticks = 0;
    if (scanner.AtEnd() || scanner.Take('Z')) {
        return true;
    }
    bool const west = scanner.Take('-');
    int hour = 0;
    int minute = 0;
    bool const found = (west || scanner.Take('+')) && scanner.Number(2, 2, hour) && scanner.Take(':') &&
                       scanner.Number(2, 2, minute) && hour <= 14 && minute < 60;
    ticks = (hour * 3600LL + minute * 60) * TicksPerSecond * (west ? -1 : 1);
    return found;
}

}  // namespace

OpcUa_StatusCode ReadFileTime(std::string_view text, long long& fileTime) {
    Scanner scanner(Trim(text));
    CalendarDate date{};
    long long time = 0;
    long long zone = 0;
    if (!ReadDate(scanner, date) || !scanner.Take('T') || !ReadTime(scanner, time) ||
        !ReadZone(scanner, zone) || !scanner.AtEnd()) {
        return OpcUa_BadTypeMismatch;
    }
    if (date.year < 1601 || date.year > LastYear) {
        return OpcUa_BadOutOfRange;
    }
    long long const result = DaysOfDate(date) * TicksPerDay + time - zone;
    if (result < 0) {
        return OpcUa_BadOutOfRange;
    }
    fileTime = result;
    return OpcUa_Good;
}

std::string WriteFileTime(long long fileTime) {
    CalendarDate const date = DateOfDays(fileTime / TicksPerDay);
    long long const ticks = fileTime % TicksPerDay;
    int const seconds = static_cast<int>(ticks / TicksPerSecond);
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02dT%02d:%02d:%02d.%07d", date.year, date.month,
                  date.day, seconds / 3600, seconds / 60 % 60, seconds % 60,
                  static_cast<int>(ticks % TicksPerSecond));
    std::string result = buffer;
    result.resize(result.find_last_not_of('0') + 1);
    if (result.back() == '.') {
        result.pop_back();
    }
    return result + 'Z';
}

}  // namespace text
