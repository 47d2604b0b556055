#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "Snapshot.h"

namespace workbench {

// The columns of the table: their contents and widths.

enum Column : std::size_t {
    Variable,
    Object,
    Property,
    Value,
    Type,
    Quality,
    Suspect,
    Time,
    Age,
    Write,
    ColumnCount
};

constexpr std::size_t Indent = 2;  // before the first column
constexpr std::size_t Gap = 2;     // between two columns

using Row = std::array<std::string, ColumnCount>;
using Widths = std::array<std::size_t, ColumnCount>;  // 0 for a column that is left out

Row HeaderRow();
// now is the time from which the age is computed.
Row VariableRow(VariableSnapshot const& variable, BlockSnapshot const& block, long long now);

// The widths that the rows need; on a screen that is too narrow, columns shrink one after another.
Widths FitColumns(std::vector<Row> const& rows, std::size_t screenWidth);

// The text in exactly that width. An object type is cut before its number: "positive-inte… 12".
std::string Cell(std::string const& text, std::size_t column, std::size_t width);

}  // namespace workbench
