#include "CommonOptions.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <system_error>
#include <vector>

#include "AddIn.h"
#include "NumberText.h"
#include "Printable.h"

namespace workbench {

double NumberFromZero(std::string const& text, char const* option, char const* what, double most) {
    double number = 0;
    auto const [end, mistake] = std::from_chars(text.data(), text.data() + text.size(), number);
    bool const isNumber = mistake == std::errc() && end == text.data() + text.size();
    if (!isNumber || !std::isfinite(number) || number < 0 || (most > 0 && number > most)) {
        std::string const upTo = most > 0 ? " to " + tools::NumberText(most) : "";
        throw CLI::ValidationError(option, tools::Quoted(text) + " is not " + what +
                                               "; allowed is a number from 0" + upTo + ", such as 0.5");
    }
    return number;
}

std::pair<std::string, std::string> Assignment(std::string const& text, char const* option) {
    std::size_t const equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw CLI::ValidationError(option, "\"" + text + "\" is not of the form NAME=VALUE");
    }
    return {text.substr(0, equals), text.substr(equals + 1)};
}

void AddDefineOption(CLI::App& command, Params& params) {
    command
        .add_option_function<std::vector<std::string>>(
            "-D,--define",
            [&params](std::vector<std::string> const& texts) {
                for (std::string const& text : texts) {
                    params.insert(Assignment(text, "--define"));
                }
            },
            "Sets Param.NAME for the project; may be repeated")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
}

std::string AddInOf(ProjectOptions const& options) {
    return options.addIn.empty() ? DefaultAddIn() : options.addIn;
}

void AddProjectOptions(CLI::App& command, ProjectOptions& options) {
    command.add_option("PROJECT", options.project, "The project, a Lua file")->required();
    command
        .add_option("--addin", options.addIn, "The add-in (default: dorvel_bacnet.so beside this program)")
        ->type_name("FILE.so");
    AddDefineOption(command, options.params);
}

void AddFormatOption(CLI::App& command, bool& isJson) {
    command
        .add_option_function<std::string>(
            "--format", [&isJson](std::string const& name) { isJson = name == "json"; },
            "text or json (default: text)")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"text", "json"}).description(""));
}

void AddOutputOption(CLI::App& command, OutputFormat& format, bool isOfRun) {
    static std::map<std::string, OutputFormat> const formats = {
        {"auto", OutputFormat::Auto}, {"table", OutputFormat::Table}, {"lines", OutputFormat::Lines},
        {"json", OutputFormat::Json}, {"csv", OutputFormat::Csv},     {"none", OutputFormat::None}};
    std::vector<std::string> names = {"auto", "table", "lines", "json"};
    if (isOfRun) {
        names.insert(names.end(), {"csv", "none"});
    }
    command
        .add_option_function<std::string>(
            "--format", [&format](std::string const& name) { format = formats.at(name); },
            std::string("auto, table, lines") + (isOfRun ? ", json, csv or none" : " or json") +
                " (default: auto, a table in a terminal and lines elsewhere)")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(names).description(""));
}

namespace {

// The text between `begin` and `end`, split at the separator.
std::vector<std::string> WordsBetween(std::string const& text, std::string const& begin,
                                      std::string const& end, char separator) {
    std::size_t const from = text.rfind(begin);
    std::size_t const to = text.rfind(end);
    if (from == std::string::npos || to == std::string::npos || to < from + begin.size()) {
        return {};
    }
    return CLI::detail::split(text.substr(from + begin.size(), to - from - begin.size()), separator);
}

// Null beyond the last one.
CLI::Validator* ValidatorAt(CLI::Option& option, int index) try {
    return option.get_validator(index);
} catch (CLI::OptionNotFound const&) {
    return nullptr;
}

constexpr char ListMark[] = "list <";
constexpr char WordMark[] = "word <";

}  // namespace

void NameWords(CLI::Option& option, std::vector<std::string> const& words, WordsKind kind) {
    std::string const mark = kind == WordsKind::List ? ListMark : WordMark;
    option.check(CLI::Validator("").name(mark + CLI::detail::join(words, ",") + ">"));
}

std::vector<std::string> WordsOf(CLI::Option& option, WordsKind& kind) {
    kind = WordsKind::One;
    for (int i = 0; CLI::Validator const* const validator = ValidatorAt(option, i); ++i) {
        std::string const& name = validator->get_name();
        kind = name.rfind(ListMark, 0) == 0 ? WordsKind::List : WordsKind::One;
        std::vector<std::string> words = WordsBetween(name, " <", ">", ',');
        if (words.empty()) {
            // A check with CLI::IsMember names its words when it refuses a value.
            words = WordsBetween((*validator)(std::string("\x01")), " not in {", "}", ',');
        }
        if (!words.empty()) {
            return words;
        }
    }
    return {};
}

void AddWaitOptions(CLI::App& command, unsigned& timeout, unsigned& retries, std::string const& what) {
    command
        .add_option("--timeout", timeout,
                    "How long a device may take to answer" + what +
                        ": 10 to 60000 (default: " + std::to_string(timeout) + ")")
        ->type_name("MS")
        ->check(CLI::Range(10u, 60000u).description(""));
    command
        .add_option(
            "--retries", retries,
            "Repetitions of a request without an answer: 0 to 10 (default: " + std::to_string(retries) + ")")
        ->type_name("N")
        ->check(CLI::Range(0u, 10u).description(""));
}

}  // namespace workbench
