#pragma once

#include <stdexcept>
#include <string>

#include "FindingCode.h"

namespace workbench {

// A mistake in a project, as one line for its author.
class ProjectError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A mistake in one field of a table, or in the table if the name of the field is empty.
class FieldError : public ProjectError {
public:
    FieldError(FindingCode findingCode, std::string const& fieldName, std::string const& text)
        : ProjectError(text), code(findingCode), field(fieldName) {}

    FindingCode Code() const { return code; }
    std::string const& Field() const { return field; }

private:
    FindingCode code;
    std::string field;
};

}  // namespace workbench
