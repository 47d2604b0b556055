#include "SourceText.h"

#include <sstream>
#include <string_view>

#include "FileText.h"
#include "ProjectError.h"

namespace workbench {

namespace {

constexpr std::size_t LargestFile = 16;  // MB

// True when the line contains Name="name", with any blanks and either kind of quotes.
bool Names(std::string_view line, std::string const& name) {
    for (std::size_t position = line.find("Name"); position != std::string_view::npos;
         position = line.find("Name", position + 1)) {
        std::size_t const equals = line.find_first_not_of(" \t", position + 4);
        if (equals == std::string_view::npos || line[equals] != '=') {
            continue;
        }
        std::size_t const quote = line.find_first_not_of(" \t", equals + 1);
        if (quote == std::string_view::npos || (line[quote] != '"' && line[quote] != '\'')) {
            continue;
        }
        std::string_view const rest = line.substr(quote + 1);
        if (rest.size() > name.size() && rest.substr(0, name.size()) == name &&
            rest[name.size()] == line[quote]) {
            return true;
        }
    }
    return false;
}

}  // namespace

SourceText SourceText::FromFile(std::string const& path) try {
    return SourceText(tools::FileText(path, LargestFile));
} catch (tools::UnreadableFile const& reason) {
    throw ProjectError(reason.what());
}

SourceText::SourceText(std::string sourceText) : text(std::move(sourceText)) {
    if (text.compare(0, 3, "\xEF\xBB\xBF") == 0) {
        text.erase(0, 3);
    }
    if (text.compare(0, 1, "#") == 0) {
        text.insert(0, "--");
    }
}

int SourceText::LineOfVariable(int blockLine, std::string const& name, int occurrence) const {
    std::istringstream lines(text);
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
        if (number > blockLine && line.find("BACnet.new") != std::string::npos) {
            break;
        }
        if (number >= blockLine && Names(line, name) && --occurrence == 0) {
            return number;
        }
    }
    return blockLine;
}

}  // namespace workbench
