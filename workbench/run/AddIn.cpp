#include "AddIn.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cstddef>

namespace workbench {

namespace {

constexpr char AddInName[] = "dorvel_bacnet.so";
// From the folder of the installed program to that of the libraries (cmake/Install.cmake).
constexpr char InstalledFolder[] = "../lib/dorvel-bacnet/";

// dlopen searches the system's folders for a name without a slash, but a name means a file here.
std::string AsPath(std::string const& file) {
    return file.find('/') == std::string::npos ? "./" + file : file;
}

}  // namespace

void LoadAddIn(std::string const& file) {
    void* const library = dlopen(AsPath(file).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        throw AddInError(std::string("the add-in cannot be loaded: ") + dlerror());
    }
    auto const init = reinterpret_cast<int (*)()>(dlsym(library, "InitAddin"));
    if (!init) {
        throw AddInError(file + " is not an add-in: it exports no InitAddin");
    }
    int const result = init();
    if (result != 0) {
        throw AddInError("the add-in " + file + " cannot be started: InitAddin returned " +
                         std::to_string(result));
    }
}

std::string DefaultAddIn() {
    char path[4096];
    ssize_t const length = readlink("/proc/self/exe", path, sizeof path);
    std::string const program(path, length > 0 ? static_cast<std::size_t>(length) : 0);
    std::size_t const slash = program.rfind('/');
    return AddInBeside(slash == std::string::npos ? std::string() : program.substr(0, slash + 1));
}

std::string AddInBeside(std::string const& folder) {
    std::string const beside = folder + AddInName;
    std::string const installed = folder + InstalledFolder + AddInName;
    bool const isInstalled = access(beside.c_str(), F_OK) != 0 && access(installed.c_str(), F_OK) == 0;
    return isInstalled ? installed : beside;
}

}  // namespace workbench
