#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "Snapshot.h"
#include "TableLine.h"
#include "ValuesForPeople.h"

namespace workbench {

// The columns of the table: their contents, their widths, and which of them give way.

enum Column : std::size_t {
    Variable,
    Value,
    Quality,
    Suspect,
    Write,
    Age,
    Object,
    Property,
    Description,
    ColumnCount
};

constexpr std::size_t Indent = 4;  // before the first column, with the marks of the row
constexpr std::size_t Gap = 2;     // between two columns

using Widths = std::array<std::size_t, ColumnCount>;  // 0 for a column that is left out

struct Row {
    std::array<std::string, ColumnCount> cells;
    std::array<Colour, ColumnCount> colours{};
    std::string stage;  // of the write: its state alone, without the value
    char mark = ' ';    // "!" bad, "?" uncertain, "~" suspect: readable without colours
};

Row HeaderRow();
// now is the time from which the age is computed. write is the newest state of what was set.
Row VariableRow(VariableSnapshot const& variable, BlockSnapshot const& block, WriteState const& write,
                ValuesForPeople& values, long long now);

// What the row needs. Names and values that are longer than most take a part of the screen at most; their
// rows get what they need from FitRow.
Widths WidthsOf(Row const& row, std::size_t screenWidth);
// The wider one of each column.
Widths Wider(Widths const& left, Widths const& right);

// The widths for all rows on a screen of that width. Columns give way in this order: description, age,
// object, property, quality. Only then the value is cut, and the name last. The state of a write stays.
Widths FitColumns(Widths wanted, std::size_t screenWidth);
// The widths for a row whose name or value is longer than its column: in this row the same columns give way.
Widths FitRow(Row const& row, Widths const& columns, std::size_t screenWidth);

// The text of a column in exactly that width; a text that is cut ends with "…".
std::string Cell(Row const& row, std::size_t column, std::size_t width);

}  // namespace workbench
