#include "OutputFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "Printable.h"

namespace workbench {

namespace {

namespace fs = std::filesystem;

constexpr mode_t NewFile = 0666;  // less the umask

[[noreturn]] void RefuseExisting(std::string const& path) {
    throw OutputMistake(tools::Printable(path) + ": the file is there already; --force replaces it");
}

[[noreturn]] void Fail(std::string const& path, int error) {
    throw std::runtime_error(tools::Printable(path) + ": cannot be written: " + std::strerror(error));
}

// The file beside the place of another one, until it takes that place.
class PartFile {
public:
    explicit PartFile(std::string const& target)
        : path(target + ".part" + std::to_string(getpid())),
          handle(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, NewFile)) {}
    PartFile(PartFile const&) = delete;
    PartFile& operator=(PartFile const&) = delete;
    ~PartFile() {
        if (handle >= 0) {
            close(handle);
            unlink(path.c_str());
        }
    }

    bool Write(std::string const& content) const {
        std::size_t done = 0;
        while (handle >= 0 && done < content.size()) {
            ssize_t const written = write(handle, content.data() + done, content.size() - done);
            if (written < 0 && errno != EINTR) {
                return false;
            }
            done += written > 0 ? static_cast<std::size_t>(written) : 0;
        }
        return handle >= 0;
    }

    std::string const& Path() const { return path; }

private:
    std::string const path;
    int const handle;
};

// A link fails where a file is, which a rename replaces. Not every file system has links.
bool TakePlace(std::string const& part, std::string const& path, bool mayReplace) {
    if (!mayReplace && link(part.c_str(), path.c_str()) == 0) {
        return true;
    }
    if (!mayReplace && (errno == EEXIST || fs::exists(path))) {
        RefuseExisting(path);
    }
    return std::rename(part.c_str(), path.c_str()) == 0;
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
    PartFile const part(path);
    if (!part.Write(content) || !TakePlace(part.Path(), path, mayReplace)) {
        Fail(path, errno);
    }
}

}  // namespace workbench
