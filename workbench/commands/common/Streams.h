#pragma once

#include <iosfwd>

namespace workbench {

// The streams of the process, as a command needs them.
struct Streams {
    std::ostream& out;
    std::ostream& err;
    bool outIsTerminal;  // out is standard output and a terminal
    bool errIsTerminal;  // err is standard error and a terminal
    int in = -1;         // the file descriptor of standard input, -1 for none
};

}  // namespace workbench
