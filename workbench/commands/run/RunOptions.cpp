#include "RunOptions.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "Printable.h"

namespace workbench {

namespace {

constexpr char RunHelp[] =
    R"(Calls every block of the project once per period of its task. In a terminal a table shows the
variables and is refreshed in place; elsewhere, with TERM=dumb and in a terminal below 40x8, each
variable is one line per cycle, with tabs between the columns. Ctrl-C ends the run.

The table is scrolled by the arrows, pages, Home, End and the wheel; / filters, Enter shows all that
is known of a variable, l shows the log, s sets a value, and ? lists all keys.

With --format none nothing is shown: for a service, whose log is on standard error
(docs/unattended.md).

A variable with Write = true can be set: with --set, with the key s in the table, and with lines
"set Block.Variable = value" on standard input. A value is written in the cycle after the first
cycle without a fault.

--changes-only shows the first cycle of a block whole and then what differs from what was shown:
values, qualities, suspects, writes, and in JSON also the state of the block. --dead-band 0.5 leaves
out numbers that are within 0.5 of the number that was shown last.

Below a block is why it is in its state, as the datagrams show it. A value that the driver has read
from an error of the device is marked as suspect.

--standby, and the lines "standby on" and "standby off" on standard input, play the standby of a
redundant pair: only blocks with ExecuteOnSlave are polled, and only those with WriteOnSlave write.

--page serves the same for browsers, beside the table or the lines, and prints a link. It can be read
only without --page-writes, and by this machine only without an address (docs/page.md).

--mqtt publishes the values at an MQTT broker, as JSON or as Sparkplug B, and with --mqtt-writes takes
commands from it. A broker that is away or slow does not hold the run up (docs/publish.md).

--record writes changes and events into a database of SQLite, which the trends of the page reach back
into and the command export reads (docs/record.md).

--metrics serves values, qualities and figures for Prometheus (docs/publish.md).

Examples:
  dorvel-workbench run plant.lua --define ahu=192.168.1.20:47808 --pcap plant.pcap
  dorvel-workbench run plant.lua --set "AHU.Supply air setpoint=21.5" --summary
  dorvel-workbench run plant.lua --format json --cycles 10 --fail-on fault,suspect
  dorvel-workbench run plant.lua --format csv --dead-band 0.2 > plant.csv
  dorvel-workbench run plant.lua --page --page-writes
  dorvel-workbench run plant.lua --page 192.168.1.5:8080 --page-token-file page.token
  dorvel-workbench run plant.lua --mqtt mqtts://broker.example --mqtt-ca ca.pem --mqtt-login broker.login
  dorvel-workbench run plant.lua --mqtt mqtt://192.168.1.9 --mqtt-payload sparkplug --mqtt-group site1
  dorvel-workbench run plant.lua --page --record plant.sqlite --record-keep 90d

Exit codes:
  0  done, also after Ctrl-C
  1  a condition of --fail-on was met, or a block was in fault at the end, with --fail-on-fault
  2  a mistake on the command line or in the project
  3  the add-in cannot be loaded
  4  something else failed, such as writing the capture file
  130  a second Ctrl-C ended the program at once)";

// --format, and what of each cycle is shown in a format for programs.
void AddFormatOptions(CLI::App& command, RunOptions& options) {
    AddOutputOption(command, options.format, true);
    command.add_flag_callback(
        "--changes-only", [&options] { options.changesBeyond = options.changesBeyond.value_or(0); },
        "Shows of each cycle only what has changed; in lines, JSON and CSV");
    command
        .add_option_function<std::string>(
            "--dead-band",
            [&options](std::string const& text) {
                options.changesBeyond = NumberFromZero(text, "--dead-band", "a width");
            },
            "The same, and of numbers only changes by more than X")
        ->type_name("X");
    command.parse_complete_callback([&options] {
        if (options.changesBeyond &&
            (options.format == OutputFormat::Table || options.format == OutputFormat::None)) {
            bool const isTable = options.format == OutputFormat::Table;
            throw CLI::ValidationError("--changes-only",
                                       std::string("and --dead-band are not for ") +
                                           (isTable ? "the table, which shows all variables"
                                                    : "--format none, which shows no variables") +
                                           "; use --format lines, json or csv");
        }
    });
}

void AddLogOptions(CLI::App& command, RunOptions& options) {
    static std::map<std::string, LogFormat> const formats = {{"text", LogFormat::Text},
                                                             {"json", LogFormat::Json}};
    command
        .add_option_function<std::string>(
            "--log-format", [&options](std::string const& name) { options.logFormat = formats.at(name); },
            "Form of the log on standard error: text or json (default: text)")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(formats).description(""));
    command.add_flag("--trace", options.trace, "Shows what the driver does, step by step");
}

// Conditions with commas between them. CLI11 drops the empty ones.
std::set<Trouble> Conditions(std::string const& text) {
    std::set<Trouble> conditions;
    std::size_t from = 0;
    while (from <= text.size()) {
        std::size_t const comma = std::min(text.find(',', from), text.size());
        std::string const name = text.substr(from, comma - from);
        auto const condition = TroubleOfName(name);
        if (!condition) {
            throw CLI::ValidationError("--fail-on", "\"" + name + "\" is not a condition; allowed are " +
                                                        CLI::detail::join(TroubleNames(), ", ") +
                                                        ", with commas between them");
        }
        conditions.insert(*condition);
        from = comma + 1;
    }
    return conditions;
}

void AddFailOptions(CLI::App& command, RunOptions& options) {
    auto* const failOn = command.add_option_function<std::vector<std::string>>(
        "--fail-on",
        [&options](std::vector<std::string> const& texts) {
            for (std::string const& text : texts) {
                std::set<Trouble> const conditions = Conditions(text);
                options.failOn.insert(conditions.begin(), conditions.end());
            }
        },
        "Exit code 1 when one of these is true at the end, with commas between them: " +
            CLI::detail::join(TroubleNames(), ", "));
    failOn->type_name("CONDITIONS")->allow_extra_args(false);
    NameWords(*failOn, TroubleNames(), WordsKind::List);
    command.add_flag_callback(
        "--fail-on-fault", [&options] { options.failOn.insert(Trouble::Fault); },
        "The same as --fail-on fault");
}

}  // namespace

void DefineRun(CLI::App& command, RunOptions& options) {
    AddProjectOptions(command, options);
    AddFormatOptions(command, options);
    command.add_option("--cycles", options.cycles, "Ends after N cycles of each block (default: at Ctrl-C)")
        ->type_name("N")
        ->check(CLI::Range(1ULL, 1000000000000ULL).description(""));
    command
        .add_option_function<std::vector<std::string>>(
            "--set",
            [&options](std::vector<std::string> const& texts) {
                for (std::string const& text : texts) {
                    Assignment(text, "--set");
                    options.sets.push_back(text);
                }
            },
            "Writes a value to the device; may be repeated")
        ->type_name("BLOCK.VARIABLE=VALUE")
        ->allow_extra_args(false);
    command.add_option("--pcap", options.captureFile, "Records every datagram in a capture file")
        ->type_name("FILE.pcap");
    AddLogOptions(command, options);
    AddFailOptions(command, options);
    AddPageOptions(command, options.page);
    AddMqttOptions(command, options.mqtt);
    AddRecordOptions(command, options.record);
    AddMetricsOptions(command, options.metrics);
    command.add_flag("--standby", options.standby, "Begins as the standby of a redundant pair");
    command.add_flag_callback(
        "--summary", [&options] { options.summary = true; },
        "Prints figures at the end (default in a terminal)");
    command.add_flag_callback(
        "--no-summary", [&options] { options.summary = false; }, "Prints no figures at the end");
    command.footer(RunHelp);
}

}  // namespace workbench
