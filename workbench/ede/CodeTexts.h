#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "EdeImport.h"

namespace workbench {

// One of the files beside an EDE file: texts by a number. StateTexts has several for each number, Units and
// ObjTypes one.
class CodeTexts {
public:
    CodeTexts() = default;
    // Rows that cannot be used become lines of the report.
    CodeTexts(EdeFile const& file, ImportReport& report);

    // Empty for a number that the file does not have.
    std::vector<std::string> const& Of(std::uint32_t number) const;
    bool Has(std::uint32_t number) const { return texts.count(number) > 0; }
    // The number whose first text is this one, in any letter case; no value if several have it.
    std::optional<std::uint32_t> NumberOf(std::string const& text) const;
    // The name of the file; empty without one.
    std::string const& File() const { return file; }

private:
    std::string file;
    std::unordered_map<std::uint32_t, std::vector<std::string>> texts;
    std::unordered_map<std::string, std::optional<std::uint32_t>> numbers;
};

}  // namespace workbench
