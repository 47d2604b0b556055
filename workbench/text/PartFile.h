#pragma once

#include <string>

namespace workbench {

// A new file beside the place of another one, until it takes that place: so that a file is there whole or not
// at all. Removed with the object if it has not taken it.
class PartFile {
public:
    // Creates it, for content of any kind.
    explicit PartFile(std::string const& target);
    PartFile(PartFile const&) = delete;
    PartFile& operator=(PartFile const&) = delete;
    ~PartFile();

    // Both are false with errno if it fails; also if the file could not be created.
    bool Write(std::string const& content) const;
    // Without mayReplace a file that is in its place is a failure with EEXIST.
    bool TakePlace(bool mayReplace);

private:
    std::string const target;
    std::string const path;
    int handle;
};

}  // namespace workbench
