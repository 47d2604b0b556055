#include "TableLine.h"

#include "Printable.h"

namespace workbench {

namespace {

// SGR parameters of ECMA-48.
char const* Parameter(Colour colour) {
    switch (colour) {
        case Colour::Bold:
            return "1";
        case Colour::Dim:
            return "2";
        case Colour::Green:
            return "32";
        case Colour::Yellow:
            return "33";
        case Colour::Red:
            return "31";
        default:
            return "0";
    }
}

}  // namespace

void TableLine::Add(std::string const& cell, Colour colour) {
    std::size_t const needed = tools::DisplayWidth(cell);
    std::size_t const left = width - used;
    std::string const shown = needed > left ? tools::FitTo(cell, left) : cell;
    used += needed > left ? left : needed;
    bool const isPlain = !coloured || (colour == Colour::None && !reversed);
    if (isPlain || shown.empty()) {
        text += shown;
    } else {
        text += std::string("\x1B[") + Parameter(colour) + (reversed ? ";7m" : "m") + shown + "\x1B[0m";
    }
}

void TableLine::FillTo(std::size_t columnsLeft) {
    if (Left() > columnsLeft) {
        Add(std::string(Left() - columnsLeft, ' '));
    }
}

}  // namespace workbench
