#include "FileText.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <fstream>

namespace tools {

std::string FileText(std::string const& path, std::size_t megabytes) {
    std::size_t const largest = megabytes << 20;
    std::ifstream file(path, std::ios::binary);
    std::string text;
    if (file) {
        text.resize(largest + 1);
        file.read(text.data(), static_cast<std::streamsize>(text.size()));
        text.resize(static_cast<std::size_t>(file.gcount()));
    }
    if (!file.is_open() || file.bad()) {
        throw UnreadableFile(path + ": cannot be read: " + std::strerror(errno));
    }
    if (text.size() > largest) {
        throw UnreadableFile(path + ": has more than " + std::to_string(megabytes) + " MB");
    }
    return text;
}

bool IsReadableByOthers(std::string const& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && (status.st_mode & (S_IRGRP | S_IROTH)) != 0;
}

}  // namespace tools
