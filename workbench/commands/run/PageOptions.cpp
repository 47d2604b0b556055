#include "PageOptions.h"

#include <CLI/CLI.hpp>

#include "AllowedHosts.h"

namespace workbench {

namespace {

// In "--page plant.lua" the option takes what is meant as the project. Mistakes are those of the command
// line.
void TakeAddress(std::string const& text, CLI::Option& project, PageOptions& options) {
    options.isOn = true;
    try {
        ReadHttpAddress(text);
        options.address = text;
    } catch (std::runtime_error const& mistake) {
        if (project.count() > 0) {
            throw CLI::ValidationError("--page", mistake.what());
        }
        project.add_result(text);
        project.run_callback();
    }
}

}  // namespace

void AddPageOptions(CLI::App& command, PageOptions& options) {
    CLI::Option* const project = command.get_option("PROJECT");
    CLI::Option* const page =
        command
            .add_option_function<std::string>(
                "--page",
                [&options, project](std::string const& text) { TakeAddress(text, *project, options); },
                "Serves a page for browsers (default: 127.0.0.1 and a free port) and prints its link")
            ->type_name("[ADDRESS:PORT]")
            ->expected(0, 1);
    command.add_flag("--page-writes", options.hasWrites, "The page may set variables with Write = true")
        ->needs(page);
    command
        .add_option("--page-token-file", options.tokenFile,
                    "The token of the link is the first line of FILE (default: a random one for each run)")
        ->type_name("FILE")
        ->needs(page);
    command
        .add_option("--page-host", options.hosts,
                    "A name under which a proxy serves the page; may be repeated")
        ->type_name("NAME")
        ->allow_extra_args(false)
        ->needs(page);
}

}  // namespace workbench
