#include "NumberText.h"

#include <charconv>
#include <cmath>

namespace tools {

namespace {

template <typename Number>
std::string Shortest(Number value) {
    if (std::isnan(value)) {
        return "nan";  // the sign of 0/0 depends on the machine
    }
    char text[64];
    auto const result = std::to_chars(text, text + sizeof text, value);
    return std::string(text, result.ptr);
}

}  // namespace

std::string NumberText(float value) {
    return Shortest(value);
}

std::string NumberText(double value) {
    return Shortest(value);
}

double Widened(float value) {
    double number = static_cast<double>(value);
    if (std::isfinite(value)) {
        char text[64];
        auto const end = std::to_chars(text, text + sizeof text, value).ptr;
        std::from_chars(text, end, number);
    }
    return number;
}

}  // namespace tools
