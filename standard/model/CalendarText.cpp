#include "CalendarText.h"

#include <cstddef>
#include <vector>

namespace standard {

namespace {

constexpr int Wildcard = -1;

// The numbers of a text such as "1-2-3", each of digits only or "*"; nothing for any other text.
std::optional<std::vector<int>> Numbers(std::string const& text, std::string const& separators) {
    std::vector<int> found;
    std::size_t at = 0;
    for (std::size_t i = 0; i <= separators.size(); ++i) {
        std::size_t const end = text.find_first_not_of("0123456789*", at);
        std::string const piece = text.substr(at, end == std::string::npos ? end : end - at);
        bool const isNumber = !piece.empty() && piece.size() <= 4 && piece.find('*') == std::string::npos;
        if (!isNumber && piece != "*") {
            return std::nullopt;
        }
        found.push_back(isNumber ? std::stoi(piece) : Wildcard);
        if (end == std::string::npos) {
            return found;
        }
        if (i == separators.size() || text[end] != separators[i]) {
            return std::nullopt;
        }
        at = end + 1;
    }
    return std::nullopt;
}

bool IsWithin(int value, int low, int high) {
    return value == Wildcard || (value >= low && value <= high);
}

std::uint8_t Octet(int value) {
    return value == Wildcard ? Unspecified : static_cast<std::uint8_t>(value);
}

}  // namespace

std::optional<CalendarDate> DateOfText(std::string const& text) {
    auto const parts = Numbers(text, "--");
    if (!parts || parts->size() != 3) {
        return std::nullopt;
    }
    int const year = (*parts)[0];
    int const month = (*parts)[1];
    int const day = (*parts)[2];
    if (!IsWithin(year, 1900, 2154) || !IsWithin(month, 1, 12) || !IsWithin(day, 1, 31)) {
        return std::nullopt;
    }
    bool const isComplete = year != Wildcard && month != Wildcard && day != Wildcard;
    if (isComplete && day > DaysInMonth(year, month)) {
        return std::nullopt;
    }
    return CalendarDate{Octet(year == Wildcard ? year : year - 1900), Octet(month), Octet(day),
                        Octet(isComplete ? WeekdayOf(year, month, day) : Wildcard)};
}

std::optional<TimeOfDay> TimeOfText(std::string const& text) {
    auto parts = Numbers(text, "::.");
    if (!parts || parts->size() < 2) {
        return std::nullopt;
    }
    parts->resize(4, 0);
    constexpr int highest[] = {23, 59, 59, 99};
    TimeOfDay time{};
    for (std::size_t i = 0; i < time.size(); ++i) {
        if (!IsWithin((*parts)[i], 0, highest[i])) {
            return std::nullopt;
        }
        time[i] = Octet((*parts)[i]);
    }
    return time;
}

}  // namespace standard
