#pragma once

#include <string>

#include "EdeImport.h"

namespace test {

constexpr char const* EdeHeadings =
    "#keyname;device obj.-instance;object-name;object-type;object-instance;description;present-value-default;"
    "min-present-value;max-present-value;settable;supports "
    "COV;hi-limit;low-limit;state-text-reference;unit-code;"
    "vendor-specific-address;notification-class\n";

// The import of one file, with the headings of layout 2.3 in line 1; its rows begin in line 2.
inline workbench::EdeImport ImportOf(std::string const& rows, std::string const& stateTexts = "",
                                     std::string const& units = "", std::string const& objectTypes = "") {
    workbench::EdeFiles files{{"p_EDE.csv", EdeHeadings + rows}, {}, {}, {}};
    if (!stateTexts.empty()) {
        files.stateTexts = workbench::EdeFile{"p_StateTexts.csv", stateTexts};
    }
    if (!units.empty()) {
        files.units = workbench::EdeFile{"p_Units.csv", units};
    }
    if (!objectTypes.empty()) {
        files.objectTypes = workbench::EdeFile{"p_ObjTypes.csv", objectTypes};
    }
    return ReadEde(files);
}

// The lines of the report.
inline std::string LinesOf(workbench::EdeImport const& import) {
    std::string text;
    for (workbench::ImportLine const& line : import.report.lines) {
        text += ImportLineText(line) + "\n";
    }
    return text;
}

}  // namespace test
