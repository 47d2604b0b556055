#include "DetailText.h"

#include "Printable.h"
#include "WrappedText.h"

namespace workbench {

namespace {

constexpr std::size_t NameWidth = 16;

}  // namespace

std::size_t DetailText::Width() const {
    return screen.width > NameWidth + 10 ? screen.width - NameWidth : 10;
}

void DetailText::Title(std::string const& text) {
    if (!lines.empty()) {
        lines.emplace_back();
    }
    TableLine line(screen.width, screen.colour);
    line.Add(tools::Printable(text), Colour::Bold);
    lines.push_back(line.Text());
}

void DetailText::Add(std::string const& name, std::string const& value, Colour colour) {
    if (value.empty()) {
        return;
    }
    std::string shownName = name;
    for (std::string const& part : Wrapped(tools::Printable(value), Width())) {
        TableLine line(screen.width, screen.colour);
        line.Add("  " + tools::FitTo(shownName, NameWidth - 2), Colour::Dim);
        line.Add(part, colour);
        lines.push_back(line.Text());
        shownName.clear();
    }
}

void DetailText::Line(std::string const& text, Colour colour) {
    std::size_t const width = screen.width > 12 ? screen.width - 2 : 10;
    for (std::string const& part : Wrapped(tools::Printable(text), width)) {
        TableLine line(screen.width, screen.colour);
        line.Add("  " + part, colour);
        lines.push_back(line.Text());
    }
}

}  // namespace workbench
