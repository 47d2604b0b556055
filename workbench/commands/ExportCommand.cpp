#include "ExportCommand.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "ExportOptions.h"

#ifdef WORKBENCH_HAS_RECORD
#include "ExportRun.h"
#endif

namespace workbench {

void AddExportCommand(CLI::App& program, CommandBody& chosen) {
    auto const options = std::make_shared<ExportOptions>();
    CLI::App* const command =
        program.add_subcommand("export", "Writes what a run has recorded as CSV or JSON lines");
    DefineExport(*command, *options);
    command->callback([options, &chosen] {
#ifdef WORKBENCH_HAS_RECORD
        ExportSpan const span = SpanOf(*options);
        chosen = [options, span](Streams const& streams) { return Export(*options, span, streams); };
#else
        static_cast<void>(chosen);
        throw CLI::ValidationError(
            "export", "this program was built without the recording; build it with -DDORVEL_RECORD=ON");
#endif
    });
}

}  // namespace workbench
