#pragma once

#include <stdexcept>
#include <string>

namespace workbench {

// The add-in cannot be loaded or lacks what a project needs. The program ends with exit code 3.
class AddInError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Loads a driver's shared library as the runtime does and calls its InitAddin. It stays loaded until the
// process ends, since its registrations point into it. Throws AddInError.
void LoadAddIn(std::string const& file);

// "dorvel_bacnet.so" for the running program: in its folder, as in a build, or where it is installed.
std::string DefaultAddIn();

// The same for a program in a folder, whose name is empty or ends with a slash: the file in this folder, or
// in "../lib/dorvel-bacnet" if only that exists.
std::string AddInBeside(std::string const& folder);

}  // namespace workbench
