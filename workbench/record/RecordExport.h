#pragma once

#include <functional>
#include <string>
#include <vector>

#include "RecordReader.h"

namespace workbench {

// Parts of a recording as texts, for people and programs. Times are local to this machine.

enum class RecordFormat {
    Csv,  // tables for a spreadsheet, as in HistoryCsv.h
    Json  // an object a line
};

// The variables that one of the patterns names, "Block.Variable" with * for any characters; all without
// patterns. A pattern that names none goes to `unknown`.
std::vector<RecordedVariable> MatchingVariables(std::vector<RecordedVariable> const& variables,
                                                std::vector<std::string> const& patterns,
                                                std::vector<std::string>& unknown);

// The first line of a table; empty for JSON.
std::string RowsHeader(RecordFormat format);
std::string RowText(RecordedVariable const& variable, RecordRow const& row, RecordFormat format);

std::string EventsHeader(RecordFormat format);
std::string EventText(RecordedEvent const& event, RecordFormat format);

// What is recorded of a variable, with the times of its first and last change; 0 for none.
std::string ListHeader(RecordFormat format);
std::string ListText(RecordedVariable const& variable, long long oldest, long long newest,
                     RecordFormat format);

}  // namespace workbench
