#pragma once

#include <string>

namespace workbench {

// A file that is written complete or not at all: beside its place first, and then in place of what is there.
// A device or a pipe is written directly.
class ReportFile {
public:
    // Throws std::runtime_error at once if the file cannot be written there, or if it is the project's own
    // file.
    ReportFile(std::string const& reportPath, std::string const& projectPath);
    ReportFile(ReportFile const&) = delete;
    ReportFile& operator=(ReportFile const&) = delete;
    // Leaves nothing behind of a file that was not written.
    ~ReportFile();

    // Throws std::runtime_error if it fails; what was there before then stays.
    void Write(std::string const& content);

private:
    std::string const shown;  // as the user names it
    std::string path;         // without links
    std::string partPath;     // where it is written; the path itself of a device
    int handle = -1;
};

}  // namespace workbench
