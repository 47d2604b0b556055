#include "RecordLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "Printable.h"
#include "RecordSchema.h"

namespace workbench {

namespace {

constexpr mode_t NewFile = 0666;  // less the umask

int Opened(std::string const& path) {
    CheckRecordFolder(path);
    return open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, NewFile);
}

}  // namespace

FileIdentity::FileIdentity(std::string const& path) {
    struct stat found {};
    if (stat(path.c_str(), &found) == 0) {
        device = found.st_dev;
        node = found.st_ino;
    }
}

FileIdentity::FileIdentity(int handle) {
    struct stat found {};
    if (fstat(handle, &found) == 0) {
        device = found.st_dev;
        node = found.st_ino;
    }
}

RecordLock::RecordLock(std::string const& recordPath) : path(recordPath), handle(Opened(path)) {
    if (handle < 0) {
        throw RecordMistake(tools::Printable(path) +
                            ": the file cannot be opened for writing: " + std::strerror(errno));
    }
    if (flock(handle, LOCK_EX | LOCK_NB) != 0) {
        int const reason = errno;
        close(handle);
        throw RecordMistake(tools::Printable(path) +
                            (reason == EWOULDBLOCK
                                 ? ": another program records into this file; end it, or name another file"
                                 : std::string(": the file cannot be locked: ") + std::strerror(reason)));
    }
}

RecordLock::~RecordLock() {
    close(handle);
}

bool RecordLock::IsInPlace() const {
    return FileIdentity(path) == FileIdentity(handle);
}

}  // namespace workbench
