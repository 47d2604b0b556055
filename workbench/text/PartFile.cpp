#include "PartFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>

namespace workbench {

namespace {

constexpr mode_t NewFile = 0666;  // less the umask

bool IsThere(std::string const& path) {
    struct stat found {};
    return lstat(path.c_str(), &found) == 0;
}

}  // namespace

PartFile::PartFile(std::string const& targetPath)
    : target(targetPath),
      path(target + ".part" + std::to_string(getpid())),
      handle(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, NewFile)) {}

PartFile::~PartFile() {
    if (handle >= 0) {
        close(handle);
        unlink(path.c_str());
    }
}

bool PartFile::Write(std::string const& content) const {
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

// A link fails where a file is, which a rename replaces. Not every file system has links.
bool PartFile::TakePlace(bool mayReplace) {
    if (!mayReplace && link(path.c_str(), target.c_str()) == 0) {
        return true;
    }
    if (!mayReplace && (errno == EEXIST || IsThere(target))) {
        errno = EEXIST;
        return false;
    }
    return std::rename(path.c_str(), target.c_str()) == 0;
}

}  // namespace workbench
