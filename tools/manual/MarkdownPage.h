#pragma once

#include <string>
#include <vector>

#include "Roff.h"

namespace tools {

// Adds sections of a document to a manual page: "Projects" is the section "## Projects" with all that is
// below it. Understands what the documents of the project use: headings, paragraphs, lists with "-", tables,
// code that is indented by four blanks; in a line, code, bold text and links, of which the text remains.
// A table becomes a list by its first column; cells of the third column and later ones have their heading
// before them. Throws std::runtime_error for a section that the document does not have.
void AddMarkdown(ManPage& page, std::string const& document, std::vector<std::string> const& sections);

}  // namespace tools
