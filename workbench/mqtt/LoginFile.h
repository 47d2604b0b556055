#pragma once

#include <string>

namespace workbench {

struct BrokerLogin {
    std::string user;  // empty: the broker is asked without a login
    std::string password;
    std::string warning;  // empty: only the owner can read the file
};

// Reads a user, the first line of the file, and a password, its second line. std::runtime_error with the
// path, the mistake and what to do; no message has anything of the content.
BrokerLogin ReadLoginFile(std::string const& path);

}  // namespace workbench
