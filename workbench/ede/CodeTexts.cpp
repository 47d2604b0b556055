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

bool IsEmpty(CsvRow const& row) {
    return row.fields.front().text.empty() && TextsOf(row).empty();
}

}  // namespace

CodeTexts::CodeTexts(EdeFile const& codeFile, ImportReport& report) : file(codeFile.name) {
    std::unordered_map<std::uint32_t, std::size_t> lines;
    bool isFirst = true;
    DecodedText const decoded = DecodeText(codeFile.content);
    for (CsvRow const& row : ReadCsv(decoded.text).rows) {
        if (row.isComment || IsEmpty(row)) {
            continue;
        }
        CsvField const& field = row.fields.front();
        auto const number = WholeNumberOf(field.text, UINT32_MAX - 1);
        // A line of headings without a "#" is the first one.
        if (number && lines.emplace(*number, row.Line()).second) {
            texts[*number] = TextsOf(row);
            if (!texts[*number].empty()) {
                auto const known = numbers.emplace(LettersOf(texts[*number].front()), *number);
                known.first->second = known.second ? std::optional(*number) : std::nullopt;
            }
        } else if (number) {
            report.lines.push_back({file, row.Line(), 1, "", Effect::RowNotUsed,
                                    "the number " + std::to_string(*number) + " is also in line " +
                                        std::to_string(lines[*number])});
        } else if (!isFirst) {
            report.lines.push_back(
                {file, row.Line(), 1, "", Effect::RowNotUsed,
                 tools::Quoted(field.text) + " is not a number; a row is a number and its text"});
        }
        isFirst = false;
    }
}

std::vector<std::string> const& CodeTexts::Of(std::uint32_t number) const {
    static std::vector<std::string> const none;
    auto const found = texts.find(number);
    return found == texts.end() ? none : found->second;
}

std::optional<std::uint32_t> CodeTexts::NumberOf(std::string const& text) const {
    auto const found = numbers.find(LettersOf(text));
    return found == numbers.end() ? std::nullopt : found->second;
}

}  // namespace workbench
