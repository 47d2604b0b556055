#pragma once

#include <string>

#include "ChosenVariables.h"
#include "Snapshot.h"

namespace workbench {

// A block's cycle as a table for programs and spreadsheets, by RFC 4180 in UTF-8: a row for each variable, a
// comma between the cells, CR LF at the end of a row. The columns are those of CsvHeader; new ones come after
// them. Values are as in JSON: numbers without a unit ("nan", "inf" and "-inf" among them), "true" and
// "false", times in ISO 8601. What is not known is an empty cell. Texts that a spreadsheet would take for a
// formula begin with an apostrophe (CsvCells.h).
std::string FormatCsv(BlockSnapshot const& block, ChosenVariables const& variables);
std::string FormatCsv(BlockSnapshot const& block);

// The names of the columns: time, block, cycle, state (waiting, ok, fault or standby), error, variable,
// object, property, value, unit, state_text, type, quality, status, value_time, write (pending, written...),
// write_value, write_reason, suspect, why, cycle_ms, overruns.
std::string CsvHeader();

}  // namespace workbench
