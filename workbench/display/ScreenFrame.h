#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace workbench {

// What a terminal shows. The cursor is visible where a person types.
struct ScreenFrame {
    struct Place {
        std::size_t line;
        std::size_t column;
    };
    std::vector<std::string> lines;
    std::optional<Place> cursor;
};

}  // namespace workbench
