#include "CommonOptions.h"

#include <CLI/CLI.hpp>
#include <cstddef>
#include <vector>

#include "AddIn.h"

namespace workbench {

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
        ->type_name("FILE");
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

}  // namespace workbench
