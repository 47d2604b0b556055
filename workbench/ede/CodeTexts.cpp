#include "CodeTexts.h"

#include "CsvText.h"
#include "EdeColumns.h"
#include "FieldValue.h"
#include "Printable.h"
#include "TextEncoding.h"

namespace workbench {

namespace {

using Effect = ImportLine::Effect;

// The texts after the number, without the empty ones at the end.
std::vector<std::string> TextsOf(CsvRow const& row) {
    std::vector<std::string> texts;
    for (std::size_t i = 1; i < row.fields.size(); ++i) {
        texts.push_back(row.fields[i].text);
    }
    while (!texts.empty() && texts.back().empty()) {
        texts.pop_back();
    }
    return texts;
}

// What texts are compared by: without regard to letter case, blanks, "-" and "_". Other characters count:
// units such as "%" and "m3/h" consist of them.
std::string Folded(std::string const& text) {
    std::string folded;
    for (char const c : text) {
        if (c != ' ' && c != '-' && c != '_') {
            folded += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        }
    }
    return folded.empty() ? text : folded;
}

// Headings without a "#" are in front of the first number, and have none.
bool HasDigit(std::string const& text) {
    return text.find_first_of("0123456789") != std::string::npos;
}

bool IsEmpty(CsvRow const& row) {
    return row.fields.front().text.empty() && TextsOf(row).empty();
}

}  // namespace

CodeTexts::CodeTexts(EdeFile const& codeFile, ImportReport& report) : file(codeFile.name) {
    std::unordered_map<std::uint32_t, std::size_t> lines;
    bool hasHeadings = false;
    DecodedText const decoded = DecodeText(codeFile.content);
    ForEachRow(decoded.text, [&](CsvRow const& row, char) {
        if (row.isComment || IsEmpty(row)) {
            return;
        }
        CsvField const& field = row.fields.front();
        auto const number = WholeNumberOf(field.text, UINT32_MAX - 1);
        if (number && lines.emplace(*number, row.Line()).second) {
            texts[*number] = TextsOf(row);
            if (!texts[*number].empty()) {
                auto const known = numbers.emplace(Folded(texts[*number].front()), *number);
                known.first->second = known.second ? std::optional(*number) : std::nullopt;
            }
        } else if (number) {
            report.lines.push_back({file, row.Line(), 1, "", Effect::ValueNotUsed,
                                    "the number " + std::to_string(*number) + " is also in line " +
                                        std::to_string(lines[*number])});
        } else if (!lines.empty() || HasDigit(field.text)) {
            report.lines.push_back(
                {file, row.Line(), 1, "", Effect::ValueNotUsed,
                 tools::Quoted(field.text) + " is not a number; a row is a number and its text"});
        } else {
            hasHeadings = true;
        }
    });
    if (lines.empty() && hasHeadings) {
        report.lines.push_back({file, 0, 0, "", Effect::Note, "has no row with a number and its text"});
    }
}

std::vector<std::string> const& CodeTexts::Of(std::uint32_t number) const {
    static std::vector<std::string> const none;
    auto const found = texts.find(number);
    return found == texts.end() ? none : found->second;
}

std::optional<std::uint32_t> CodeTexts::NumberOf(std::string const& text) const {
    auto const found = numbers.find(Folded(text));
    return found == numbers.end() ? std::nullopt : found->second;
}

}  // namespace workbench
