#include "CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <ostream>
#include <set>
#include <utility>

#include "ExitCode.h"

namespace workbench {

namespace {

constexpr char ProgramHelp[] = R"(Examples:
  dorvel-workbench run examples/first-steps.lua
  dorvel-workbench run plant.lua --define ahu=192.168.1.20:47808 --pcap plant.pcap
  dorvel-workbench run plant.lua --format json --cycles 10 --fail-on fault,suspect,overrun
  dorvel-workbench run plant.lua --set "AHU.Supply air setpoint=21.5"
  dorvel-workbench check plant.lua
  dorvel-workbench check --strict --format json *.lua
  dorvel-workbench verify plant.lua --report acceptance.html
  dorvel-workbench names

Exit codes:
  0  done, also after Ctrl-C
  1  a condition of --fail-on was met, or a block was in fault at the end, with --fail-on-fault;
     verify: there are findings
  2  a mistake on the command line or in the project; check: an error, or a warning with --strict
  3  the add-in cannot be loaded
  4  something else failed, such as writing the capture file
  130  a second Ctrl-C ended the program at once)";

constexpr char RunHelp[] =
    R"(Calls every block of the project once per period of its task. In a terminal a table shows the
variables and is refreshed in place; elsewhere each variable is one line per cycle, with tabs
between the columns. Ctrl-C ends the run.

A variable with Write = true can be set: with --set, with the key s in the table, and with lines
"set Block.Variable = value" on standard input. A value is written in the cycle after the first
cycle without a fault.

Below a block is why it is in its state, as the datagrams show it. A value that the driver has read
from an error of the device is marked as suspect.

--standby, and the lines "standby on" and "standby off" on standard input, play the standby of a
redundant pair: only blocks with ExecuteOnSlave are polled, and only those with WriteOnSlave write.

Examples:
  dorvel-workbench run plant.lua --define ahu=192.168.1.20:47808 --pcap plant.pcap
  dorvel-workbench run plant.lua --set "AHU.Supply air setpoint=21.5" --summary
  dorvel-workbench run plant.lua --format json --cycles 10 --fail-on fault,suspect

Exit codes:
  0  done, also after Ctrl-C
  1  a condition of --fail-on was met, or a block was in fault at the end, with --fail-on-fault
  2  a mistake on the command line or in the project
  3  the add-in cannot be loaded
  4  something else failed, such as writing the capture file
  130  a second Ctrl-C ended the program at once)";

constexpr char CheckHelp[] =
    R"(Reports everything in the projects that is wrong or will surprise, in the order of their lines:
errors are points and blocks that cannot work, warnings those that work but not always as meant.
Needs no network and no device, and does not run the driver. Functions of After are not called.
Each finding has a code; docs/findings.md has its cause, effect and cure.

Text has a line for each finding, and below it what to do. With --format json each finding is one
object on one line with severity, code, file, line, block, variable, field, message and advice; what
a finding does not have is null.

Examples:
  dorvel-workbench check plant.lua
  dorvel-workbench check plant.lua --define ahu=192.168.1.20:47808
  dorvel-workbench check --strict --format json *.lua

Exit codes:
  0  no error, and with --strict no warning
  2  an error, or with --strict a warning; or a mistake on the command line
  4  the output cannot be written)";

// Splits "NAME=VALUE". Without a name throws an exception that CLI11 reports.
std::pair<std::string, std::string> Assignment(std::string const& text, char const* option) {
    std::size_t const equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw CLI::ValidationError(option, "\"" + text + "\" is not of the form NAME=VALUE");
    }
    return {text.substr(0, equals), text.substr(equals + 1)};
}

void AddDefineOption(CLI::App& command, Options& options) {
    command
        .add_option_function<std::vector<std::string>>(
            "-D,--define",
            [&options](std::vector<std::string> const& texts) {
                for (std::string const& text : texts) {
                    options.params.insert(Assignment(text, "--define"));
                }
            },
            "Sets Param.NAME for the project; may be repeated")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
}

void AddProjectOptions(CLI::App& command, Options& options) {
    command.add_option("PROJECT", options.project, "The project, a Lua file")->required();
    command
        .add_option("--addin", options.addIn, "The add-in (default: dorvel_bacnet.so beside this program)")
        ->type_name("FILE");
    AddDefineOption(command, options);
}

void AddCheckOptions(CLI::App& command, Options& options) {
    static std::map<std::string, OutputFormat> const formats = {{"text", OutputFormat::Auto},
                                                                {"json", OutputFormat::Json}};
    command.add_option("PROJECT", options.projects, "The projects, Lua files")->required();
    AddDefineOption(command, options);
    command
        .add_option_function<std::string>(
            "--format", [&options](std::string const& name) { options.format = formats.at(name); },
            "text or json (default: text)")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(formats).description(""));
    command.add_flag("--strict", options.strict, "Warnings count as errors");
    command.footer(CheckHelp);
}

void AddLogOptions(CLI::App& command, Options& options) {
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

void AddFailOptions(CLI::App& command, Options& options) {
    command
        .add_option_function<std::vector<std::string>>(
            "--fail-on",
            [&options](std::vector<std::string> const& texts) {
                for (std::string const& text : texts) {
                    std::set<Trouble> const conditions = Conditions(text);
                    options.failOn.insert(conditions.begin(), conditions.end());
                }
            },
            "Exit code 1 when one of these is true at the end, with commas between them: " +
                CLI::detail::join(TroubleNames(), ", "))
        ->type_name("CONDITIONS")
        ->allow_extra_args(false);
    command.add_flag_callback(
        "--fail-on-fault", [&options] { options.failOn.insert(Trouble::Fault); },
        "The same as --fail-on fault");
}

void AddRunOptions(CLI::App& command, Options& options) {
    static std::map<std::string, OutputFormat> const formats = {{"auto", OutputFormat::Auto},
                                                                {"table", OutputFormat::Table},
                                                                {"lines", OutputFormat::Lines},
                                                                {"json", OutputFormat::Json}};
    command
        .add_option_function<std::string>(
            "--format", [&options](std::string const& name) { options.format = formats.at(name); },
            "auto, table, lines or json (default: auto)")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(formats).description(""));
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
        ->type_name("FILE");
    AddLogOptions(command, options);
    AddFailOptions(command, options);
    command.add_flag("--standby", options.standby, "Begins as the standby of a redundant pair");
    command.add_flag_callback(
        "--summary", [&options] { options.summary = true; },
        "Prints figures at the end (default in a terminal)");
    command.add_flag_callback(
        "--no-summary", [&options] { options.summary = false; }, "Prints no figures at the end");
    command.footer(RunHelp);
}

constexpr char VerifyHelp[] =
    R"(Reads every variable twice: by the driver, and before and after it from the device by the BACnet
standard. Each gets a verdict, such as agrees, moving, differs or no such object. Nothing is written:
variables have no write channels, and Set and After have no effect. Ctrl-C ends the run and prints
what was done.

Examples:
  dorvel-workbench verify plant.lua
  dorvel-workbench verify plant.lua --rounds 20 --format json
  dorvel-workbench verify plant.lua --report acceptance.html --title "North wing, level 2"

Exit codes:
  0  no findings
  1  findings, also when Ctrl-C has ended it before all points were compared
  2  a mistake on the command line or in the project
  3  the add-in cannot be loaded
  4  something else failed, such as writing the report
  130  a second Ctrl-C ended the program at once)";

void AddVerifyOptions(CLI::App& command, VerifyOptions& options) {
    command
        .add_option_function<std::string>(
            "--format", [&options](std::string const& name) { options.isJson = name == "json"; },
            "text or json (default: text)")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"text", "json"}).description(""));
    command.add_option("--report", options.report, "Writes a page for the acceptance")
        ->type_name("FILE.html");
    command.add_option("--title", options.title, "The title of the page (default: the project's path)")
        ->type_name("TEXT");
    command.add_option("--rounds", options.rounds, "Compares all variables N times (default: 1)")
        ->type_name("N")
        ->check(CLI::Range(1ULL, 1000000ULL).description(""));
    command
        .add_option("--timeout", options.timeout,
                    "How long a device may take to answer, without the driver: 10 to 60000 (default: 3000)")
        ->type_name("MS")
        ->check(CLI::Range(10u, 60000u).description(""));
    command
        .add_option("--retries", options.retries,
                    "Repetitions of a request without an answer: 0 to 10 (default: 1)")
        ->type_name("N")
        ->check(CLI::Range(0u, 10u).description(""));
    command.footer(VerifyHelp);
}

}  // namespace

std::optional<Options> ParseCommandLine(int argc, char const* const* argv, std::ostream& out,
                                        std::ostream& err, int& exitCode) {
    Options options;
    CLI::App app("Runs the BACnet blocks of a project on a PC and shows their variables.",
                 "dorvel-workbench");
    app.set_version_flag("--version", "dorvel-workbench " WORKBENCH_VERSION);
    app.require_subcommand(1);
    app.footer(ProgramHelp);

    CLI::App* const run = app.add_subcommand("run", "Runs a project");
    AddProjectOptions(*run, options);
    AddRunOptions(*run, options);
    CLI::App* const check = app.add_subcommand("check", "Checks projects without a device");
    AddCheckOptions(*check, options);
    CLI::App* const verify = app.add_subcommand("verify", "Compares the driver's values with the devices");
    AddProjectOptions(*verify, options);
    AddVerifyOptions(*verify, options.verify);
    CLI::App* const names = app.add_subcommand("names", "Lists the names of object types and properties");

    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const& end) {
        exitCode = app.exit(end, out, err) == 0 ? tools::WorkbenchExit::Ok : tools::WorkbenchExit::Usage;
        return std::nullopt;
    }
    options.what = names->parsed()    ? Command::Names
                   : check->parsed()  ? Command::Check
                   : verify->parsed() ? Command::Verify
                                      : Command::Run;
    return options;
}

}  // namespace workbench
