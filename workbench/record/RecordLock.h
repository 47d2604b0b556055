#pragma once

#include <sys/types.h>

#include <string>

namespace workbench {

// Which file a path leads to; equal for none.
class FileIdentity {
public:
    explicit FileIdentity(std::string const& path);
    explicit FileIdentity(int handle);

    bool operator==(FileIdentity const& other) const { return device == other.device && node == other.node; }

private:
    dev_t device = 0;
    ino_t node = 0;
};

// Keeps other recorders away from a file as long as the object lives, also those of other processes. Hold it
// before the database is opened and until all of its connections of this process are closed: closing a file
// releases the locks that the process has on it.
class RecordLock {
public:
    // Creates the file if it is missing. RecordMistake when another program records into it, or when it
    // cannot be opened.
    explicit RecordLock(std::string const& path);
    RecordLock(RecordLock const&) = delete;
    RecordLock& operator=(RecordLock const&) = delete;
    ~RecordLock();

    // Whether the path still leads to this file, which may have been removed or replaced.
    bool IsInPlace() const;

private:
    std::string const path;
    int handle;
};

}  // namespace workbench
