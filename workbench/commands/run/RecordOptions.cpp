#include "RecordOptions.h"

#include <CLI/CLI.hpp>

namespace workbench {

void AddRecordOptions(CLI::App& command, RecordOptions& options) {
    CLI::Option* const record =
        command
            .add_option("--record", options.file,
                        "Records changes of values, qualities and events in a database of SQLite")
            ->type_name("FILE")
            ->check([](std::string const& path) { return path.empty() ? "a file is needed" : ""; });
    command
        .add_option("--record-keep", options.keep,
                    "How long the recording keeps them, such as 12h, 90d or 52w (default: 400d)")
        ->type_name("AGE")
        ->needs(record);
    command
        .add_option("--record-most", options.most,
                    "How large its file may become, such as 500M or 10G (default: 2G); the oldest gives way")
        ->type_name("SIZE")
        ->needs(record);
}

}  // namespace workbench
