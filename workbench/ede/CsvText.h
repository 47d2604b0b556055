#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

struct CsvField {
    std::string text;      // without the quotation marks and the blanks around it
    std::size_t line = 0;  // in which it begins, from 1
};

struct CsvRow {
    std::vector<CsvField> fields;  // at least one
    bool isComment = false;        // it begins with "#", which is not in the first field
    // A quotation mark is not closed within 50 lines, or is in the middle of a field. The row is its first
    // line, separated without regard to quotation marks.
    bool hasLooseQuotes = false;

    std::size_t Line() const { return fields.front().line; }
};

// Fields that a ";", a tab or a "," separates, and rows that a CR, an LF or both end. A field in quotation
// marks may have separators, line ends and doubled quotation marks.
struct CsvText {
    char separator = ';';
    std::vector<CsvRow> rows;  // without empty lines, and without a first line "sep=;"
};

// Finds the separator by itself: the one that most of the first lines have that are not comments. Reads every
// text. Work is linear in its length.
CsvText ReadCsv(std::string_view text);

// The same, a row at a time, so that memory is needed for one row alone.
void ForEachRow(std::string_view text, std::function<void(CsvRow const& row, char separator)> const& take);

}  // namespace workbench
