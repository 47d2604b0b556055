#include "NumberText.h"

#include <charconv>

namespace workbench {

namespace {

template <typename Number>
std::string Shortest(Number value) {
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

}  // namespace workbench
