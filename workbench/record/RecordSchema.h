#pragma once

#include <stdexcept>
#include <string>

#include "Database.h"

namespace workbench {

// The tables of a recording; docs/record.md describes them for others who read them.

constexpr long long RecordApplication = 0x446F5272;  // "DoRr", the application_id of the file
constexpr long long RecordVersion = 1;               // its user_version

// The file is not what it must be: another program's, a newer version's, damaged. The message names the file
// and what to do.
class RecordMistake : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Throws RecordMistake if the folder of the file is missing or cannot be written.
void CheckRecordFolder(std::string const& path);

// Opens a recording for writing and creates its tables in an empty file. Throws RecordMistake for a file that
// is not a recording of this version, DatabaseError for what fails besides.
Database OpenForRecording(std::string const& path);

// Opens a recording to read it, also one that a run records into, and one that cannot be written.
Database OpenForReading(std::string const& path);

// What is wrong, for people, after the path: "the disk is full: free some space", ...
std::string TroubleOf(std::string const& path, DatabaseError const& mistake);

}  // namespace workbench
