#pragma once

#include <string>

namespace tools {

// The version of the project, as CMakeLists.txt states it, such as "0.1.0".
char const* Version();

// The commit that the program was built from: 12 hexadecimal digits, with "+changes" if a file differed from
// it, or "unknown" without a git clone and without a source archive. Defined in a file that the build writes
// (cmake/WriteCommit.cmake).
char const* Commit();

// What a program prints for --version, without an end of line: "bacnet-simulator 0.1.0 (commit
// abcdef123456)", or "bacnet-simulator 0.1.0 (unknown commit)".
std::string VersionText(std::string const& program);

}  // namespace tools
