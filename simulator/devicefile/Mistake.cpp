#include "Mistake.h"

#include <algorithm>
#include <cstddef>

namespace simulator {

namespace {

constexpr std::size_t kLongestMessage = 500;

}  // namespace

std::string oneLine(std::string text) {
    if (text.size() > kLongestMessage) {
        text.resize(kLongestMessage);
        text += "...";
    }
    auto const isControl = [](unsigned char c) { return c < 0x20 || c == 0x7F; };
    std::replace_if(text.begin(), text.end(), isControl, ' ');
    return text;
}

}  // namespace simulator
