#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace workbench {

// The page of the command run.
struct PageOptions {
    bool isOn = false;
    std::string address;  // as ReadHttpAddress reads it; empty: loopback and a free port
    bool hasWrites = false;
    std::string tokenFile;  // empty: a random token
    std::vector<std::string> hosts;
};

// --page, --page-writes, --page-token-file, --page-host, for a command that has the argument PROJECT. The
// options must outlive the command.
void AddPageOptions(CLI::App& command, PageOptions& options);

}  // namespace workbench
