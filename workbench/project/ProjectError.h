#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace workbench {

// A mistake in a project, as one line for its author. For a mistake in a variable, its name and its
// occurrence among the variables of that name in the block (from 1), to find the line in the source.
class ProjectError : public std::runtime_error {
public:
    explicit ProjectError(std::string const& text, std::string variableName = {}, int variableOccurrence = 1)
        : std::runtime_error(text), variable(std::move(variableName)), occurrence(variableOccurrence) {}

    std::string const& Variable() const { return variable; }
    int Occurrence() const { return occurrence; }

private:
    std::string variable;
    int occurrence;
};

}  // namespace workbench
