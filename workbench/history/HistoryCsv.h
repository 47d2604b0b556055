#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Event.h"
#include "History.h"

namespace workbench {

// Tables for a spreadsheet, by RFC 4180 in UTF-8: a line with the names of the columns, then a row each, with
// a comma between the cells and CR LF at the end. Texts that a spreadsheet would take for a formula begin
// with an apostrophe.

// time, block, variable, value, unit, state_text, quality (good, uncertain or bad). A gap has no value.
std::string TrendHeader();
std::string TrendRows(BlockConfig const& block, VariableConfig const& variable,
                      std::vector<Sample> const& samples, long long localDiff);

// id, time, event, block, variable, text.
std::string EventsCsv(std::vector<Event> const& events);

}  // namespace workbench
