#pragma once

#include <cstddef>
#include <string>

namespace workbench {

enum class Colour { None, Bold, Dim, Green, Yellow, Red };

// One line of a terminal, built from cells. What exceeds its width is cut; colours take no width. A selected
// line is shown reversed where there are colours.
class TableLine {
public:
    TableLine(std::size_t lineWidth, bool withColour, bool isSelected = false)
        : width(lineWidth), coloured(withColour), reversed(isSelected && withColour) {}

    void Add(std::string const& cell, Colour colour = Colour::None);
    // Adds blanks up to the last columns of that number.
    void FillTo(std::size_t columnsLeft = 0);

    // The columns that are left.
    std::size_t Left() const { return width - used; }
    std::string const& Text() const { return text; }

private:
    std::size_t width;
    bool coloured;
    bool reversed;
    std::size_t used = 0;
    std::string text;
};

}  // namespace workbench
