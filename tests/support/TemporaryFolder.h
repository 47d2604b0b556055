#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace test {

// A new folder, which is removed with its contents at the end. Tests run at the same time, and the same test
// may run twice at once.
class TemporaryFolder {
public:
    TemporaryFolder() : path(testing::TempDir() + "dorvel-test-XXXXXX") {
        EXPECT_NE(mkdtemp(path.data()), nullptr);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;

    std::string const& Path() const { return path; }

    // Writes a file and returns its path.
    std::string Write(std::string const& name, std::string const& content) const {
        std::string file = path + "/" + name;
        std::ofstream(file, std::ios::binary) << content;
        return file;
    }

private:
    std::string path;
};

}  // namespace test
