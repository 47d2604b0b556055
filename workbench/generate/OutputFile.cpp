#include "OutputFile.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "PartFile.h"
#include "Printable.h"

namespace workbench {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void RefuseExisting(std::string const& path) {
    throw OutputMistake(tools::Printable(path) + ": the file is there already; --force replaces it");
}

[[noreturn]] void Fail(std::string const& path, int error) {
    throw std::runtime_error(tools::Printable(path) + ": cannot be written: " + std::strerror(error));
}

}  // namespace

void ExpectWritable(std::string const& path, bool mayReplace) {
    std::error_code error;
    if (fs::is_directory(path, error)) {
        throw OutputMistake(tools::Printable(path) + ": this is a folder; name a file");
    }
    if (!mayReplace && fs::exists(fs::symlink_status(path, error))) {
        RefuseExisting(path);
    }
    fs::path const folder = fs::path(path).parent_path();
    if (!folder.empty() && !fs::is_directory(folder, error)) {
        throw OutputMistake(tools::Printable(path) + ": the folder " + tools::Quoted(folder.string()) +
                            " does not exist");
    }
    if (access(folder.empty() ? "." : folder.c_str(), W_OK) != 0) {
        Fail(path, errno);
    }
}

void WriteOutput(std::string const& path, std::string const& content, bool mayReplace) {
    PartFile part(path);
    if (part.Write(content) && part.TakePlace(mayReplace)) {
        return;
    }
    if (!mayReplace && errno == EEXIST) {
        RefuseExisting(path);
    }
    Fail(path, errno);
}

}  // namespace workbench
