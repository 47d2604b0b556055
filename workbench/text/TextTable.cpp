#include "TextTable.h"

#include <algorithm>
#include <utility>

#include "Printable.h"

namespace workbench {

namespace {

constexpr std::size_t Gap = 2;
constexpr std::size_t Indent = 2;
// A column is not cut to less.
constexpr std::size_t Narrowest = 6;

std::size_t Total(std::vector<std::size_t> const& widths) {
    std::size_t total = Indent;
    for (std::size_t const width : widths) {
        total += width == 0 ? 0 : width + Gap;
    }
    return total - Gap;
}

}  // namespace

void TextTable::Add(std::vector<std::string> cells, std::vector<std::string> remarks) {
    for (std::string& cell : cells) {
        // Four octets for each column of the terminal, and one more to see that it is cut.
        std::size_t const longest = 4 * columns[static_cast<std::size_t>(&cell - cells.data())].longest + 4;
        cell = tools::Printable(cell, longest);
    }
    rows.push_back({std::move(cells), std::move(remarks)});
}

std::vector<std::size_t> TextTable::Widths(std::size_t screen) const {
    std::vector<std::size_t> widths(columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        for (Row const& row : rows) {
            widths[i] = std::max(widths[i], std::min(tools::DisplayWidth(row.cells[i]), columns[i].longest));
        }
        widths[i] = widths[i] == 0 ? 0 : std::max(widths[i], tools::DisplayWidth(columns[i].heading));
    }
    auto const isTooWide = [&] { return screen != 0 && Total(widths) > screen; };
    for (unsigned number = static_cast<unsigned>(columns.size()); number > 0 && isTooWide(); --number) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            widths[i] = columns[i].dispensable == number ? 0 : widths[i];
        }
    }
    while (isTooWide()) {
        auto const widest = std::max_element(widths.begin(), widths.end());
        if (*widest <= Narrowest) {
            break;
        }
        --*widest;
    }
    return widths;
}

std::string TextTable::Line(std::vector<std::string> const& cells,
                            std::vector<std::size_t> const& widths) const {
    std::string line(Indent, ' ');
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (widths[i] > 0) {
            line += columns[i].isNumber ? tools::FitToRight(cells[i], widths[i])
                                        : tools::FitTo(cells[i], widths[i]);
            line += std::string(Gap, ' ');
        }
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

std::string TextTable::Text(TextStyle const& style) const {
    std::vector<std::size_t> const widths = Widths(style.width);
    std::vector<std::string> headings;
    for (TextColumn const& column : columns) {
        headings.emplace_back(column.heading);
    }
    std::string text = Coloured(Line(headings, widths), colour::Dim, style) + "\n";
    for (Row const& row : rows) {
        text += Line(row.cells, widths) + "\n";
        for (std::string const& remark : row.remarks) {
            text += std::string(2 * Indent, ' ') +
                    Coloured(tools::Printable(remark, 1000), colour::Yellow, style) + "\n";
        }
    }
    return text;
}

std::string TabbedLine(std::vector<std::string> const& cells) {
    std::string line;
    for (std::string const& cell : cells) {
        line += (&cell == cells.data() ? "" : "\t") + tools::Printable(cell);
    }
    return line + "\n";
}

}  // namespace workbench
