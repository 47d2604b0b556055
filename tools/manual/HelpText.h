#pragma once

#include <string>
#include <utility>
#include <vector>

namespace tools {

// The text below the options of --help. Lines without indentation are paragraphs; a line of one or two words
// with a colon, such as "Exit codes:", begins a section. Indented lines are a table if two blanks or more
// divide the first one, "  0  done", where lines with more indentation continue a row; otherwise they are
// shown as they are.
struct HelpBlock {
    enum class Kind { Paragraph, Table, Code };

    Kind kind = Kind::Paragraph;
    std::string text;                                       // of a paragraph, in one line
    std::vector<std::pair<std::string, std::string>> rows;  // of a table
    std::vector<std::string> lines;                         // of code
};

struct HelpSection {
    std::string title;  // without the colon; empty for what is before the first one
    std::vector<HelpBlock> blocks;
};

// At least one section, which has no title.
std::vector<HelpSection> ReadHelpText(std::string const& text);

}  // namespace tools
