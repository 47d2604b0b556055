#include "DetailText.h"

#include <algorithm>

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
    if (!value.empty()) {
        AddWrapped(name, NameWidth, value, colour);
    }
}

void DetailText::AddLong(std::string const& name, std::string const& value) {
    constexpr std::size_t longNameWidth = 32;
    std::size_t const nameWidth = std::min(longNameWidth, std::max(NameWidth, screen.width / 3));
    std::string shownName = name;
    std::size_t begin = 0;
    do {
        std::size_t const end = std::min(value.find('\n', begin), value.size());
        AddWrapped(shownName, nameWidth, value.substr(begin, end - begin), Colour::None);
        shownName.clear();
        begin = end + 1;
    } while (begin < value.size());
}

void DetailText::AddWrapped(std::string name, std::size_t nameWidth, std::string const& value,
                            Colour colour) {
    std::size_t const width = screen.width > nameWidth + 10 ? screen.width - nameWidth : 10;
    for (std::string const& part : Wrapped(tools::Printable(value), width)) {
        TableLine line(screen.width, screen.colour);
        line.Add("  " + tools::FitTo(tools::Printable(name), nameWidth - 3) + " ", Colour::Dim);
        line.Add(part, colour);
        lines.push_back(line.Text());
        name.clear();
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
