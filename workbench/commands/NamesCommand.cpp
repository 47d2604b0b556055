#include "NamesCommand.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <ostream>

#include "ExitCode.h"
#include "NameTable.h"

namespace workbench {

namespace {

void PrintNames(NameTable const& table, char const* title, std::ostream& out) {
    out << title << "\n  code  BACnet  name\n";
    for (NameRow const& row : table) {
        char line[80];
        std::snprintf(line, sizeof line, "  %4d  %6d  %s\n", row.code, row.bacnetNumber, row.name);
        out << line;
    }
}

int ListNames(std::ostream& out) {
    PrintNames(ObjectTypes(), "ObjectType", out);
    out << "\n";
    PrintNames(Properties(), "ObjectProperties", out);
    return tools::WorkbenchExit::Ok;
}

}  // namespace

void AddNamesCommand(CLI::App& program, CommandBody& chosen) {
    CLI::App* const command =
        program.add_subcommand("names", "Lists the names of object types and properties");
    command->callback([&chosen] { chosen = [](Streams const& streams) { return ListNames(streams.out); }; });
}

}  // namespace workbench
