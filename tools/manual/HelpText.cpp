#include "HelpText.h"

#include <algorithm>
#include <sstream>

namespace tools {

namespace {

std::size_t IndentOf(std::string const& line) {
    return std::min(line.find_first_not_of(' '), line.size());
}

bool IsTitle(std::string const& line) {
    return !line.empty() && line[0] != ' ' && line.back() == ':' &&
           std::count(line.begin(), line.end(), ' ') <= 1;
}

// Where the second column of a row begins; npos if it has none.
std::size_t SecondColumn(std::string const& line, std::size_t indent) {
    std::size_t const gap = line.find("  ", indent);
    return gap == std::string::npos ? gap : line.find_first_not_of(' ', gap);
}

void AddCode(HelpBlock& block, std::vector<std::string> const& lines, std::size_t indent) {
    block.kind = HelpBlock::Kind::Code;
    for (std::string const& line : lines) {
        block.lines.push_back(line.substr(indent));
    }
}

void AddTable(HelpBlock& block, std::vector<std::string> const& lines, std::size_t indent) {
    block.kind = HelpBlock::Kind::Table;
    for (std::string const& line : lines) {
        if (IndentOf(line) > indent && !block.rows.empty()) {
            block.rows.back().second += ' ' + line.substr(IndentOf(line));
            continue;
        }
        std::size_t const second = SecondColumn(line, indent);
        std::string first = line.substr(indent, second == std::string::npos ? second : second - indent);
        first.erase(first.find_last_not_of(' ') + 1);
        block.rows.emplace_back(first, second == std::string::npos ? std::string() : line.substr(second));
    }
}

HelpBlock IndentedBlock(std::vector<std::string> const& lines) {
    std::size_t const indent = IndentOf(lines.front());
    HelpBlock block;
    if (SecondColumn(lines.front(), indent) == std::string::npos) {
        AddCode(block, lines, indent);
    } else {
        AddTable(block, lines, indent);
    }
    return block;
}

class Reader {
public:
    void Take(std::string const& line) {
        if (line.empty()) {
            EndBlock();
        } else if (IsTitle(line) && lines.empty()) {
            sections.push_back({line.substr(0, line.size() - 1), {}});
        } else {
            if (!lines.empty() && (IndentOf(line) == 0) != (IndentOf(lines.front()) == 0)) {
                EndBlock();
            }
            lines.push_back(line);
        }
    }

    std::vector<HelpSection> End() {
        EndBlock();
        return std::move(sections);
    }

private:
    void EndBlock() {
        if (lines.empty()) {
            return;
        }
        HelpBlock block;
        if (IndentOf(lines.front()) > 0) {
            block = IndentedBlock(lines);
        } else {
            for (std::string const& line : lines) {
                block.text += (block.text.empty() ? "" : " ") + line;
            }
        }
        sections.back().blocks.push_back(block);
        lines.clear();
    }

    std::vector<HelpSection> sections{{}};
    std::vector<std::string> lines;  // of the current block
};

}  // namespace

std::vector<HelpSection> ReadHelpText(std::string const& text) {
    Reader reader;
    std::istringstream lines(text);
    std::string line;
    while (std::getline(lines, line)) {
        reader.Take(line);
    }
    return reader.End();
}

}  // namespace tools
