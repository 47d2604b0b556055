#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "TextStyle.h"

namespace workbench {

struct TextColumn {
    char const* heading;
    std::size_t longest = 40;  // columns of the terminal that it takes at most
    // A narrow terminal leaves columns out, the one with the highest number first; those with 0 never. Then
    // it cuts the widest ones.
    unsigned dispensable = 0;
    bool isNumber = false;  // aligned on the right side
};

// A table for a terminal. Cells may have any octets: they are shown printable and cut.
class TextTable {
public:
    explicit TextTable(std::vector<TextColumn> tableColumns) : columns(std::move(tableColumns)) {}

    // As many cells as there are columns. The remarks are lines of their own below the row.
    void Add(std::vector<std::string> cells, std::vector<std::string> remarks = {});

    // A heading and the rows, each indented by two columns. Empty columns are left out.
    std::string Text(TextStyle const& style) const;

private:
    struct Row {
        std::vector<std::string> cells;
        std::vector<std::string> remarks;
    };

    std::vector<std::size_t> Widths(std::size_t screen) const;
    std::string Line(std::vector<std::string> const& cells, std::vector<std::size_t> const& widths) const;

    std::vector<TextColumn> columns;
    std::vector<Row> rows;
};

// The cells, printable, with a tab between them and a line end: for programs.
std::string TabbedLine(std::vector<std::string> const& cells);

}  // namespace workbench
