#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Manual.h"

namespace tools {

// A text in which nothing is a request or an escape of roff.
std::string RoffText(std::string_view text);
std::string RoffBold(std::string_view text);
std::string RoffItalic(std::string_view text);
// A sentence for people: words that are options become bold.
std::string RoffProse(std::string_view text);

// Writes a manual page with the macros of man(7). What is named `roff` is one line of it, made by the
// functions above; other texts are plain.
class ManPage {
public:
    // The name and the sentence are its section NAME.
    ManPage(std::string const& name, int section, std::string const& brief, ManualEdition const& edition);

    void Section(std::string_view title);
    void Subsection(std::string_view title);
    void Paragraph(std::string const& roff);
    void Tagged(std::string const& tagRoff, std::string const& roff);
    // A further paragraph below a tag.
    void More(std::string const& roff);
    void Bullet(std::string const& roff);
    // Lines that are shown as they are.
    void Code(std::vector<std::string> const& lines);
    // Links to other pages, "dorvel-workbench(1)", as the section SEE ALSO.
    void SeeAlso(std::vector<std::string> const& pages);

    std::string const& Text() const { return text; }

private:
    void Line(std::string const& roff);

    std::string text;
    bool isFirst = true;  // in its section
};

}  // namespace tools
