#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Screen.h"
#include "TableLine.h"

namespace workbench {

// Lines of names and values, under titles. A value that is longer than its line goes on below it.
class DetailText {
public:
    explicit DetailText(Screen const& textScreen) : screen(textScreen) {}

    void Title(std::string const& text);
    // Left out if the value is empty.
    void Add(std::string const& name, std::string const& value, Colour colour = Colour::None);
    // With names that may be long, and a line of its own for each line of the value.
    void AddLong(std::string const& name, std::string const& value);
    // A line as it is, indented.
    void Line(std::string const& text, Colour colour = Colour::None);

    // The columns that a line has.
    std::size_t Width() const;
    std::vector<std::string> const& Lines() const { return lines; }

private:
    void AddWrapped(std::string name, std::size_t nameWidth, std::string const& value, Colour colour);

    Screen screen;
    std::vector<std::string> lines;
};

}  // namespace workbench
