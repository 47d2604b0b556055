#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "PlantRows.h"
#include "Screen.h"
#include "TableColumns.h"

namespace workbench {

// Draws the part of the table that fits the screen, below a line with the names of the columns. Only lines
// that are visible are made texts. The headline of the first line's block stays visible.
class TableView {
public:
    // The lines, one with the names included, at most `height`. Scrolls as far as the selected line needs.
    std::vector<std::string> Draw(PlantRows const& rows, Screen const& screen, std::size_t height,
                                  ValuesForPeople& values, long long now);

    // Columns may become narrower again, since other lines are shown.
    void Narrow() { widest = {}; }
    // How many lines a page has.
    std::size_t Page() const { return page; }
    // The line of the table that the last picture had there; none for its first line and below its end.
    std::optional<std::size_t> RowAt(std::size_t line) const;

private:
    void Scroll(PlantRows const& rows);
    std::vector<Row> Cells(PlantRows const& rows, std::size_t end, ValuesForPeople& values,
                           long long now) const;
    Widths ColumnsFor(std::vector<Row> const& cells, std::size_t screenWidth);

    std::size_t top = 0;
    std::size_t page = 1;
    std::vector<std::size_t> shown;  // the rows of the last picture, by line
    // Columns do not become narrower while one scrolls, until Narrow or another size.
    Widths widest{};
    std::size_t widestOfWidth = 0;
};

}  // namespace workbench
