#pragma once

#include <string>

namespace CLI {
class App;
}

namespace workbench {

// The recording of the command run.
struct RecordOptions {
    std::string file;  // empty: none
    std::string keep;  // as ReadDuration and ReadSize read them (RecordTime.h); empty: the defaults
    std::string most;
};

// --record, --record-keep, --record-most. The options must outlive the command.
void AddRecordOptions(CLI::App& command, RecordOptions& options);

}  // namespace workbench
