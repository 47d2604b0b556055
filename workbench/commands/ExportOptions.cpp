#include "ExportOptions.h"

#include <CLI/CLI.hpp>

namespace workbench {

namespace {

constexpr char ExportHelp[] =
    R"(Writes the values that a run has recorded with --record, of an interval and of chosen variables:
variable by variable, oldest first. A row is a change. The first row of an interval is the value in
force at its beginning; where a run ended, a row repeats the value with the time until which it is
known to hold, and a row without a value follows when a later run goes on. Also while a run records.

A time is 2026-03-01, 2026-03-01T12:00 or 2026-03-01T12:00:30.5, local or with Z or an offset such
as +01:00; -24h is so long ago, with s, m, h, d or w; now. Times are written local to this machine:
TZ=UTC dorvel-workbench export ... writes them in UTC.

Ctrl-C ends it; a file that is written with -o is there whole or not at all.

Examples:
  dorvel-workbench export plant.sqlite --list
  dorvel-workbench export plant.sqlite --from -24h --variable "AHU.*" -o yesterday.csv
  dorvel-workbench export plant.sqlite --from 2026-03-01 --to 2026-04-01 -o march.csv
  dorvel-workbench export plant.sqlite --events --from -7d
  dorvel-workbench export plant.sqlite --format json --variable "*.Supply air" | jq .value

Exit codes:
  0  done
  1  Ctrl-C ended it before its end
  2  a mistake on the command line, a variable that is not recorded, or a file that is there already
  4  the recording cannot be read, or something else failed, such as writing the file
  130  a second Ctrl-C ended the program at once)";

}  // namespace

void DefineExport(CLI::App& command, ExportOptions& options) {
    command.add_option("FILE", options.file, "The recording")->required();
    command.add_option("--from", options.from, "Leaves out what is older (default: the beginning)")
        ->type_name("TIME");
    command.add_option("--to", options.to, "Leaves out what is newer (default: the end)")->type_name("TIME");
    auto* const variable = command
                               .add_option("--variable", options.variables,
                                           "Only this variable; * stands for any characters; may be repeated")
                               ->type_name("BLOCK.VARIABLE")
                               ->allow_extra_args(false);
    auto* const events =
        command.add_flag("--events", options.isOfEvents, "Writes the events")->excludes(variable);
    command.add_flag("--list", options.isList, "Writes which variables are recorded, and since when")
        ->excludes(events);
    command
        .add_option_function<std::string>(
            "--format", [&options](std::string const& name) { options.isJson = name == "json"; },
            "csv or json, an object a line (default: csv)")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"csv", "json"}).description(""));
    command.add_option("-o,--output", options.output, "Writes into this file (default: standard output)")
        ->type_name("FILE");
    command.add_flag("--force", options.mayReplace, "Replaces a file that is there");
    command.footer(ExportHelp);
}

}  // namespace workbench
