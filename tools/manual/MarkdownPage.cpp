#include "MarkdownPage.h"

#include <sstream>
#include <stdexcept>

namespace tools {

namespace {

bool BeginsWith(std::string const& text, std::string const& begin) {
    return text.compare(0, begin.size(), begin) == 0;
}

std::string Trimmed(std::string const& text) {
    std::size_t const begin = text.find_first_not_of(' ');
    return begin == std::string::npos ? std::string()
                                      : text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

// Code, bold text and links of a line.
class InlineReader {
public:
    explicit InlineReader(std::string const& line) : text(line) {}

    std::string Roff() {
        while (at < text.size()) {
            if (!(Code() || Bold() || Link() || Escape())) {
                plain += text[at++];
            }
        }
        EndPlain();
        return roff;
    }

private:
    void EndPlain() {
        roff += RoffProse(plain);
        plain.clear();
    }

    void Add(std::string const& more, std::size_t next) {
        EndPlain();
        roff += more;
        at = next;
    }

    // The end of what begins with `mark` here; npos if it does not begin or does not end.
    std::size_t EndOf(std::string const& mark) const {
        return text.compare(at, mark.size(), mark) == 0 ? text.find(mark, at + mark.size())
                                                        : std::string::npos;
    }

    bool Code() {
        std::size_t const end = EndOf("`");
        if (end == std::string::npos) {
            return false;
        }
        std::string code = text.substr(at + 1, end - at - 1);
        for (std::size_t bar = code.find("\\|"); bar != std::string::npos; bar = code.find("\\|")) {
            code.erase(bar, 1);
        }
        Add(RoffBold(code), end + 1);
        return true;
    }

    bool Bold() {
        std::size_t const end = EndOf("**");
        if (end == std::string::npos) {
            return false;
        }
        Add(RoffBold(text.substr(at + 2, end - at - 2)), end + 2);
        return true;
    }

    bool Link() {
        std::size_t const middle = text[at] == '[' ? text.find("](", at) : std::string::npos;
        std::size_t const end = middle == std::string::npos ? middle : text.find(')', middle);
        if (end == std::string::npos || text.find('[', at + 1) < middle) {
            return false;
        }
        Add(InlineReader(text.substr(at + 1, middle - at - 1)).Roff(), end + 1);
        return true;
    }

    bool Escape() {
        if (text[at] != '\\' || at + 1 == text.size() || text[at + 1] != '|') {
            return false;
        }
        plain += text[at + 1];
        at += 2;
        return true;
    }

    std::string const& text;
    std::size_t at = 0;
    std::string plain;
    std::string roff;
};

std::string InlineRoff(std::string const& text) {
    return InlineReader(text).Roff();
}

std::vector<std::string> CellsOf(std::string const& row) {
    std::vector<std::string> cells(1);
    for (std::size_t i = 1; i < row.size(); ++i) {
        if (row[i] == '|' && row[i - 1] != '\\') {
            cells.emplace_back();
        } else {
            cells.back() += row[i];
        }
    }
    cells.pop_back();
    for (std::string& cell : cells) {
        cell = Trimmed(cell);
    }
    return cells;
}

class Converter {
public:
    explicit Converter(ManPage& manPage) : page(manPage) {}

    void Take(std::string const& line) {
        bool const isSame = !lines.empty() && KindOf(line) == KindOf(lines.front());
        if (line.empty() && !lines.empty() && KindOf(lines.front()) == Kind::Code) {
            lines.push_back(line);  // code may go on after an empty line
            return;
        }
        if (line.empty() || !isSame) {
            EndBlock();
        }
        if (BeginsWith(line, "### ")) {
            page.Subsection(line.substr(4));
        } else if (BeginsWith(line, "## ")) {
            page.Section(line.substr(3));
        } else if (!line.empty() && !BeginsWith(line, "<!--")) {
            lines.push_back(line);
        }
    }

    void EndBlock() {
        if (lines.empty()) {
            return;
        }
        switch (KindOf(lines.front())) {
            case Kind::Code:
                Code();
                break;
            case Kind::Table:
                Table();
                break;
            case Kind::List:
                for (std::string const& line : lines) {
                    page.Bullet(InlineRoff(line.substr(2)));
                }
                break;
            case Kind::Paragraph:
                for (std::string const& line : lines) {
                    page.Paragraph(InlineRoff(line));
                }
                break;
        }
        lines.clear();
    }

private:
    enum class Kind { Paragraph, Code, Table, List };

    static Kind KindOf(std::string const& line) {
        return BeginsWith(line, "    ") ? Kind::Code
               : BeginsWith(line, "|")  ? Kind::Table
               : BeginsWith(line, "- ") ? Kind::List
                                        : Kind::Paragraph;
    }

    void Code() {
        while (lines.back().empty()) {
            lines.pop_back();
        }
        for (std::string& line : lines) {
            line.erase(0, 4);
        }
        page.Code(lines);
    }

    void Table() {
        std::vector<std::string> const titles = CellsOf(lines.front());
        for (std::size_t i = 2; i < lines.size(); ++i) {
            std::vector<std::string> const cells = CellsOf(lines[i]);
            page.Tagged(InlineRoff(cells[0]), cells.size() > 1 ? InlineRoff(cells[1]) : std::string());
            for (std::size_t column = 2; column < cells.size(); ++column) {
                if (!cells[column].empty()) {
                    page.More(RoffItalic(titles[column] + ":") + " " + InlineRoff(cells[column]));
                }
            }
        }
    }

    ManPage& page;
    std::vector<std::string> lines;  // of the current block, which are of one kind
};

}  // namespace

void AddMarkdown(ManPage& page, std::string const& document, std::vector<std::string> const& sections) {
    for (std::string const& section : sections) {
        std::istringstream lines(document);
        std::string line;
        while (std::getline(lines, line) && line != "## " + section) {
        }
        if (!lines) {
            throw std::runtime_error("a document has no section \"## " + section + "\"");
        }
        Converter converter(page);
        converter.Take(line);
        while (std::getline(lines, line) && !BeginsWith(line, "## ")) {
            converter.Take(line);
        }
        converter.EndBlock();
    }
}

}  // namespace tools
