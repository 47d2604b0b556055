#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace workbench {

// Options that several commands have. The variables must outlive the command.

using Params = std::map<std::string, std::string>;

struct ProjectOptions {
    std::string project;
    std::string addIn;  // empty: the one beside the program
    Params params;
};

// The add-in's file: the one that is given, or the default one.
std::string AddInOf(ProjectOptions const& options);

void AddProjectOptions(CLI::App& command, ProjectOptions& options);
// --define NAME=VALUE.
void AddDefineOption(CLI::App& command, Params& params);
// --format text|json.
void AddFormatOption(CLI::App& command, bool& isJson);

enum class OutputFormat { Auto, Table, Lines, Json, Csv, None };

// --format auto|table|lines|json, and csv and none for a run.
void AddOutputOption(CLI::App& command, OutputFormat& format, bool isOfRun = false);

// --timeout in milliseconds and --retries, for the requests by the standard. The values that they have are
// the defaults in the help, which says of `timeout` what a device may take so long for.
void AddWaitOptions(CLI::App& command, unsigned& timeout, unsigned& retries, std::string const& what);

// Names the words that a value can have, for the manual and for completion, where no check with
// CLI::IsMember does. A list takes several of them with commas between them.
enum class WordsKind { One, List };
void NameWords(CLI::Option& option, std::vector<std::string> const& words, WordsKind kind);
// The words of an option, with those of a check with CLI::IsMember; none if its values cannot be listed.
std::vector<std::string> WordsOf(CLI::Option& option, WordsKind& kind);

// Reads a number from 0 to `most`, or without an end if `most` is 0. Throws an exception that becomes a
// mistake on the command line for anything else; it says that the text is not `what`, "a width".
double NumberFromZero(std::string const& text, char const* option, char const* what, double most = 0);

// Splits "NAME=VALUE". Throws an exception that becomes a mistake on the command line if there is no name.
std::pair<std::string, std::string> Assignment(std::string const& text, char const* option);

}  // namespace workbench
