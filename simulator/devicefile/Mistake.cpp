#include "Mistake.h"

#include <algorithm>
#include <cstddef>

namespace simulator {

namespace {

constexpr std::size_t LongestMessage = 500;

}  // namespace

std::string OneLine(std::string text) {
    if (text.size() > LongestMessage) {
        text.resize(LongestMessage);
        text += "...";
    }
    auto const isControl = [](unsigned char c) { return c < 0x20 || c == 0x7F; };
    std::replace_if(text.begin(), text.end(), isControl, ' ');
    return text;
}

}  // namespace simulator
