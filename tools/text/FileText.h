#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace tools {

class UnreadableFile : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The content of a file. Throws UnreadableFile, with a message that begins with the path, for a file that
// cannot be read or has more than `megabytes` times 2^20 octets. A device without end is not read further
// than that.
std::string FileText(std::string const& path, std::size_t megabytes);

// Whether other users than the owner may read the file; false if that cannot be found out.
bool IsReadableByOthers(std::string const& path);

}  // namespace tools
