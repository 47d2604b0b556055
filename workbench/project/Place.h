#pragma once

#include <string>

namespace workbench {

// A place in a script; line 0 when the line is unknown.
struct Place {
    std::string file;  // the path under which Lua has loaded it
    int line = 0;
};

// The file name as Lua shows it in messages: the last octets of a long path, after "...".
std::string ShortName(std::string const& path);

// "file:line: ", "file: " without a line, "" without a file; the file by its short name.
std::string Prefix(Place const& place);

}  // namespace workbench
