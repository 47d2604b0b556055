#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace workbench {

// A row of a table as RFC 4180 has it: a comma between the cells, quotation marks where a cell needs them,
// and CR LF at its end.
std::string CsvLine(std::vector<std::string> const& cells);

// A text of a device or a project as a cell: printable (Printable.h), and after an apostrophe if a
// spreadsheet would take it for a formula: it begins with "=", "+", "-", "@", or blanks before one of them.
std::string CsvSafeText(std::string_view text);

}  // namespace workbench
