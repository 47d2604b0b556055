#include "Roff.h"

#include <algorithm>
#include <cctype>

namespace tools {

namespace {

// The characters that roff shows as others, or takes for its own.
std::string_view EscapeOf(char c) {
    switch (c) {
        case '\\':
            return "\\(rs";
        case '-':
            return "\\-";
        case '\'':
            return "\\(aq";
        case '`':
            return "\\(ga";
        case '^':
            return "\\(ha";
        case '~':
            return "\\(ti";
        case '"':
            return "\\(dq";
        default:
            return {};
    }
}

std::string UpperCase(std::string_view title) {
    std::string upper(title);
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return upper;
}

bool IsOfOption(char c) {
    return c == '-' || std::isalnum(static_cast<unsigned char>(c)) != 0;
}

}  // namespace

std::string RoffText(std::string_view text) {
    std::string roff;
    for (char const c : text) {
        std::string_view const escape = EscapeOf(c);
        roff += escape.empty() ? std::string(1, c) : std::string(escape);
    }
    return roff;
}

std::string RoffBold(std::string_view text) {
    return "\\fB" + RoffText(text) + "\\fR";
}

std::string RoffItalic(std::string_view text) {
    return "\\fI" + RoffText(text) + "\\fR";
}

std::string RoffProse(std::string_view text) {
    std::string roff;
    for (std::size_t at = 0; at < text.size();) {
        bool const begins = (at == 0 || !IsOfOption(text[at - 1])) && text.substr(at, 2) == "--" &&
                            at + 2 < text.size() && std::islower(static_cast<unsigned char>(text[at + 2]));
        std::size_t end = at + 1;
        while (begins && end < text.size() && IsOfOption(text[end])) {
            ++end;
        }
        std::string_view const word = text.substr(at, end - at);
        roff += begins ? RoffBold(word) : RoffText(word);
        at = end;
    }
    return roff;
}

ManPage::ManPage(std::string const& name, int section, std::string const& brief,
                 ManualEdition const& edition) {
    text = ".TH \"" + RoffText(UpperCase(name)) + "\" " + std::to_string(section) + " " + edition.date +
           " \"" + RoffText(edition.product) + "\"\n";
    // Words are not divided, so that options can be searched for, and lines are not stretched.
    text += ".nh\n.ad l\n";
    Section("Name");
    std::string const sentence = brief.substr(0, brief.find_last_not_of('.') + 1);
    Line(RoffText(name) + " \\- " + RoffText(sentence));
}

void ManPage::Line(std::string const& roff) {
    // A line that begins with a dot would be a request.
    text += (!roff.empty() && roff[0] == '.' ? "\\&" : "") + roff + "\n";
}

void ManPage::Section(std::string_view title) {
    text += ".SH " + RoffText(UpperCase(title)) + "\n";
    isFirst = true;
}

void ManPage::Subsection(std::string_view title) {
    text += ".SS " + RoffText(title) + "\n";
    isFirst = true;
}

void ManPage::Paragraph(std::string const& roff) {
    text += isFirst ? "" : ".PP\n";
    isFirst = false;
    Line(roff);
}

void ManPage::Tagged(std::string const& tagRoff, std::string const& roff) {
    text += ".TP\n";
    Line(tagRoff);
    Line(roff.empty() ? "\\&" : roff);
    isFirst = false;
}

void ManPage::More(std::string const& roff) {
    text += ".br\n";
    Line(roff);
}

void ManPage::Bullet(std::string const& roff) {
    text += ".IP \\(bu 2\n";
    Line(roff);
    isFirst = false;
}

void ManPage::Code(std::vector<std::string> const& lines) {
    text += std::string(isFirst ? "" : ".PP\n") + ".RS 4\n.nf\n";
    for (std::string const& line : lines) {
        Line(line.empty() ? "\\&" : RoffText(line));
    }
    text += ".fi\n.RE\n";
    isFirst = false;
}

void ManPage::SeeAlso(std::vector<std::string> const& pages) {
    Section("See also");
    for (std::size_t i = 0; i < pages.size(); ++i) {
        std::size_t const bracket = pages[i].find('(');
        text += ".BR " + RoffText(pages[i].substr(0, bracket)) + " " + pages[i].substr(bracket) +
                (i + 1 < pages.size() ? ",\n" : "\n");
    }
}

}  // namespace tools
