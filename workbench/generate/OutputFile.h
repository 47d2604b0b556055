#pragma once

#include <stdexcept>
#include <string>

namespace workbench {

// A file that is there already and must not be replaced, or one that can never be written.
class OutputMistake : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Throws OutputMistake if the file cannot be written to that path, as far as that can be known before: it is
// there and may not be replaced, it is a folder, or its folder is missing.
void ExpectWritable(std::string const& path, bool mayReplace);

// Writes the file whole or not at all. Throws OutputMistake if it has come to be there since, and
// std::runtime_error with the path and the reason if it cannot be written.
void WriteOutput(std::string const& path, std::string const& content, bool mayReplace);

}  // namespace workbench
