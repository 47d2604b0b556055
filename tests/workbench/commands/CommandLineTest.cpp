#include "CommandLine.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <CLI/CLI.hpp>

#include <filesystem>
#include <sstream>

#include "CheckCommand.h"
#include "ExitCode.h"
#include "RunCommand.h"
#include "VerifyCommand.h"
#include "Workbench.h"
#include "dorvelshare/HostEnvironment.h"

using namespace workbench;

namespace {

class CommandLine : public testing::Test {
protected:
    bool HasCommand(std::vector<char const*> arguments) {
        arguments.insert(arguments.begin(), "dorvel-workbench");
        out.str("");
        err.str("");
        exitCode = -1;
        return ReadCommandLine(static_cast<int>(arguments.size()), arguments.data(), out, err, exitCode) !=
               nullptr;
    }

    // The options of one command, from the words that follow its name.
    template <class CommandOptions>
    CommandOptions Parse(void (*define)(CLI::App&, CommandOptions&), std::vector<std::string> words) {
        CommandOptions options;
        CLI::App command;
        define(command, options);
        std::reverse(words.begin(), words.end());
        EXPECT_NO_THROW(command.parse(words));
        return options;
    }

    void ExpectMistake(std::vector<char const*> const& arguments, std::string const& words) {
        EXPECT_FALSE(HasCommand(arguments));
        EXPECT_EQ(exitCode, tools::WorkbenchExit::Usage);
        EXPECT_NE(err.str().find(words), std::string::npos) << err.str();
        EXPECT_EQ(out.str(), "");
    }

    std::ostringstream out;
    std::ostringstream err;
    int exitCode = -1;
};

TEST_F(CommandLine, AProjectIsTheOnlyRequiredArgument) {
    auto const options = Parse(DefineRun, {"plant.lua"});
    EXPECT_EQ(options.project, "plant.lua");
    EXPECT_EQ(options.addIn, "");
    EXPECT_EQ(options.format, OutputFormat::Auto);
    EXPECT_EQ(options.cycles, 0u);
    EXPECT_FALSE(options.trace);
    EXPECT_TRUE(options.failOn.empty());
    EXPECT_FALSE(options.standby);
    EXPECT_EQ(options.logFormat, LogFormat::Text);
    EXPECT_FALSE(options.summary);
}

TEST_F(CommandLine, ADeadBandIsForChangesInFormatsForPrograms) {
    EXPECT_FALSE(Parse(DefineRun, {"plant.lua"}).changesBeyond);
    EXPECT_EQ(Parse(DefineRun, {"plant.lua", "--changes-only"}).changesBeyond, 0.0);
    EXPECT_EQ(Parse(DefineRun, {"plant.lua", "--dead-band", "0.5"}).changesBeyond, 0.5);
    EXPECT_EQ(Parse(DefineRun, {"plant.lua", "--dead-band", "0.5", "--changes-only"}).changesBeyond, 0.5);
    EXPECT_EQ(Parse(DefineRun, {"plant.lua", "--format", "csv"}).format, OutputFormat::Csv);
    for (char const* const width : {"-1", "nan", "inf", "1e999", "0.5 K", "", "0,5"}) {
        ExpectMistake(
            {"run", "plant.lua", "--dead-band", width},
            "--dead-band: \"" + std::string(width) + "\" is not a width; allowed is a number from 0");
    }
    ExpectMistake({"run", "plant.lua", "--format", "table", "--changes-only"}, "not for the table");
    ExpectMistake({"run", "plant.lua", "--dead-band", "1", "--format", "table"}, "not for the table");
    ExpectMistake({"run", "plant.lua", "--changes-only", "--format", "none"}, "not for --format none");
    ExpectMistake({"browse", "10.0.0.1", "--format", "csv"}, "--format");
}

TEST_F(CommandLine, AProjectAfterPageIsNotItsAddress) {
    EXPECT_FALSE(Parse(DefineRun, {"plant.lua"}).page.isOn);
    using Words = std::vector<std::string>;
    for (Words const& words : {Words{"plant.lua", "--page"}, Words{"--page", "plant.lua"},
                               Words{"--cycles", "3", "--page", "plant.lua"}}) {
        auto const options = Parse(DefineRun, words);
        EXPECT_EQ(options.project, "plant.lua");
        EXPECT_TRUE(options.page.isOn);
        EXPECT_EQ(options.page.address, "");
    }
    for (Words const& words :
         {Words{"plant.lua", "--page", "[::1]:80"}, Words{"--page", "[::1]:80", "plant.lua"}}) {
        auto const options = Parse(DefineRun, words);
        EXPECT_EQ(options.project, "plant.lua");
        EXPECT_EQ(options.page.address, "[::1]:80");
    }
    ExpectMistake({"run", "plant.lua", "--page", "host:80"},
                  "--page: \"host:80\" is not an address to listen at");
    ExpectMistake({"run", "--page", "plant.lua", "other.lua"}, "--page: \"plant.lua\" is not an address");
    ExpectMistake({"run", "--page"}, "PROJECT");
}

TEST_F(CommandLine, MetricsHaveAnAddress) {
    EXPECT_FALSE(Parse(DefineRun, {"plant.lua"}).metrics.isOn);
    auto const options = Parse(DefineRun, {"plant.lua", "--metrics", "[::1]:9100"});
    EXPECT_TRUE(options.metrics.isOn);
    EXPECT_EQ(options.metrics.address, "[::1]:9100");
    ExpectMistake({"run", "plant.lua", "--metrics", "host:80"},
                  "--metrics: \"host:80\" is not an address to listen at");
    ExpectMistake({"run", "plant.lua", "--metrics"}, "--metrics");
}

TEST_F(CommandLine, APrefixOfTopicsIsNamedOnceInAMistake) {
    ExpectMistake({"run", "plant.lua", "--mqtt", "mqtt://127.0.0.1", "--mqtt-prefix", "a/"},
                  "--mqtt-prefix: \"a/\" cannot begin topics");
}

TEST_F(CommandLine, VerifyHasItsOptionsAndTheirDefaults) {
    auto options = Parse(DefineVerify, {"plant.lua"});
    EXPECT_EQ(options.project, "plant.lua");
    EXPECT_FALSE(options.isJson);
    EXPECT_EQ(options.report + options.title, "");
    EXPECT_EQ(options.timeout, 3000u);
    EXPECT_EQ(options.retries, 1u);
    EXPECT_EQ(options.rounds, 1u);
    options = Parse(DefineVerify,
                    {"plant.lua", "--format", "json", "--report", "r.html", "--title", "North", "--timeout",
                     "500", "--retries", "0", "--rounds", "20", "-D", "a=b", "--addin", "a.so"});
    EXPECT_TRUE(options.isJson);
    EXPECT_EQ(options.report, "r.html");
    EXPECT_EQ(options.title, "North");
    EXPECT_EQ(options.timeout, 500u);
    EXPECT_EQ(options.retries, 0u);
    EXPECT_EQ(options.rounds, 20u);
    EXPECT_EQ(options.params, (std::map<std::string, std::string>{{"a", "b"}}));
}

TEST_F(CommandLine, VerifyAllowsNoOtherFormatsAndLimits) {
    ExpectMistake({"verify"}, "PROJECT");
    ExpectMistake({"verify", "p.lua", "--format", "table"}, "table");
    ExpectMistake({"verify", "p.lua", "--timeout", "9"}, "9");
    ExpectMistake({"verify", "p.lua", "--retries", "11"}, "11");
    ExpectMistake({"verify", "p.lua", "--rounds", "0"}, "0");
    ExpectMistake({"verify", "p.lua", "--set", "a=b"}, "--set");
}

TEST_F(CommandLine, EveryOptionIsRead) {
    auto const options = Parse(DefineRun, {"plant.lua", "--addin", "a.so", "--define", "ahu=1.2.3.4:5", "-D",
                                           "x=a=b", "--define", "e=", "--format", "json", "--cycles", "10",
                                           "--pcap", "p.pcap", "--trace", "--fail-on-fault", "--summary"});
    EXPECT_EQ(options.addIn, "a.so");
    EXPECT_EQ(options.params,
              (std::map<std::string, std::string>{{"ahu", "1.2.3.4:5"}, {"x", "a=b"}, {"e", ""}}));
    EXPECT_EQ(options.format, OutputFormat::Json);
    EXPECT_EQ(options.cycles, 10u);
    EXPECT_EQ(options.captureFile, "p.pcap");
    EXPECT_TRUE(options.trace);
    EXPECT_EQ(options.failOn, (std::set<Trouble>{Trouble::Fault}));
    EXPECT_EQ(options.summary, true);
}

TEST_F(CommandLine, ConditionsOfFailureAreAListWithCommas) {
    auto const options =
        Parse(DefineRun, {"--fail-on", "refused,suspect", "plant.lua", "--fail-on", "overrun",
                          "--fail-on-fault", "--standby", "--log-format", "json"});
    EXPECT_EQ(options.failOn,
              (std::set<Trouble>{Trouble::Fault, Trouble::Refused, Trouble::Suspect, Trouble::Overrun}));
    EXPECT_EQ(options.project, "plant.lua");
    EXPECT_TRUE(options.standby);
    EXPECT_EQ(options.logFormat, LogFormat::Json);
    ExpectMistake({"run", "a.lua", "--fail-on", "fault,rain"},
                  "\"rain\" is not a condition; allowed are fault, ");
    ExpectMistake({"run", "a.lua", "--fail-on", "fault,"}, "\"\" is not a condition");
    ExpectMistake({"run", "a.lua", "--fail-on", ""}, "\"\" is not a condition");
    ExpectMistake({"run", "a.lua", "--log-format", "xml"}, "xml");
}

TEST_F(CommandLine, ValuesToSetKeepTheirOrder) {
    auto const options = Parse(DefineRun, {"--set", "B.y=2", "plant.lua", "--set", "A.x = a=b"});
    EXPECT_EQ(options.sets, (std::vector<std::string>{"B.y=2", "A.x = a=b"}));
    ExpectMistake({"run", "a.lua", "--set", "A.x"}, "\"A.x\" is not of the form NAME=VALUE");
}

TEST_F(CommandLine, OptionsMayPrecedeTheProject) {
    auto const options = Parse(DefineRun, {"--define", "a=1", "plant.lua", "--no-summary"});
    EXPECT_EQ(options.project, "plant.lua");
    EXPECT_EQ(options.params.size(), 1u);
    EXPECT_EQ(options.summary, false);
}

TEST_F(CommandLine, CheckAndNamesAreCommands) {
    auto const check =
        Parse(DefineCheck, {"plant.lua", "rooms.lua", "--strict", "--format", "json", "-D", "a=1"});
    EXPECT_EQ(check.projects, (std::vector<std::string>{"plant.lua", "rooms.lua"}));
    EXPECT_TRUE(check.strict);
    EXPECT_TRUE(check.isJson);
    EXPECT_EQ(check.params.at("a"), "1");
    EXPECT_TRUE(HasCommand({"names"}));
    EXPECT_TRUE(HasCommand({"check", "plant.lua"}));
}

TEST_F(CommandLine, AMistakeIsReportedWithItsArgument) {
    ExpectMistake({}, "A subcommand is required");
    ExpectMistake({"plant.lua"}, "A subcommand is required");
    ExpectMistake({"run"}, "PROJECT");
    ExpectMistake({"run", "a.lua", "b.lua"}, "b.lua");
    ExpectMistake({"run", "a.lua", "--colour"}, "--colour");
    ExpectMistake({"run", "a.lua", "--format", "xml"}, "--format: xml not in {");
    ExpectMistake({"run", "a.lua", "--cycles", "0"}, "--cycles");
    ExpectMistake({"run", "a.lua", "--cycles", "-1"}, "--cycles");
    ExpectMistake({"run", "a.lua", "--cycles", "many"}, "--cycles");
    ExpectMistake({"run", "a.lua", "--define", "ahu"}, "\"ahu\" is not of the form NAME=VALUE");
    ExpectMistake({"run", "a.lua", "--define", "=5"}, "\"=5\" is not of the form NAME=VALUE");
    ExpectMistake({"run", "a.lua", "--define"}, "--define");
    ExpectMistake({"check", "a.lua", "--cycles", "5"}, "--cycles");
    ExpectMistake({"check", "a.lua", "--addin", "x.so"}, "--addin");
    ExpectMistake({"check", "a.lua", "--format", "table"}, "--format");
    ExpectMistake({"check"}, "PROJECT");
}

TEST_F(CommandLine, HelpHasExamplesAndExitCodes) {
    EXPECT_FALSE(HasCommand({"--help"}));
    EXPECT_EQ(exitCode, tools::WorkbenchExit::Ok);
    EXPECT_EQ(err.str(), "");
    for (char const* const words : {"run", "check", "names", "Examples:", "Exit codes:", "--fail-on-fault"}) {
        EXPECT_NE(out.str().find(words), std::string::npos) << words;
    }
    EXPECT_FALSE(HasCommand({"run", "--help"}));
    for (char const* const words : {"--pcap", "--define", "--trace", "--cycles", "--format", "--summary"}) {
        EXPECT_NE(out.str().find(words), std::string::npos) << words;
    }
}

TEST_F(CommandLine, TheVersionIsPrinted) {
    EXPECT_FALSE(HasCommand({"--version"}));
    EXPECT_EQ(exitCode, tools::WorkbenchExit::Ok);
    EXPECT_EQ(out.str().find("dorvel-workbench "), 0u);
}

TEST_F(CommandLine, NamesAreListed) {
    char const* const arguments[] = {"dorvel-workbench", "names"};
    EXPECT_EQ(Main(2, arguments, out, err), tools::WorkbenchExit::Ok);
    EXPECT_NE(out.str().find("     1       0  analog-input\n"), std::string::npos);
    EXPECT_NE(out.str().find("    37     178  count-before-change\n"), std::string::npos);
}

TEST_F(CommandLine, AMissingAddInIsReported) {
    char const* const arguments[] = {"dorvel-workbench", "run", "a.lua", "--addin", "no-such.so"};
    EXPECT_EQ(Main(5, arguments, out, err), tools::WorkbenchExit::AddIn);
    EXPECT_EQ(err.str().find("the add-in cannot be loaded: ./no-such.so: "), 0u) << err.str();
}

TEST_F(CommandLine, ALibraryThatIsNotAnAddInIsReported) {
    Dl_info hostLibrary = {};
    ASSERT_NE(dladdr(reinterpret_cast<void const*>(&dorvel::Environment), &hostLibrary), 0);
    std::string const path = std::filesystem::absolute(hostLibrary.dli_fname);
    char const* const arguments[] = {"dorvel-workbench", "run", "a.lua", "--addin", path.c_str()};
    EXPECT_EQ(Main(5, arguments, out, err), tools::WorkbenchExit::AddIn);
    EXPECT_EQ(err.str(), path + " is not an add-in: it exports no InitAddin\n");
}

}  // namespace
