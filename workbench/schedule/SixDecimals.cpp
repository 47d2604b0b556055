#include "SixDecimals.h"

#include <charconv>
#include <limits>

namespace workbench {

std::string SixDecimals(double number, ScheduleValueType type) {
    constexpr int decimals = 6;
    // Room for the sign, the digits of the largest number, the point and the decimals.
    char text[std::numeric_limits<double>::max_exponent10 + 3 + decimals];
    double const value =
        type == ScheduleValueType::Real ? static_cast<double>(static_cast<float>(number)) : number;
    auto const end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
    return std::string(text, end.ptr);
}

}  // namespace workbench
