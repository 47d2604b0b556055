#pragma once

#include <string>

namespace workbench {

// The text of a project file, to run it and to find lines in it.
class SourceText {
public:
    // Reads the file. ProjectError when it cannot be read or has more than 16 MB.
    static SourceText FromFile(std::string const& path);
    explicit SourceText(std::string sourceText);

    // The text for Lua: without a byte order mark, and with a first line "#!..." as a comment.
    std::string const& Text() const { return text; }

    // The line with the given occurrence (from 1) of this variable's name in the table of this block.
    // blockLine when the source does not contain the name, for example because a loop makes the variables.
    int LineOfVariable(int blockLine, std::string const& name, int occurrence) const;

private:
    std::string text;
};

}  // namespace workbench
