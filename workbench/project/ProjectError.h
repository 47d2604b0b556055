#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace workbench {

// A mistake in a project, as one line for the person who wrote it. A mistake in a variable knows which one,
// so that the line of the source can be found: its name, and whether it is the first of that name in the
// block.
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
