#pragma once

#include <string>

namespace workbench {

// The text of a project file, for running it and for finding lines in it.
class SourceText {
public:
    // Reads the file. ProjectError when that cannot be done, or when it has more than 16 MB.
    static SourceText FromFile(std::string const& path);
    explicit SourceText(std::string sourceText);

    // What Lua is given: without a byte order mark, and with a first line "#!..." as a comment.
    std::string const& Text() const { return text; }

    // The line on which the table of this block writes the name of this variable for the given time (from 1),
    // or blockLine when the source does not show it, as when a loop makes the variables.
    int LineOfVariable(int blockLine, std::string const& name, int occurrence) const;

private:
    std::string text;
};

}  // namespace workbench
