#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace workbench {

// Of the command export.
struct ExportOptions {
    std::string file;
    std::string from;  // as ReadTime reads it (RecordTime.h); empty: the beginning
    std::string to;    // empty: the end
    std::vector<std::string> variables;
    bool isOfEvents = false;
    bool isList = false;
    bool isJson = false;
    std::string output;  // empty: standard output
    bool mayReplace = false;
};

void DefineExport(CLI::App& command, ExportOptions& options);

}  // namespace workbench
