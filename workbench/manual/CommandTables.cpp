#include "CommandTables.h"

#include <CLI/CLI.hpp>

#include "CommandLine.h"
#include "CommonOptions.h"

namespace workbench {

namespace {

tools::ManualOption OptionOf(CLI::Option& option) {
    tools::ManualOption manual;
    for (std::string const& name : option.get_snames()) {
        manual.names.push_back("-" + name);
    }
    for (std::string const& name : option.get_lnames()) {
        manual.names.push_back("--" + name);
    }
    manual.text = option.get_description();
    for (CLI::Option const* const needed : option.get_needs()) {
        manual.text += " (needs " + needed->get_name() + ")";
    }
    if (option.get_expected_max() > 0) {
        manual.value = option.get_type_name();
        manual.isRepeated = option.get_expected_max() > 1;
        manual.takesMore = manual.isRepeated && option.get_allow_extra_args();
        manual.isValueOptional = option.get_expected_min() == 0;
        WordsKind kind = WordsKind::One;
        manual.choices = WordsOf(option, kind);
        manual.isList = kind == WordsKind::List;
    }
    return manual;
}

// A type in brackets has them because its value is optional.
void TakeBrackets(tools::ManualOption& manual) {
    std::string& value = manual.value;
    if (manual.isValueOptional && value.size() > 2 && value.front() == '[' && value.back() == ']') {
        value = value.substr(1, value.size() - 2);
    }
}

void TakeOptions(CLI::App& app, tools::ManualCommand& command) {
    for (CLI::Option* const option : app.get_options()) {
        if (option->get_positional()) {
            command.arguments.push_back({option->get_single_name(), option->get_description(),
                                         option->get_required(), option->get_expected_max() > 1});
        } else if (!option->get_group().empty()) {
            command.options.push_back(OptionOf(*option));
            TakeBrackets(command.options.back());
        }
    }
    command.name = app.get_name();
    command.brief = app.get_description();
    command.notes = app.get_footer();
}

}  // namespace

tools::ManualProgram ManualOfCommands() {
    CLI::App app;
    CommandBody chosen;
    DefineProgram(app, chosen);
    tools::ManualProgram program;
    program.related = {"bacnet-simulator(1)", "dorvel-project(5)"};
    TakeOptions(app, program);
    for (CLI::App* const command :
         app.get_subcommands([](CLI::App* any) { return !any->get_name().empty(); })) {
        program.commands.emplace_back();
        TakeOptions(*command, program.commands.back());
    }
    return program;
}

}  // namespace workbench
