#include "ReportFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <stdexcept>

namespace workbench {

namespace {

namespace fs = std::filesystem;

constexpr mode_t NewFile = 0666;  // less the umask

[[noreturn]] void Refuse(std::string const& file, std::string const& reason) {
    throw std::runtime_error("--report " + file + ": " + reason);
}

[[noreturn]] void RefuseBySystem(std::string const& file, std::string const& what, int error) {
    Refuse(file, what + " cannot be written: " + std::strerror(error));
}

std::string WithoutLinks(std::string const& file) {
    std::error_code error;
    if (fs::is_other(fs::status(file, error))) {
        return file;
    }
    fs::path const path = fs::weakly_canonical(file, error);
    return error ? file : path.string();
}

std::string FolderOf(std::string const& path) {
    std::string const folder = fs::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

bool WriteAll(int handle, std::string const& content) {
    std::size_t done = 0;
    while (done < content.size()) {
        ssize_t const written = write(handle, content.data() + done, content.size() - done);
        if (written < 0 && errno != EINTR) {
            return false;
        }
        done += written > 0 ? static_cast<std::size_t>(written) : 0;
    }
    return true;
}

}  // namespace

ReportFile::ReportFile(std::string const& reportPath, std::string const& projectPath)
    : shown(reportPath), path(WithoutLinks(reportPath)), partPath(path) {
    std::error_code error;
    fs::file_status const status = fs::status(path, error);
    if (fs::is_directory(status)) {
        Refuse(shown, "this is a folder; name a file, such as " + (fs::path(shown) / "report.html").string());
    }
    if (fs::equivalent(path, projectPath, error)) {
        Refuse(shown, "this is the project itself; name another file");
    }
    bool const isThere = fs::exists(status);
    if (isThere && access(path.c_str(), W_OK) != 0) {
        RefuseBySystem(shown, "the file", errno);
    }
    if (isThere && !fs::is_regular_file(status)) {
        handle = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    } else {
        partPath = path + ".part" + std::to_string(getpid());
        handle = open(partPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, NewFile);
    }
    if (handle < 0) {
        RefuseBySystem(shown, partPath == path ? "it" : "the folder " + FolderOf(path), errno);
    }
    struct stat before {};
    if (isThere && partPath != path && stat(path.c_str(), &before) == 0) {
        fchmod(handle, before.st_mode & 07777);
    }
}

ReportFile::~ReportFile() {
    if (handle >= 0) {
        close(handle);
        if (partPath != path) {
            unlink(partPath.c_str());
        }
    }
}

void ReportFile::Write(std::string const& content) {
    if (!WriteAll(handle, content)) {
        RefuseBySystem(shown, "the page", errno);
    }
    if (partPath != path && std::rename(partPath.c_str(), path.c_str()) != 0) {
        RefuseBySystem(shown, "the page", errno);
    }
    close(handle);
    handle = -1;
}

}  // namespace workbench
