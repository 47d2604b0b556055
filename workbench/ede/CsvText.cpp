#include "CsvText.h"

#include <csv.h>

#include <algorithm>
#include <new>

namespace workbench {

namespace {

constexpr std::string_view LineEnds = "\r\n";
constexpr std::string_view Blanks = " \t";
constexpr std::string_view Separators = ";\t,";

std::string_view Trimmed(std::string_view text) {
    std::size_t const first = text.find_first_not_of(Blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

// The index of the line end after `at`, or the length of the text.
std::size_t EndOfLine(std::string_view text, std::size_t at) {
    return std::min(text.find_first_of(LineEnds, at), text.size());
}

// The index after the line end at `at`.
std::size_t AfterLineEnd(std::string_view text, std::size_t at) {
    bool const isPair = text.substr(at, 2) == LineEnds;
    return std::min(at + (isPair ? 2 : 1), text.size());
}

bool IsComment(std::string_view line) {
    return Trimmed(line).substr(0, 1) == "#";
}

// The separator that most lines have, of the first 200 that are not comments. The first one of equals.
char SeparatorOf(std::string_view text) {
    std::size_t counts[Separators.size()] = {};
    std::size_t at = 0;
    for (int lines = 0; lines < 200 && at < text.size();) {
        std::size_t const end = EndOfLine(text, at);
        std::string_view const line = text.substr(at, end - at);
        for (std::size_t i = 0; i < Separators.size() && !IsComment(line); ++i) {
            counts[i] += line.find(Separators[i]) != std::string_view::npos ? 1 : 0;
        }
        lines += IsComment(line) ? 0 : 1;
        at = AfterLineEnd(text, end);
    }
    return Separators[static_cast<std::size_t>(std::max_element(counts, counts + Separators.size()) -
                                               counts)];
}

// The library, fed with one octet at a time, so that the line of each field is known.
class RowParser {
public:
    explicit RowParser(char separatorOctet) : separator(separatorOctet) { Init(); }
    ~RowParser() { csv_free(&parser); }
    RowParser(RowParser const&) = delete;
    RowParser& operator=(RowParser const&) = delete;

    struct Result {
        std::size_t end = 0;   // the index of the line end after the row, or that of the end
        std::size_t line = 0;  // in which the row ends
        bool isWhole = false;  // the quotation marks are as they should be
    };

    // Reads a row that begins at `at` in a line and ends before `limit` at the latest.
    Result Read(std::string_view text, std::size_t at, std::size_t limit, std::size_t line, CsvRow& row) {
        fields = &row.fields;
        fieldLine = line;
        known = 0;
        isRowEnd = false;
        std::size_t const lastLine = line + MostLines;
        for (; at < limit; ++at) {
            if (csv_parse(&parser, &text[at], 1, OnField, OnRow, this) != 1) {
                break;
            }
            if (isRowEnd) {
                return {at, line, true};
            }
            if (IsLineEnd(text, at) && ++line == lastLine) {
                break;
            }
            if (text[at] == separator && fields->size() != known) {
                fieldLine = line;
            }
            known = fields->size();
        }
        bool const isWhole = at == limit && csv_fini(&parser, OnField, OnRow, this) == 0;
        Restart();
        return {at, line, isWhole};
    }

private:
    // A field with more lines has a quotation mark that was meant as one.
    static constexpr std::size_t MostLines = 50;

    // True for one octet of each line end.
    static bool IsLineEnd(std::string_view text, std::size_t at) {
        return text[at] == '\n' || (text[at] == '\r' && text.substr(at, 2) != LineEnds);
    }
    static void OnField(void* text, std::size_t length, void* self) {
        auto& reader = *static_cast<RowParser*>(self);
        reader.fields->push_back({std::string(static_cast<char*>(text), length), reader.fieldLine});
    }
    static void OnRow(int, void* self) { static_cast<RowParser*>(self)->isRowEnd = true; }
    void Init() {
        if (csv_init(&parser, CSV_STRICT | CSV_STRICT_FINI) != 0) {
            throw std::bad_alloc();
        }
        csv_set_delim(&parser, static_cast<unsigned char>(separator));
        csv_set_blk_size(&parser, 4096);
    }
    void Restart() {
        csv_free(&parser);
        Init();
    }

    char separator;
    csv_parser parser{};
    std::vector<CsvField>* fields = nullptr;
    std::size_t known = 0;
    std::size_t fieldLine = 0;
    bool isRowEnd = false;
};

// A field that is one pair of quotation marks and no other is what they enclose.
std::string_view WithoutPair(std::string_view field) {
    bool const isPair = field.size() >= 2 && field.front() == '"' && field.back() == '"' &&
                        field.find('"', 1) == field.size() - 1;
    return isPair ? field.substr(1, field.size() - 2) : field;
}

// The fields of one line, without regard to quotation marks.
std::vector<CsvField> Separated(std::string_view line, char separator, std::size_t number) {
    std::vector<CsvField> fields;
    std::size_t begin = 0;
    while (begin != std::string_view::npos) {
        std::size_t const end = line.find(separator, begin);
        std::string_view const field = line.substr(begin, end == std::string_view::npos ? end : end - begin);
        fields.push_back({std::string(WithoutPair(Trimmed(field))), number});
        begin = end == std::string_view::npos ? end : end + 1;
    }
    return fields;
}

// Removes the "#" of a comment.
void TakeComment(CsvRow& row) {
    std::string& first = row.fields.front().text;
    row.isComment = !first.empty() && first.front() == '#';
    if (row.isComment) {
        first = std::string(Trimmed(std::string_view(first).substr(1)));
    }
}

using RowTaker = std::function<void(CsvRow const&, char)>;

class CsvReader {
public:
    CsvReader(std::string_view csvText, char separatorOctet, RowTaker const& rowTaker)
        : text(csvText), separator(separatorOctet), parser(separatorOctet), take(rowTaker) {}

    void Read(std::size_t begin) {
        line += begin > 0 ? 1 : 0;
        for (std::size_t at = begin; at < text.size(); ++line) {
            std::size_t const end = EndOfLine(text, at);
            bool const isEmpty = Trimmed(text.substr(at, end - at)).empty();
            at = AfterLineEnd(text, isEmpty ? end : ReadRow(at, end));
        }
    }

private:
    // Returns the index of the line end after the row.
    std::size_t ReadRow(std::size_t at, std::size_t endOfLine) {
        CsvRow row;
        bool const isComment = IsComment(text.substr(at, endOfLine - at));
        std::size_t const limit = isComment ? endOfLine : text.size();
        RowParser::Result result = parser.Read(text, at, limit, line, row);
        if (!result.isWhole) {
            row.fields = Separated(text.substr(at, endOfLine - at), separator, line);
            row.hasLooseQuotes = true;
            result = {endOfLine, line, false};
        }
        TakeComment(row);
        take(row, separator);
        line = result.line;
        return result.end;
    }

    std::string_view text;
    char separator;
    RowParser parser;
    RowTaker const& take;
    std::size_t line = 1;
};

}  // namespace

CsvText ReadCsv(std::string_view text) {
    CsvText csv;
    ForEachRow(text, [&](CsvRow const& row, char separator) {
        csv.separator = separator;
        csv.rows.push_back(row);
    });
    return csv;
}

void ForEachRow(std::string_view text, std::function<void(CsvRow const&, char)> const& take) {
    std::string_view const first = text.substr(0, EndOfLine(text, 0));
    bool const isNamed = first.size() == 5 && first.substr(0, 4) == "sep=" &&
                         Separators.find(first[4]) != std::string_view::npos;
    char const separator = isNamed ? first[4] : SeparatorOf(text);
    std::size_t const begin = isNamed ? AfterLineEnd(text, first.size()) : 0;
    CsvReader(text, separator, take).Read(begin);
}

}  // namespace workbench
