#pragma once

#include <string>
#include <vector>

#include "Manual.h"

namespace tools {

// What a shell offers for a value or an argument.
struct ValueHint {
    enum class Kind {
        None,
        Words,       // the choices of the option
        Files,       // with the endings, or any
        Folders,     //
        Interfaces,  // of this machine's networks
    };

    Kind kind = Kind::None;
    std::vector<std::string> endings;  // without the dot
};

// By the name of the value: "FILE" and "TABLE" are files, "FOLDER" a folder, "INTERFACE" an interface;
// "PROJECT", "DEVICE-FILE" and words such as "FILE_EDE.csv" have the ending of the files. The text of an
// argument, and of an option with the value "SOURCE", can name more endings in that form.
ValueHint HintOf(std::string const& value, std::string const& text);
ValueHint HintOf(ManualOption const& option);
ValueHint HintOf(ManualArgument const& argument);

}  // namespace tools
