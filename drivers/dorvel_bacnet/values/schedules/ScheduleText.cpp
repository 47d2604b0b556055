#include "ScheduleText.h"

#include <cstdlib>
#include <sstream>
#include <stdexcept>

std::vector<std::string> SplitText(std::string const& text, char delimiter) {
    std::vector<std::string> parts;
    std::istringstream lines(text);
    for (std::string part; std::getline(lines, part, delimiter);) {
        parts.push_back(part);
    }
    return parts;
}

int NumberOrWildcard(std::string const& text, std::size_t position, std::size_t count, int wildcard) {
    std::string const digits = position < text.size() ? text.substr(position, count) : std::string();
    return !digits.empty() && digits.front() == '*' ? wildcard : std::stoi(digits);
}

DateValue DateFromText(std::string const& text, char const* wrongLength) {
    if (text.size() != 9) {
        throw std::runtime_error(wrongLength);
    }
    constexpr int Unspecified = 255;
    constexpr int YearZero = 1900;
    int const weekday = NumberOrWildcard(text, 0, 1, Unspecified);
    int const day = NumberOrWildcard(text, 1, 2, Unspecified);
    int const month = NumberOrWildcard(text, 3, 2, Unspecified);
    int const year = NumberOrWildcard(text, 5, 4, Unspecified + YearZero) - YearZero;
    return DateValue(static_cast<char>(year), static_cast<char>(month), static_cast<char>(day),
                     static_cast<char>(weekday));
}

std::vector<char> HexToBytes(std::string const& text) {
    std::vector<char> octets;
    for (std::size_t i = 0; i < text.size(); i += 2) {
        octets.push_back(static_cast<char>(std::strtol(text.substr(i, 2).c_str(), nullptr, 16)));
    }
    return octets;
}
