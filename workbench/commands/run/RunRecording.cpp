#include "RunRecording.h"

#ifdef WORKBENCH_HAS_RECORD

#include <CLI/CLI.hpp>

#include "Printable.h"
#include "RecordOutlet.h"
#include "RecordTime.h"

namespace workbench {

namespace {

constexpr long long ShortestKeep = 60 * 1000;
constexpr long long LeastMost = 1024 * 1024;

// The default for an empty text.
long long KeepOf(std::string const& text) {
    auto const keep = text.empty() ? RecordLimits().keep : ReadDuration(text);
    if (!keep || *keep < ShortestKeep) {
        throw CLI::ValidationError(
            "--record-keep",
            tools::Quoted(text) +
                " is not an age; allowed is a number with m, h, d or w from 1m, such as 90d");
    }
    return *keep;
}

long long MostOf(std::string const& text) {
    auto const most = text.empty() ? RecordLimits().most : ReadSize(text);
    if (!most || *most < LeastMost) {
        throw CLI::ValidationError(
            "--record-most", tools::Quoted(text) +
                                 " is not a size; allowed is a number with K, M, G or T from 1M, such as 2G");
    }
    return *most;
}

}  // namespace

void CheckRecordOptions(RecordOptions const& options) {
    KeepOf(options.keep);
    MostOf(options.most);
}

std::unique_ptr<Outlet> MakeRecording(RecordOptions const& options, OutletParts const& parts) {
    if (options.file.empty()) {
        return nullptr;
    }
    return std::make_unique<RecordOutlet>(options.file,
                                          RecordLimits{KeepOf(options.keep), MostOf(options.most)}, parts);
}

}  // namespace workbench

#else

namespace workbench {

void CheckRecordOptions(RecordOptions const&) {}

std::unique_ptr<Outlet> MakeRecording(RecordOptions const&, OutletParts const&) {
    return nullptr;
}

}  // namespace workbench

#endif
