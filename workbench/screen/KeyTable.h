#pragma once

#include <string>
#include <vector>

#include "Screen.h"

namespace workbench {

// The keys of the screen and what they do, for people; docs/workbench.md has the same table.
struct KeyHelp {
    char const* keys;
    char const* action;
};

std::vector<KeyHelp> const& KeyTable();
// The table and the marks of the rows, as lines.
std::vector<std::string> HelpLines(Screen const& screen);

}  // namespace workbench
