#pragma once

#include <string>

#include "Manual.h"

namespace tools {

// A page with its file's name, "dorvel-workbench-run.1".
struct PageFileText {
    std::string file;
    std::string text;
};

// The pages of a program in section 1: its own, and one for each command.
std::vector<PageFileText> CommandPages(ManualProgram const& program, ManualEdition const& edition);

}  // namespace tools
