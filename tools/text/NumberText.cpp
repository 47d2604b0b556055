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

}  // namespace tools
