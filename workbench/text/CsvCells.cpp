#include "CsvCells.h"

#include "Printable.h"

namespace workbench {

namespace {

std::string Cell(std::string const& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) {
        return text;
    }
    std::string quoted = "\"";
    for (char const octet : text) {
        quoted += octet == '"' ? "\"\"" : std::string(1, octet);
    }
    return quoted + '"';
}

}  // namespace

std::string CsvLine(std::vector<std::string> const& cells) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        line += (i > 0 ? "," : "") + Cell(cells[i]);
    }
    return line + "\r\n";
}

std::string CsvSafeText(std::string_view text) {
    constexpr std::string_view formulas = "=+-@";
    // Full-width forms of the same characters, which some spreadsheets take for them.
    constexpr std::string_view wideFormulas[] = {"\uFF1D", "\uFF0B", "\uFF0D", "\uFF20"};
    std::string const shown = tools::Printable(text);
    std::size_t const first = shown.find_first_not_of(' ');
    if (first == std::string::npos) {
        return shown;
    }
    bool isFormula = formulas.find(shown[first]) != std::string_view::npos;
    for (std::string_view const wide : wideFormulas) {
        isFormula = isFormula || shown.compare(first, wide.size(), wide) == 0;
    }
    return isFormula ? "'" + shown : shown;
}

}  // namespace workbench
