#pragma once

#include <string>

namespace workbench {

// The text of a project file.
class SourceText {
public:
    // Reads the file. ProjectError when it cannot be read or has more than 16 MB.
    static SourceText FromFile(std::string const& path);
    explicit SourceText(std::string sourceText);

    // The text for Lua: without a byte order mark, and with a first line "#!..." as a comment.
    std::string const& Text() const { return text; }

private:
    std::string text;
};

}  // namespace workbench
