#pragma once

#include <string>
#include <vector>

namespace tools {

// What a program says of its command line in --help, for its manual pages and its completion in shells.

struct ManualOption {
    std::vector<std::string> names;  // with their dashes: "-D", "--define"
    std::string value;               // what follows it: "NAME=VALUE"; empty: nothing
    std::string text;
    // All values, or the words among them, if they can be listed.
    std::vector<std::string> choices;
    bool isList = false;           // takes several of the choices with commas between them
    bool isValueOptional = false;  // can stand without its value
    bool isRepeated = false;
    bool takesMore = false;  // takes further values after the first one
};

struct ManualArgument {
    std::string name;  // "PROJECT"
    std::string text;
    bool isRequired = false;
    bool isRepeated = false;
};

struct ManualCommand {
    std::string name;
    std::string brief;  // one sentence
    std::vector<ManualArgument> arguments;
    std::vector<ManualOption> options;
    std::string notes;  // below the options in --help: see HelpText.h
};

struct ManualProgram : ManualCommand {
    std::vector<ManualCommand> commands;
    std::vector<std::string> related;  // other pages: "bacnet-simulator(1)"
};

// Of what the pages are.
struct ManualEdition {
    std::string product;  // "dorvel_bacnet 0.1.0"
    std::string date;     // "2026-11-23"
};

}  // namespace tools
