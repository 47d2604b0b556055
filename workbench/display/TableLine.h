#pragma once

#include <cstddef>
#include <string>

namespace workbench {

enum class Colour { None, Bold, Dim, Green, Yellow, Red };

// One line of a terminal, built from cells. What exceeds its width is cut; colours take no width.
class TableLine {
public:
    TableLine(std::size_t lineWidth, bool withColour) : width(lineWidth), coloured(withColour) {}

    void Add(std::string const& cell, Colour colour = Colour::None);

    // The columns that are left.
    std::size_t Left() const { return width - used; }
    std::string const& Text() const { return text; }

private:
    std::size_t width;
    bool coloured;
    std::size_t used = 0;
    std::string text;
};

}  // namespace workbench
