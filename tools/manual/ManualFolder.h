#pragma once

#include <string>

#include "Manual.h"

namespace tools {

// Of the product in this version, with the date of SOURCE_DATE_EPOCH, or today's without that variable.
ManualEdition EditionOf(std::string const& version);

// Writes the pages of a program into FOLDER/man/man1, and its completion into FOLDER/bash and FOLDER/zsh.
// Throws std::runtime_error if that is not possible.
void WriteManual(std::string const& folder, ManualProgram const& program, ManualEdition const& edition);
// FOLDER/FILE
void WriteManualFile(std::string const& folder, std::string const& file, std::string const& text);

}  // namespace tools
