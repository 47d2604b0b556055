#pragma once

#include <cstddef>

namespace workbench {

// The size of a terminal in characters, and whether it shows colours.
struct Screen {
    std::size_t width = 80;
    std::size_t height = 24;
    bool colour = false;
};

// The least that the table needs.
constexpr std::size_t LeastWidth = 40;
constexpr std::size_t LeastHeight = 8;

}  // namespace workbench
