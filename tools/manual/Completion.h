#pragma once

#include <string>

#include "Manual.h"

namespace tools {

// The completion of a program in a shell, as a file that the shell reads: commands, options, values that can
// be listed, files with the right ending. It does not start the program.

// For bash, with the functions of bash-completion 2.8 and later.
std::string BashCompletion(ManualProgram const& program);
// For zsh, a function that compinit finds: "_" and the program's name.
std::string ZshCompletion(ManualProgram const& program);

}  // namespace tools
