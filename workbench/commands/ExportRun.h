#pragma once

#include "ExportOptions.h"
#include "Streams.h"

namespace workbench {

// An interval in the times of recordings (RecordTime.h), both included.
struct ExportSpan {
    long long from;
    long long to;
};

// Throws an exception that becomes a mistake on the command line for a time that is not one.
ExportSpan SpanOf(ExportOptions const& options);

// Returns the exit code. std::runtime_error for a recording that cannot be read and for a file that cannot be
// written.
int Export(ExportOptions const& options, ExportSpan const& span, Streams const& streams);

}  // namespace workbench
